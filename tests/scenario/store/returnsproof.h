// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

/// What was taken back of the sales of a shop, reckoned by itself from closed checks, wherever they
/// were read: sums alone, nothing of how the tills come to them.
class TakenBack
{
public:
    /// Points of a sale and of its returns, in kopecks.
    struct Points
    {
        qint64 spent = 0;
        qint64 earned = 0;
        qint64 givenBack = 0;
        qint64 takenBack = 0;
    };

    /// Takes a check once; one that was taken before is a complaint.
    void add(const till::Check& closed);

    int sold() const { return int(sales.size()); }
    int returned() const { return int(checks.size() - sales.size()); }
    QStringList soldChecks() const { return sales.keys(); }
    /// How many sales have come back with every piece.
    int whole() const;
    /// What is wrong: a check twice, more pieces than sold, or sums of a whole line that are not
    /// the sale's.
    QStringList complaints() const;
    /// Everything that is summed up, a line each, to be held against other books.
    QStringList lines() const;
    /// The points alone, "sale spent earned given back taken back".
    QStringList points() const;
    static QStringList pointsOf(const QMap<QString, Points>& sums);

private:
    struct Taken
    {
        qint64 thousandths = 0;
        QList<qint64> sums{0, 0, 0, 0}; ///< money, discount, points given back, points taken back
    };

    QMap<QString, till::Check> sales;
    QMap<QString, QMap<int, Taken>> taken; ///< of each sale and position
    QHash<QString, int> checks;            ///< and how often each was seen
};
