// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/schema.h"

#include "simulator/ledger/database.h"
#include "simulator/text.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

QStringList schemaStatements()
{
    return {
        // the opening balance is the one of the rules when the card was first seen; the balance
        // changes in the transaction that books a check
        u"CREATE TABLE cards("
        "number TEXT PRIMARY KEY, opening INTEGER NOT NULL, balance INTEGER NOT NULL)"_s,
        // every different answer given to a check that is not booked yet; the highest sequence is
        // the last one
        u"CREATE TABLE prechecks("
        "sequence INTEGER PRIMARY KEY AUTOINCREMENT, check_id TEXT NOT NULL, "
        "digest BLOB NOT NULL, answer TEXT NOT NULL, UNIQUE(check_id, digest))"_s,
        // the digest stays when the check is booked, to know a repeated try
        u"CREATE TABLE payment_tries(check_id TEXT PRIMARY KEY, digest BLOB NOT NULL)"_s,
        // one row a confirmed check
        u"CREATE TABLE ledger("
        "sequence INTEGER PRIMARY KEY AUTOINCREMENT, check_id TEXT NOT NULL UNIQUE, "
        "type INTEGER NOT NULL, card TEXT NOT NULL REFERENCES cards(number), "
        "original_id TEXT REFERENCES ledger(check_id), number TEXT NOT NULL, date TEXT NOT NULL, "
        "total INTEGER NOT NULL, discount INTEGER NOT NULL, paid INTEGER NOT NULL, "
        "spent INTEGER NOT NULL, earned INTEGER NOT NULL, given_back INTEGER NOT NULL, "
        "taken_back INTEGER NOT NULL)"_s,
        u"CREATE INDEX ledger_original ON ledger(original_id) WHERE original_id IS NOT NULL"_s,
        u"CREATE INDEX ledger_card ON ledger(card)"_s,
        u"CREATE TABLE ledger_lines("
        "check_id TEXT NOT NULL REFERENCES ledger(check_id), position INTEGER NOT NULL, "
        "line_id INTEGER NOT NULL, sku TEXT NOT NULL, quantity INTEGER NOT NULL, "
        "total INTEGER NOT NULL, discount INTEGER NOT NULL, spent INTEGER NOT NULL, "
        "earned INTEGER NOT NULL, given_back INTEGER NOT NULL, taken_back INTEGER NOT NULL, "
        "PRIMARY KEY(check_id, position)) WITHOUT ROWID"_s,
        u"PRAGMA application_id=%1"_s.arg(applicationId),
        u"PRAGMA user_version=%1"_s.arg(schemaVersion),
    };
}

} // namespace

void prepareBooks(poshost::Database& database)
{
    Transaction transaction(database);
    const auto number = [&database](const QString& sql) {
        Statement statement(database, sql);
        return statement.next() ? statement.value(0).toInt() : 0;
    };
    const int version = number(u"PRAGMA user_version"_s);
    const bool isEmpty = number(u"SELECT count(*) FROM sqlite_master"_s) == 0;
    if (isEmpty && version == 0) {
        for (const QString& statement : schemaStatements()) {
            database.execute(statement);
        }
    } else if (number(u"PRAGMA application_id"_s) != applicationId) {
        throw DatabaseError(Text::tr("The database %1 is not a database of orva-simulator: name "
                                     "another file with --database")
                                .arg(database.fileName()));
    } else if (version > schemaVersion) {
        throw DatabaseError(
            Text::tr("The database %1 was written by a newer orva-simulator: it has schema version "
                     "%2, this program knows %3; use the newer program or name another file with "
                     "--database")
                .arg(database.fileName(), QString::number(version),
                     QString::number(schemaVersion)));
    }
    transaction.commit();
}

} // namespace simulator
