// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/line.h"

#include <QList>
#include <QStringList>

namespace tests {
class Books;
}

namespace year {

class Dice;
class Journal;
class Network;
class YearClock;

/// What all that happens shares.
struct Scene
{
    YearClock& clock;
    Dice& dice;
    Journal& journal;
    Network& network;
    tests::Books& books;
    QStringList cards;
    /// Goods as lines of one piece or kilogramme.
    QList<till::Line> goods;
};

} // namespace year
