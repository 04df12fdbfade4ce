// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/hostkeys_p.h"

#include "host/http/transportsettings_p.h"

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

QList<ConfigKey> placeOfStore()
{
    return {
        {.table = u"store"_s,
         .key = u"database"_s,
         .about = u"connection string, without a password, of the PostgreSQL store that closed "
                  "checks are handed over to"_s,
         .sample =
             u"\"host=store1,store2 dbname=orva user=till3 target_session_attrs=read-write\""_s,
         .without = u"no store, the till delivers itself"_s,
         .mayBeEmpty = true},
        {.table = u"store"_s,
         .key = u"passwordFile"_s,
         .kind = ConfigKey::Kind::Path,
         .about = u"file whose only line is the password to the store"_s,
         .sample = u"\"store-password\""_s,
         .without = u"no password"_s,
         .mayBeEmpty = true},
        {.table = u"store"_s,
         .key = u"shop"_s,
         .about = u"whose checks the store keeps these as"_s,
         .sample = u"\"1042\""_s,
         .without = u"the shop without a name"_s,
         .mayBeEmpty = true},
        {.table = u"store"_s,
         .key = u"module"_s,
         .kind = ConfigKey::Kind::Path,
         .about = u"file of the module that reaches the store"_s,
         .sample = u"\"/usr/lib/orva/liborvastore.so\""_s,
         .without = u"the one of the package orva-store"_s,
         .mayBeEmpty = true},
    };
}

QList<ConfigKey> waitsForStore()
{
    return {
        {.table = u"store"_s,
         .key = u"timeout"_s,
         .kind = ConfigKey::Kind::Number,
         .about = u"how long the store is waited for; a sale never waits for it"_s,
         .sample = QString::number(defaultStoreSeconds),
         .defaultValue = defaultStoreSeconds,
         .unit = u"seconds"_s,
         .minimum = 1},
        {.table = u"store"_s,
         .key = u"fallback"_s,
         .about = u"\"deliver\": while the store is away the till delivers itself what was "
                  "certainly never handed over"_s,
         .sample = u"\"deliver\""_s,
         .without = u"messages wait for the store"_s,
         .mayBeEmpty = true},
        {.table = u"store"_s,
         .key = u"fallbackAfter"_s,
         .kind = ConfigKey::Kind::Number,
         .about = u"how old a message is before the till delivers it itself"_s,
         .sample = QString::number(defaultFallbackSeconds),
         .defaultValue = defaultFallbackSeconds,
         .unit = u"seconds"_s,
         .minimum = 1},
    };
}

QList<ConfigKey> keysOfQueueAndTransport()
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

} // namespace

QList<ConfigKey> hostKeys()
{
    return keysOfQueueAndTransport() + placeOfStore() + waitsForStore();
}

} // namespace poshost
