// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/baredatabase.h"

#include <stdexcept>

namespace bench {

BareDatabase::BareDatabase(const QString& fileName)
{
    if (sqlite3_open(fileName.toUtf8().constData(), &handle) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(handle));
    }
    for (const char* const sql :
         {"PRAGMA journal_mode = WAL", "PRAGMA synchronous = FULL",
          "CREATE TABLE messages (id INTEGER PRIMARY KEY, attempts INTEGER, body BLOB)"}) {
        if (sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(handle));
        }
    }
    insertion = prepare("INSERT INTO messages (attempts, body) VALUES (0, ?)");
    update = prepare("UPDATE messages SET attempts = attempts + 1 WHERE id = ?");
}

BareDatabase::~BareDatabase()
{
    sqlite3_finalize(insertion);
    sqlite3_finalize(update);
    sqlite3_close(handle);
}

sqlite3_stmt* BareDatabase::prepare(const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(handle, sql, -1, &statement, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(handle));
    }
    return statement;
}

void BareDatabase::run(sqlite3_stmt* statement)
{
    const int result = sqlite3_step(statement);
    sqlite3_reset(statement);
    if (result != SQLITE_DONE) {
        throw std::runtime_error(sqlite3_errmsg(handle));
    }
}

sqlite3_int64 BareDatabase::insert(const QByteArray& bytes)
{
    sqlite3_bind_blob(insertion, 1, bytes.constData(), static_cast<int>(bytes.size()),
                      SQLITE_STATIC);
    run(insertion);
    return sqlite3_last_insert_rowid(handle);
}

void BareDatabase::markSent(sqlite3_int64 id)
{
    sqlite3_bind_int64(update, 1, id);
    run(update);
}

} // namespace bench
