// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/ledger/booking.h"
#include "simulator/ledger/database.h"

#include <optional>

namespace simulator {

/// A card's account: its opening balance and what closed checks did to it.
struct Account
{
    QString card;
    Kopecks opening = 0;
    Kopecks earned = 0;
    Kopecks spent = 0;
    Kopecks givenBack = 0;
    Kopecks takenBack = 0;
    Kopecks balance = 0;

    /// What the balance must be by the other figures.
    [[nodiscard]] Kopecks expected() const
    {
        return opening + earned - spent + givenBack - takenBack;
    }
};

/// The books: cards with their balances and what every confirmed check did to them.
/// Every operation throws poshost::DatabaseFailure. Writers are called inside a transaction.
class Ledger
{
public:
    explicit Ledger(Database& database) : db(database) {}

    /// The card's balance. A card that was never seen gets the opening balance.
    Kopecks balance(const QString& card, Kopecks opening);

    [[nodiscard]] bool isBooked(const QString& checkId) const;

    /// The card of a booked sale; nothing when there is no such sale.
    [[nodiscard]] std::optional<QString> cardOfSale(const QString& checkId) const;

    /// The lines of a booked sale in the sale's order, with what was returned of them.
    [[nodiscard]] std::vector<SoldLine> soldLines(const QString& checkId) const;

    /// Writes a confirmed check and changes its card's balance, which may go below zero.
    void book(const Booking& booking);

    /// All cards in the order of their numbers.
    [[nodiscard]] std::vector<Account> accounts() const;

    /// All confirmed checks in the order in which they were booked, without their lines.
    [[nodiscard]] std::vector<Booking> bookings() const;

private:
    Database& db;
};

} // namespace simulator
