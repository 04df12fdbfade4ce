// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace poshost {

class Database;

/// The version of a file's tables, and the registered steps (schemastep.h) that it lacks.
namespace databaseschema {

/// The version that the last registered step leads to.
int newestVersion();
/// The version that the file says it has, 0 for an empty file.
/// @throws BasicException "databaseError" when it is newer than the newest known one, or cannot be
/// the version of a file with such tables: a damaged file, or that of another program
int checkedVersion(Database& database);
/// Takes the steps that the file lacks, all in one transaction.
/// @throws BasicException "databaseError" when a step fails, and the file stays as it was; or as
/// checkedVersion
void bringUpToDate(Database& database);

} // namespace databaseschema

} // namespace poshost
