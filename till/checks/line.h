// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace till {

/// One goods line of a check, counted in kopecks and thousandths.
struct Line
{
    int position = 0;
    QString code;
    QString name;
    bool fractional = false;
    qint64 priceKopecks = 0;
    qint64 minPriceKopecks = 0;
    /// Quantity sold; on a return line still the quantity that the sale sold.
    qint64 thousandths = 0;
    /// Quantity that a return line returns; 0 on a sale.
    qint64 returnedThousandths = 0;
    /// The line's sum without the loyalty system's impacts; on a return line that of the returned
    /// part.
    qint64 sumKopecks = 0;

    /// Discounts of the loyalty system; on a return line their share in the returned part.
    qint64 discountKopecks = 0;
    /// Points spent on the line.
    qint64 spentKopecks = 0;
    /// Points that the loyalty system awards for the line as long as no points are spent.
    qint64 awardedKopecks = 0;
    /// Points that the line earns.
    qint64 earnedKopecks = 0;
    /// Spent points that a return line gives back.
    qint64 givenBackKopecks = 0;
    /// Earned points that a return line takes back.
    qint64 takenBackKopecks = 0;

    friend bool operator==(const Line&, const Line&) = default;
};

} // namespace till
