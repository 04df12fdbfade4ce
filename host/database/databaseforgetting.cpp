// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What SQLite keeps of rows that are gone: in free pages, in the rest of pages, and in its log.

#include "host/database/database.h"
#include "host/database/statement.h"

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

/// The log into the file, and the log to nothing.
/// @return false: another connection reads or writes
bool emptiesLog(Database& database)
{
    Statement statement(database, u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
    return statement.next() && statement.value(0).toInt() == 0;
}

} // namespace

bool Database::forgetDeleted()
{
    // a file of a former version gets what a new one has from the beginning
    execute(u"PRAGMA auto_vacuum = INCREMENTAL"_s);
    execute(u"VACUUM"_s);
    return emptiesLog(*this);
}

} // namespace poshost
