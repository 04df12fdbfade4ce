// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/check.h"

#include <vector>

namespace simulator {

/// What one line of a closed check books. A line of a sale has discount, spent and earned, a line
/// of a return givenBack and takenBack; the others are 0.
struct BookedLine
{
    int id = 0;
    QString sku;
    Thousandths quantity = 0;
    Kopecks total = 0;
    Kopecks discount = 0;
    Kopecks spent = 0;
    Kopecks earned = 0;
    Kopecks givenBack = 0;
    Kopecks takenBack = 0;

    friend bool operator==(const BookedLine&, const BookedLine&) = default;
};

/// What one closed check books on its card: the sums of its lines.
struct Booking
{
    QString checkId;
    Check::Type type = Check::Type::Sale;
    QString originalId;
    QString cardNumber;
    QString number;
    QString date;
    Kopecks total = 0;
    Kopecks discount = 0;
    Kopecks paid = 0; ///< money; on a return 0
    Kopecks spent = 0;
    Kopecks earned = 0;
    Kopecks givenBack = 0;
    Kopecks takenBack = 0;
    std::vector<BookedLine> lines;

    /// By how much it changes the card's balance.
    [[nodiscard]] Kopecks change() const { return earned - spent + givenBack - takenBack; }
};

/// A line of a booked sale with all that its returns have taken off it so far.
struct SoldLine
{
    BookedLine sold;
    BookedLine returned; ///< quantity, total, givenBack and takenBack summed over the returns
};

} // namespace simulator
