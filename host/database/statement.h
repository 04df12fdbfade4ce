// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QByteArrayList>
#include <QString>
#include <QVariant>
#include <memory>

struct sqlite3_stmt;

namespace poshost {

class Database;

/// Gives a prepared statement back to SQLite.
struct FinalizeStatement
{
    /// @param statement is of no use afterwards
    void operator()(sqlite3_stmt* statement) const;
};
/// A prepared statement that is given back when its owner ends.
using PreparedStatement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// One SQL statement, prepared when made, reset when this object ends. Rows are read forwards and
/// one at a time. Must not outlive its Database. A "?" in the text always stands for a value.
///
///     Statement statement(database, u"SELECT name FROM goods WHERE price > ?"_s);
///     statement.bind(100'00);
///     while (statement.next()) { ... statement.value(0) ... }
///
/// Every operation throws BasicException "databaseError" with file and cause when SQLite fails.
/// Inside a Transaction such a failure, whatever it is, makes the transaction unable to commit:
/// SQLite may have undone its earlier statements.
class HOST_EXPORT Statement
{
public:
    /// Prepares the statement, or takes one with the same text that the connection has kept.
    /// @param database the connection; must live longer
    /// @param sql one statement
    Statement(Database& database, const QString& sql);
    /// Resets the statement, so that it holds no lock. Never throws.
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Gives the next "?" its value. An invalid QVariant is NULL; null texts and byte arrays are
    /// empty ones. Every "?" must be given its value before the statement runs; after the run,
    /// binding begins again with the first one.
    /// @param value a text, number, byte array or nothing
    /// @return this statement
    Statement& bind(const QVariant& value);
    /// Runs the statement at the first call and steps to the next row at every call.
    /// @return false: there is no (further) row
    bool next();
    /// Runs the statement and drops its rows, if any.
    void execute();

    /// Reads from the row that next stepped to.
    /// @param column counted from 0
    /// @return a number, text or byte array, whichever is stored; invalid for NULL
    QVariant value(int column) const;
    /// @return the row identifier of the INSERT that was run
    qint64 lastInsertId() const;
    /// @return how many rows the run has changed
    int affectedRows() const;

private:
    int bindAt(int index, const QVariant& value);
    bool step();
    void reset();
    [[noreturn]] void fail();

    Database& database;
    const QString text;
    PreparedStatement statement;
    QByteArrayList held; ///< what SQLite reads without having copied it
    bool sound = true;   ///< may be kept for another use
    int bound = 0;
    bool running = false;
};

} // namespace poshost
