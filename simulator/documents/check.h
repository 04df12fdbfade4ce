// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/amount.h"

#include <QString>

#include <vector>

namespace simulator {

/// A goods line of a sale or of a return.
struct Line
{
    int id = 0; ///< position in the check
    QString sku;
    Thousandths quantity = 0; ///< sold, or on a return the returned part
    Kopecks total = 0;
    Kopecks minTotal = 0;  ///< discounts never bring the line below it
    Kopecks givenBack = 0; ///< on a return: points given back, as the till sent them

    friend bool operator==(const Line&, const Line&) = default;
};

/// A check as a till sends it.
struct Check
{
    enum class Type
    {
        Sale = 1,
        Return = 2
    };

    QString id;
    QString number;
    QString date;
    Type type = Type::Sale;
    QString originalId; ///< on a return: the sale that is returned
    QString cardNumber;
    Kopecks total = 0;
    std::vector<Line> lines;

    friend bool operator==(const Check&, const Check&) = default;
};

/// A card number as it may stand in logs and answers: its last four characters.
inline QString maskedCard(const QString& number)
{
    return number.size() > 4 ? QStringLiteral("*") + number.last(4) : number;
}

} // namespace simulator
