// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

/// What a copy of a till's books holds.
struct BackupReport
{
    int checks = 0;      ///< in the database and in the archive
    int undelivered = 0; ///< messages of the queue
    bool hasSecrets = false;
};

/// A copy of a till's books in one file: an SQLite file that is no till's database as it stands,
/// with the tables of the till, "backup_about" (key, value) and "backup_parts", the archive's files
/// in pieces.
namespace backupfile {

/// Writes a new file for its owner only (0600), synced, which has its name only when it is whole
/// and was read again. Whoever sells meanwhile goes on; what is committed from here on is not in
/// it.
/// @param withSecrets whether the queue's credentials are in it
/// @throws Failure or BasicException when there is such a file already, it cannot be written, or
/// what is to be copied is damaged; then nothing is left
BackupReport write(poshost::Database& database, const QString& file, bool withSecrets);

/// What SQLite says of the whole of an opened file. @throws Failure when it is damaged
void requireSound(poshost::Database& database);

} // namespace backupfile
} // namespace till
