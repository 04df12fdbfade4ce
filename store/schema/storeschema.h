// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace orvastore {

class Connection;

/// The tables of the store and their versions. A migration says which programs can still work with
/// what it has made, so that tills and workers of two versions work during a roll-out.
namespace storeschema {

/// The version that this program makes, and the oldest that it can work with.
inline constexpr int newest = 8;
inline constexpr int oldestUsable = 1;
/// The first that knows what was taken back of sales.
inline constexpr int returnsFrom = 3;

/// @return the version of the database; 0: it has none of the tables. @throws StoreError
int versionOf(Connection& connection);
/// @throws StoreError Refused, with a sentence, when this program cannot work with the database
void requireUsable(Connection& connection);
/// Brings the database to a version, a transaction for each; does nothing to a newer one. Tills and
/// workers go on meanwhile: who cannot get a lock within two seconds gives up and can be repeated.
/// @return the version before. @throws StoreError
int migrate(Connection& connection, int upTo = newest);
/// Makes a login a till of a shop. @throws StoreError
void admitTill(Connection& connection, const QString& role, const QString& shop);

} // namespace storeschema

} // namespace orvastore
