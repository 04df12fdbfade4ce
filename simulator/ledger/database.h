// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

#include <stdexcept>

namespace simulator {

/// The database cannot do what is asked: one sentence with the file and SQLite's own words.
class DatabaseError : public std::runtime_error
{
public:
    explicit DatabaseError(const QString& what) : std::runtime_error(what.toStdString()) {}
};

/// The simulator's SQLite file. What a committed transaction wrote survives a crash of the process
/// and of the machine. An object may be used only in the thread that made it.
class Database
{
public:
    enum class Open
    {
        CreateMissing,
        ExistingOnly
    };

    /// Opens the file, makes it (readable and writable by its owner only) with its tables where it
    /// is missing and that is allowed. Throws DatabaseError when that fails, when the file is not
    /// one of this program or was written by a newer version of it.
    explicit Database(const QString& path, Open mode = Open::CreateMissing);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// Runs one statement with its "?" bound in order and returns it, ready for next().
    /// Throws DatabaseError. The query must be gone before its transaction is committed.
    QSqlQuery run(const QString& statement, const QVariantList& values = {});

    /// From here to commit() everything is written together or, when the object goes first, not
    /// at all. Waits up to 10 s for another process that is writing; then throws DatabaseError.
    class Transaction
    {
    public:
        explicit Transaction(Database& database);
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;

        /// Makes everything durable. Throws DatabaseError, with nothing written.
        void commit();

    private:
        Database& owner;
        bool open = true;
    };

private:
    void connect();
    void prepareSchema();
    [[noreturn]] void fail(const QString& what, const QString& text) const;

    const QString file;
    const QString connectionName;
    QSqlDatabase connection;
};

} // namespace simulator
