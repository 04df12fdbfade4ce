// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/hostkeys_p.h"

#include "host/http/transportsettings_p.h"

namespace poshost {

using namespace Qt::StringLiterals;

QList<ConfigKey> hostKeys()
{
    return {
        {.table = u"http"_s,
         .key = u"proxy"_s,
         .kind = ConfigKey::Kind::Proxy,
         .about = u"proxy for all requests"_s,
         .sample = u"\"http://proxy.example.com:3128\""_s,
         .without = u"no proxy"_s,
         .mayBeEmpty = true},
        {.table = u"http"_s,
         .key = u"caFile"_s,
         .kind = ConfigKey::Kind::Path,
         .about = u"certificates to trust instead of the system's"_s,
         .sample = u"\"/etc/ssl/certs/ca-certificates.crt\""_s,
         .without = u"the system's certificates"_s,
         .mayBeEmpty = true},
        {.table = u"http"_s,
         .key = u"maxAnswerBytes"_s,
         .kind = ConfigKey::Kind::Number,
         .about = u"largest answer that is accepted"_s,
         .sample = QString::number(TransportSettings::defaultMaxAnswerBytes),
         .defaultValue = TransportSettings::defaultMaxAnswerBytes,
         .unit = u"bytes"_s,
         .minimum = 1},
        {.table = u"queue"_s,
         .key = u"keepDeliveredDays"_s,
         .kind = ConfigKey::Kind::Number,
         .about = u"how long delivered messages stay listed"_s,
         .sample = QString::number(defaultKeepDays),
         .defaultValue = defaultKeepDays,
         .unit = u"days"_s,
         .minimum = 0},
        {.table = u"queue"_s,
         .key = u"connections"_s,
         .kind = ConfigKey::Kind::Number,
         .about =
             u"how many messages are sent at once (at most 16), those of one card one by one"_s,
         .sample = u"4"_s,
         .defaultValue = 1,
         .unit = u"at a time"_s,
         .minimum = 1},
    };
}

} // namespace poshost
