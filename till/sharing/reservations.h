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

namespace till {

/// The till's durable notes of returns that may have reserved goods in the store. One is made
/// before the store is asked; the commit that closes the check marks it, and the store is told
/// later that the goods are taken for good, since not every return is handed over. What is not
/// marked belongs to returns that do not close, and is given back. A return whose goods are being
/// given back closes no more, so that a desk that was asleep meanwhile cannot close it.
///
/// Every operation throws BasicException "databaseError".
class Reservations
{
public:
    explicit Reservations(poshost::Database& opened) : database(opened) {}

    /// Notes that the store is about to be asked; again for a repetition.
    /// @throws Failure when the goods are being given back
    void note(const QString& checkId);
    /// Inside the transaction that closes the check: marks the note.
    /// @throws Failure when the goods were given back meanwhile
    void use(const QString& checkId);

    /// When the store is to be told something, in milliseconds since 1970; nothing without a note.
    /// What an open check has reserved is its own for a minute: its till may have died.
    static std::optional<qint64> nextDue(poshost::Database& database);
    /// Gives back what returns have reserved that will not close, and has what closed ones have
    /// reserved taken for good.
    /// @return the first that was not Done, or Done; repeating it does the rest
    static orvastore::StoreResult releaseDue(poshost::Database& database,
                                             orvastore::SharedBooks& books, const QString& shop);

private:
    poshost::Database& database;
};

} // namespace till
