// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/year/dice.h"

#include <QMap>

namespace year {

/// What a customer brings back of a sale: one of its lines for certain, others now and then, each
/// whole or in part; of goods that are counted by the piece, whole pieces.
/// @param left position -> thousandths that have not come back yet; not empty, each above 0
/// @param fractional the positions of goods that are weighed
/// @return position -> thousandths
inline QMap<int, qint64> broughtBack(Dice& dice, const QMap<int, qint64>& left,
                                     const QMap<int, bool>& fractional)
{
    QMap<int, qint64> brought;
    const QList<int> positions = left.keys();
    const int always = dice.pick(positions);
    for (const int position : positions) {
        if (position != always && dice.chance(40)) {
            continue;
        }
        const qint64 whole = left.value(position);
        if (dice.chance(50)) {
            brought.insert(position, whole);
        } else if (fractional.value(position)) {
            brought.insert(position, dice.between(1, whole));
        } else {
            brought.insert(position, dice.between(1, whole / 1000) * 1000);
        }
    }
    return brought;
}

} // namespace year
