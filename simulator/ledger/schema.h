// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace poshost {
class Database;
}

namespace simulator {

/// Marks a file as one of this program ("OrvS").
inline constexpr int applicationId = 0x4f727653;

/// The version that this program reads and writes.
inline constexpr int schemaVersion = 1;

/// Makes the tables in an empty database; all amounts are in kopecks, all quantities in
/// thousandths. Throws DatabaseError when the database is not one of this program or was written by
/// a newer version of it.
void prepareBooks(poshost::Database& database);

} // namespace simulator
