// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/passing.h"

#include "host/database/database.h"
#include "host/database/statement.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

QSet<QString> identifiers(const QString& file, const QString& table, const QString& sql)
{
    QSet<QString> all;
    if (!QFile::exists(file)) {
        return all; // stopped before there was one
    }
    poshost::Database database(file);
    poshost::Statement there(database, u"SELECT 1 FROM sqlite_master WHERE name = ?"_s);
    if (!there.bind(table).next()) {
        return all;
    }
    poshost::Statement statement(database, sql);
    while (statement.next()) {
        all.insert(statement.value(0).toString());
    }
    return all;
}

QSet<QString> atTheTill(const QString& file)
{
    return identifiers(file, u"checks"_s, u"SELECT id FROM checks WHERE state = 'suspended'"_s);
}

} // namespace

QSet<QString> passing::suspendedAnywhere(const QString& tillDatabase, const QString& storeDatabase)
{
    return atTheTill(tillDatabase) +
           identifiers(tillDatabase, u"leavings"_s,
                       u"SELECT check_id FROM leavings WHERE content IS NOT NULL"_s) +
           identifiers(storeDatabase, u"suspended"_s,
                       u"SELECT identifier FROM suspended WHERE settled = 0"_s);
}

QStringList passing::heldTwice(const QString& tillDatabase, const QString& storeDatabase)
{
    QStringList problems;
    const QSet<QString> here = atTheTill(tillDatabase);
    const QSet<QString> there = identifiers(storeDatabase, u"suspended"_s,
                                            u"SELECT identifier FROM suspended "
                                            "WHERE token IS NULL"_s);
    for (const QString& id : here& there) {
        problems += u"check %1 is suspended at the till, and another can take it up"_s.arg(id);
    }
    return problems;
}
