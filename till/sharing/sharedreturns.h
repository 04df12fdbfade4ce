// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"
#include "till/sharing/reservations.h"
#include "till/sharing/sharedstore.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace till {

class CheckStore;

/// A sale whose goods are taken back, and what was taken back of it.
struct SaleOfShop
{
    Check sale;
    QList<Check> earlier; ///< at any till, as far as this till can know
    int ownReturns = 0;   ///< how many of them this till has closed
};

/// A return at a till of a shop whose tills share a store: it finds the sale of any till, and keeps
/// two tills from taking the same piece back. One return at a time, from find or resume to its end;
/// the store is waited for no longer than its time-out over all of it, unless the cashier closes
/// once more.
///
/// Every operation throws Failure when the return cannot go on, BasicException when the till's
/// database fails.
class SharedReturns
{
public:
    /// All must live longer.
    SharedReturns(CheckStore& ownChecks, poshost::Database& opened, SharedStore& shared)
        : checks(ownChecks), database(opened), notes(opened), store(shared)
    {}

    /// Finds a sale: in the till's file, else in the store.
    /// @param which its identifier, its number, or "last" for the one that this till closed last
    /// @throws Failure (Usage) also when there is none, or several tills have the number
    SaleOfShop find(const QString& which);
    /// Takes a return up that was suspended.
    /// @throws Failure when its amounts are not right any more
    void resume(const Check& suspended);
    /// Whether the loyalty server has the sale; nothing when the store does not know it.
    std::optional<bool> isSaleDelivered() const { return isDelivered; }

    /// Before the return is closed: reserves what it takes.
    /// @throws Failure when it must not close: the store refuses, or it has not confirmed the
    /// return of another till's sale
    void reserve(const Check& closing);
    /// Inside the transaction that closes the return. @throws Failure when it must not close
    void use(const Check& closing);

    /// The sentences for the cashier since the last call.
    QStringList takeNotices();

private:
    void begin();
    orvastore::SaleToReturn ask(const QString& which);
    SaleOfShop withOthers(const Check& sale, const QList<orvastore::KeptCheck>& others);
    orvastore::StoreResult reserveInStore(const Check& closing);
    orvastore::StoreResult askToReserve(orvastore::SharedBooks& books, const Check& closing) const;

    CheckStore& checks;
    poshost::Database& database;
    Reservations notes;
    SharedStore& store;
    QStringList notices;

    bool isForeign = false; ///< another till's sale
    bool asks = false;      ///< whether the store is asked when the return is closed
    bool isNoted = false;
    bool isRepeated = false;
    std::chrono::milliseconds left{0}; ///< that closing may wait for the store
    std::optional<bool> isDelivered;
    QStringList known; ///< the returns that the amounts were reckoned with
};

} // namespace till
