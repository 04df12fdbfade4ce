// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"

#include <QHash>
#include <QList>
#include <QString>

/// What was taken back of the sales of a shop, reckoned by itself from the closed checks of all its
/// tills: sums alone, nothing of how the tills come to them.
class TakenBack
{
public:
    void addSale(const till::Check& sale) { sales.insert(sale.id(), sale); }
    void addReturn(const till::Check& back);

    int sold() const { return int(sales.size()); }
    int returned() const { return returns; }
    /// Whether every piece of a sale came back.
    bool isWhole(const QString& sale) const;
    /// What is wrong: more pieces than sold, or sums of a whole line that are not the sale's.
    QStringList complaints() const;

private:
    struct Taken
    {
        qint64 thousandths = 0;
        QList<qint64> sums{0, 0, 0, 0}; ///< money, discount, points given back, points taken back
    };

    QHash<QString, till::Check> sales;
    QHash<QString, QHash<int, Taken>> taken; ///< of each sale and position
    int returns = 0;
};
