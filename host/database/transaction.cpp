// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/transaction.h"

#include "host/database/databaseconnection_p.h"

namespace poshost {

using namespace Qt::StringLiterals;

Transaction::Transaction(Database& owner) : database(owner)
{
    database.connection->requireSound();
    if (!database.isInTransaction()) {
        database.execute(u"BEGIN IMMEDIATE"_s);
    }
    ++database.connection->depth;
}

Transaction::~Transaction()
{
    if (committed) {
        return;
    }
    Database::Connection& connection = *database.connection;
    --connection.depth;
    connection.failed = true;
    if (connection.depth == 0) {
        // fails where SQLite has rolled back by itself, which is as good
        sqlite3_exec(connection.handle, "ROLLBACK", nullptr, nullptr, nullptr);
        connection.failed = false;
    }
}

void Transaction::commit()
{
    if (committed) {
        return;
    }
    Database::Connection& connection = *database.connection;
    if (connection.depth == 1) {
        database.execute(u"COMMIT"_s);
    } else {
        connection.requireSound();
    }
    --connection.depth;
    committed = true;
}

} // namespace poshost
