// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <sys/types.h>

/// The files that make a database, before SQLite opens them.
namespace poshost::databasefile {

/// SQLite takes an empty file for a new one and throws away the log beside it. A till that is begun
/// writes to its log only when its file has a page on the disk, so what the log then holds was lost
/// by others: nothing may be begun over it.
/// @throws BasicException "databaseError" when the file is empty or missing and its log is not
void requireNotEmptied(const QString& file);

/// Who may open a database and the files beside it: its owner, and the group where the folder is
/// shared with it, which is a folder with the set-group-ID bit that the group may write and others
/// may not enter.
mode_t rightsOf(const QString& file);

/// Makes a file of the database or one beside it, unless it is there already, with these rights
/// whatever the process's mask, and makes its name survive a power cut.
/// @return whether it was missing
/// @throws BasicException "databaseError"
bool createBeside(const QString& file);

} // namespace poshost::databasefile
