// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/database.h"

#include <QDeadlineTimer>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringView>
#include <algorithm>
#include <memory>
#include <unordered_map>

/// What a Database keeps, out of sight of those who use it.
class Database::Connection
{
public:
    Connection(const QString& file, int busyMilliseconds);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Turns the write-ahead log on. Two connections that open a new file at the same time may meet
    /// here, where SQLite does not wait by itself.
    void switchToLog(int busyMilliseconds);
    /// Marks an open transaction as one that cannot be committed any more and throws
    /// "databaseError".
    [[noreturn]] void fail(const QSqlError& error);
    /// Throws "databaseError" when the open transaction has already failed.
    void requireSound() const;

    /// A statement that is ready to run: one kept from an earlier use, or a new one. Preparing
    /// costs more than most statements themselves.
    std::unique_ptr<QSqlQuery> prepared(const QString& sql);
    /// Resets a statement and keeps it for the next use of the same text.
    void keep(const QString& sql, std::unique_ptr<QSqlQuery> query);

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
    QDeadlineTimer readingEnd; ///< of a connection for reading
    QSqlDatabase handle;
    /// At most one for each text.
    std::unordered_map<QString, std::unique_ptr<QSqlQuery>, TextHash> idle;
    int depth = 0;       ///< of nested Transaction objects
    bool failed = false; ///< the open transaction can only be rolled back
};
