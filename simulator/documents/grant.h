// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/amount.h"

#include <vector>

namespace simulator {

/// What a pre-check grants on one goods line.
struct LineGrant
{
    int id = 0;
    Kopecks discount = 0;
    Kopecks discountOnChange = 0;
    Kopecks awardBonus = 0; ///< points earned; on a return negative: points taken back
    Kopecks allowBonus = 0; ///< the most that points may pay on the line

    friend bool operator==(const LineGrant&, const LineGrant&) = default;
};

/// What a pre-check grants on a check, line by line in the order of the check.
struct Grant
{
    std::vector<LineGrant> lines;
    Kopecks awardBonus = 0; ///< the sum of the lines'
    Kopecks allowBonus = 0; ///< the sum of the lines', never above the card's balance
};

} // namespace simulator
