// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"

#include <stdexcept>

namespace poshost {
class DatabaseFailure;
}

namespace simulator {

using poshost::Statement;
using poshost::Transaction;

/// The database cannot do what is asked: one sentence with the file and SQLite's own words.
class DatabaseError : public std::runtime_error
{
public:
    explicit DatabaseError(const QString& what) : std::runtime_error(what.toStdString()) {}
    /// Says in the simulator's words what the host's layer has thrown.
    explicit DatabaseError(const poshost::DatabaseFailure& failure);
};

/// The simulator's SQLite file. What a committed Transaction wrote survives a crash of the process
/// and of the machine. An object may be used only in the thread that made it. Statements and
/// transactions wait up to 10 s for another process that is writing and throw
/// poshost::DatabaseFailure.
class Database : public poshost::Database
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
};

} // namespace simulator
