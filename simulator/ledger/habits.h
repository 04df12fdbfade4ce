// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/grant.h"
#include "simulator/ledger/booking.h"

#include <vector>

namespace simulator {

/// What a sale is booked by, beside what its confirmation says.
struct SaleTerms
{
    std::vector<LineGrant> granted; ///< in the order of the check's lines
    Kopecks balance = 0;            ///< of the card, before it
};

/// Changes what a sale or a return books once it was worked out as it must be. May throw Rejection.
using SaleHabit = void (*)(Booking&, const SaleTerms&);
using ReturnHabit = void (*)(Booking&, const std::vector<SoldLine>& sold);

/// How a desk that is not sound books. Without one it books what was worked out.
struct Habits
{
    std::vector<SaleHabit> sales;
    std::vector<ReturnHabit> returns;
};

} // namespace simulator
