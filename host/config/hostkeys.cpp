// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/hostkeys_p.h"

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
         .sample = QString::number(defaultMaxAnswerBytes),
         .defaultValue = defaultMaxAnswerBytes,
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
    };
}

} // namespace poshost
