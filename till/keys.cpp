// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/keys.h"

#include "till/recording/recordfolder.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

using poshost::ConfigKey;
using Kind = ConfigKey::Kind;

QList<ConfigKey> keysOfTill()
{
    return {
        {.table = u"till"_s,
         .key = u"database"_s,
         .kind = Kind::Path,
         .about = u"SQLite file with checks and queue, made with mode 0600"_s,
         .sample = u"\"till.sqlite\""_s,
         .isRequired = true,
         .use = ConfigKey::Use::Database},
        {.table = u"till"_s,
         .key = u"plugin"_s,
         .kind = Kind::Path,
         .about = u"the plug-in's file"_s,
         .sample = u"\"/usr/lib/orva/liborva.so\""_s,
         .without = u"the installed one, if it is the only one"_s,
         .isRequired = true},
        {.table = u"till"_s,
         .key = u"name"_s,
         .about = u"the till's name, kept with every accrual"_s,
         .sample = u"\"3\""_s,
         .defaultValue = QString::fromUtf16(defaultTillName),
         .mayBeEmpty = true},
        {.table = u"till"_s,
         .key = u"keepChecksDays"_s,
         .kind = Kind::Number,
         .about =
             u"how long a closed check stays in the database before it goes into the archive"_s,
         .sample = QString::number(defaultKeepChecksDays),
         .defaultValue = defaultKeepChecksDays,
         .unit = u"days"_s,
         .minimum = 0},
        {.table = u"till"_s,
         .key = u"metricsFile"_s,
         .kind = Kind::Path,
         .about = u"file that the service writes the till's metrics into, once a minute"_s,
         .sample = u"\"orva.prom\""_s,
         .without = u"they are not written"_s,
         .mayBeEmpty = true},
        {.table = u"till"_s,
         .key = u"returnDays"_s,
         .kind = Kind::Number,
         .about = u"how long after a sale its goods are taken back"_s,
         .sample = QString::number(defaultReturnDays),
         .defaultValue = defaultReturnDays,
         .unit = u"days"_s,
         .minimum = 0},
    };
}

QList<ConfigKey> keysOfRecording()
{
    return {
        {.table = u"recording"_s,
         .key = u"folder"_s,
         .kind = Kind::Path,
         .about = u"folder for records of what is said to the loyalty system"_s,
         .sample = u"\"records\""_s,
         .without = u"nothing is recorded"_s,
         .mayBeEmpty = true},
        {.table = u"recording"_s,
         .key = u"maxMegabytes"_s,
         .kind = Kind::Number,
         .about = u"how much all records together may take"_s,
         .sample = QString::number(RecordFolder::defaultMegabytes),
         .defaultValue = RecordFolder::defaultMegabytes,
         .unit = u"megabytes"_s,
         .minimum = 1},
        {.table = u"recording"_s,
         .key = u"maxDays"_s,
         .kind = Kind::Number,
         .about = u"how long a record is kept"_s,
         .sample = QString::number(RecordFolder::defaultDays),
         .defaultValue = RecordFolder::defaultDays,
         .unit = u"days"_s,
         .minimum = 1},
    };
}

QList<ConfigKey> keysOfVerify()
{
    return {
        {.table = u"verify"_s,
         .key = u"testServer"_s,
         .kind = Kind::Address,
         .about = u"the loyalty server that is meant for testing, which alone `verify` tries"_s,
         .sample = u"\"http://127.0.0.1:8710/\""_s,
         .without = u"no server is tried"_s},
        {.table = u"verify"_s,
         .key = u"card"_s,
         .about = u"a card for testing, with points on it"_s,
         .sample = u"\"2200000000017\""_s,
         .without = u"no server is tried"_s},
        {.table = u"verify"_s,
         .key = u"secondCard"_s,
         .about = u"another card for testing"_s,
         .sample = u"\"2200000000024\""_s,
         .without = u"no server is tried"_s},
        {.table = u"verify"_s,
         .key = u"emptyCard"_s,
         .about = u"a card for testing without points"_s,
         .sample = u"\"2200000000031\""_s,
         .without = u"what needs one is not tried"_s},
        {.table = u"verify"_s,
         .key = u"goods"_s,
         .about = u"goods codes to sell, separated by commas"_s,
         .sample = u"\"1001,1002,1009\""_s,
         .defaultValue = QString::fromUtf16(defaultTriedGoods)},
    };
}

} // namespace

QList<ConfigKey> tillKeys()
{
    return keysOfTill() + keysOfRecording() + keysOfVerify();
}

} // namespace till
