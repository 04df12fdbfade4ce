// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <sqlite3.h>

namespace bench {

/// The least that stores something durably: SQLite with the settings of the till's database and one
/// table, without Qt.
class BareDatabase
{
public:
    explicit BareDatabase(const QString& fileName);
    ~BareDatabase();
    BareDatabase(const BareDatabase&) = delete;
    BareDatabase& operator=(const BareDatabase&) = delete;

    /// One durable row with these bytes. @return its number
    sqlite3_int64 insert(const QByteArray& bytes);
    /// Marks a row as sent, durably.
    void markSent(sqlite3_int64 id);

private:
    sqlite3_stmt* prepare(const char* sql);
    void run(sqlite3_stmt* statement);

    sqlite3* handle = nullptr;
    sqlite3_stmt* insertion = nullptr;
    sqlite3_stmt* update = nullptr;
};

} // namespace bench
