// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/sharedbooks.h"

#include <QString>
#include <QtGlobal>

#include <optional>

namespace poshost {
class Database;
} // namespace poshost

/// Closed checks that no message takes to the store, sold without a card for instance: a return
/// finds them at any till all the same. CheckStore notes them as they close; whoever hands over
/// takes them to the store. A check stays noted until the store has it.
///
/// Every operation throws BasicException "databaseError".
namespace till::silentchecks {

/// What the store has not got yet.
struct Waiting
{
    int count = 0;   ///< checks
    int refused = 0; ///< of these, that the store has said no to
    /// One of those, and why; empty without.
    QString refusedCheck;
    poshost::Message why;
};

/// When one is to be handed over, in milliseconds since 1970; nothing without any.
std::optional<qint64> nextDue(poshost::Database& database);
/// Hands over some of those that are due, those closed first at first. One that the store refuses
/// waits and lets the others go on; that is told in the log.
/// @return the first that was neither Done nor Refused, or Done; repeating it does the rest
orvastore::StoreResult handOver(poshost::Database& database, orvastore::SharedBooks& books,
                                const QString& shop);
/// How things stand.
Waiting waiting(poshost::Database& database);
/// Whether the store has not got this check yet and may get it at any moment.
bool isUnderWay(poshost::Database& database, const QString& checkId);

} // namespace till::silentchecks
