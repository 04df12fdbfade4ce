// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/amount.h"
#include "simulator/documents/element.h"

#include <vector>

namespace simulator {

/// What a confirmation says was used on one goods line.
struct UsedAwards
{
    Kopecks discount = 0;
    Kopecks points = 0;
};

/// How a sale was paid, as its confirmation says.
struct Payment
{
    std::vector<UsedAwards> lines; ///< in the order of the document's lines
    Kopecks amount = 0;            ///< money, points not included
};

/// Reads what a sale's confirmation adds to the answer. Elements that are repeated are summed.
/// Throws Rejection: 400 where the payment is missing or an amount unreadable, 424 where an amount
/// is negative.
Payment readPayment(const Element& confirmation);

} // namespace simulator
