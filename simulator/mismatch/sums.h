// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/grant.h"
#include "simulator/ledger/booking.h"
#include "simulator/mismatch/difference.h"

namespace simulator {

/// The amount that lets the lines not add up to the total: that of the one line whose total is not
/// its quantity at its price, where that explains it, otherwise the check's. Nothing when they do.
std::optional<Difference> wrongSum(const Element& request);

/// The second of two lines with one identifier, or the one of them that is not as its position
/// says.
std::optional<Difference> repeatedLine(const Element& request);

/// What lets a sale's payment not follow from what its lines used: the one line that used another
/// discount, or more points, than it was granted, otherwise the amount that was paid.
std::optional<Difference> wrongPayment(const Element& confirmation,
                                       const std::vector<LineGrant>& granted);

/// What a return has that is not the share of its sale: of a line the identifier, the goods code,
/// the quantity, the points or the total.
std::optional<Difference> wrongShare(const Element& request, const std::vector<SoldLine>& sold);

} // namespace simulator
