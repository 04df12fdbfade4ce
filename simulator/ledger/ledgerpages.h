// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/ledger/booking.h"
#include "simulator/ledger/database.h"

#include <optional>

namespace simulator {

/// The books a page at a time, for whoever only looks at them: of a check all its lines, of a card
/// the course of its balance. Every operation throws poshost::DatabaseFailure.
class LedgerPages
{
public:
    /// The database must outlive the object.
    explicit LedgerPages(Database& database) : db(database) {}

    struct Row
    {
        qint64 sequence = 0; ///< grows with every booking
        Booking booking;     ///< without its lines
    };

    /// The newest checks, the newest first: at most that many, booked before that sequence.
    [[nodiscard]] std::vector<Row> newest(qint64 before, qint64 most) const;

    /// A confirmed check with its lines; nothing when there is none.
    [[nodiscard]] std::optional<Booking> check(const QString& checkId) const;

    /// The returns of a sale in the order of their booking, with their lines.
    [[nodiscard]] std::vector<Booking> returnsOf(const QString& saleId) const;

    /// A card's balance after a check.
    struct Point
    {
        QString checkId;
        QString date;
        Kopecks balance = 0;
    };

    /// How a balance came about: the last checks that changed it, at most that many, the oldest
    /// first. balance: the card's at present
    [[nodiscard]] std::vector<Point> course(const QString& card, Kopecks balance,
                                            qint64 most) const;

    /// How many checks are confirmed.
    [[nodiscard]] qint64 count() const;

    /// The first check whose amounts are not the sums of its lines'; empty when all agree.
    [[nodiscard]] QString wrongCheck() const;

private:
    [[nodiscard]] std::vector<BookedLine> linesOf(const QString& checkId) const;

    Database& db;
};

} // namespace simulator
