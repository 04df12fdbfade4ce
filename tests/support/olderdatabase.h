// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace poshost {
class Database;
} // namespace poshost

namespace tests {

/// Makes a till's file one of version 5, the last one before checks were handed over and archived:
/// takes from it what every owner's step to the newest version has brought. Checks and messages
/// stay.
/// @param database of the newest version; closed afterwards, since opening brings it up to date
/// @throws std::logic_error when the newest version is not the one after: add what it has brought
void makeOlder(poshost::Database& database);

} // namespace tests
