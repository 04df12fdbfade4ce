// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/database.h"
#include "host/database/statement.h"

#include <QDeadlineTimer>
#include <QStringView>
#include <algorithm>
#include <memory>
#include <sqlite3.h>
#include <unordered_map>

namespace poshost {

/// What a Database keeps, out of sight of those who use it.
///
/// SQLite is called directly: a delivered request runs four statements on average, and Qt's driver
/// takes nearly as long to bind their values and to describe their columns as SQLite to run them.
class Database::Connection
{
public:
    explicit Connection(const QString& file);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Opens the database.
    /// @param name the file's name, or its URI
    /// @param flags SQLITE_OPEN_...
    void open(const QString& name, int flags, int busyMilliseconds);
    /// Turns the write-ahead log on. Two connections that open a new file at the same time may meet
    /// here, where SQLite does not wait by itself.
    /// @param isNew nothing is in the file yet: it becomes one that can give free pages back
    void switchToLog(bool isNew, int busyMilliseconds);
    /// Marks an open transaction as one that cannot be committed any more and throws
    /// "databaseError" with what SQLite says about its last call.
    [[noreturn]] void fail();
    /// The same with another cause.
    [[noreturn]] void fail(const QString& cause);
    /// Throws "databaseError" when the open transaction has already failed.
    void requireSound() const;

    /// A statement that is ready to run: one kept from an earlier use, or a new one. Preparing
    /// costs more than most statements themselves.
    PreparedStatement prepared(const QString& sql);
    /// Keeps a statement that was reset for the next use of the same text.
    void keep(const QString& sql, PreparedStatement statement);

    /// Statements differ in length nearly always, and what they end with tells the others apart:
    /// hashing their whole text cost more than finding them.
    struct TextHash
    {
        size_t operator()(const QString& sql) const
        {
            constexpr qsizetype end = 8;
            return qHash(QStringView(sql).last(std::min(end, sql.size())), size_t(sql.size()));
        }
    };

    QString file;
    QDeadlineTimer readingEnd;          ///< of a connection for reading
    std::shared_ptr<void> readingWatch; ///< ends what still runs then
    sqlite3* handle = nullptr;
    /// At most one for each text.
    std::unordered_map<QString, PreparedStatement, TextHash> idle;
    int depth = 0;       ///< of nested Transaction objects
    bool failed = false; ///< the open transaction can only be rolled back
};

} // namespace poshost
