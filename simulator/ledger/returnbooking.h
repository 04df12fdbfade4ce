// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/ledger/booking.h"

namespace simulator {

/// Works out what a return books against its sale, by cumulative rounding: of everything that the
/// sale booked on a line, the share of the quantity returned so far (this return included, rounded
/// half up) less what earlier returns took. Any sequence of returns of a line thus adds up to
/// exactly what was booked.
///
/// sold: the sale's lines with what was returned of them so far.
/// Throws Rejection with status 424 where a line is not of the sale, has another goods code, has
/// more returned than was sold, or where its total or the points given back are not that share.
Booking bookReturn(const Check& check, const std::vector<SoldLine>& sold);

} // namespace simulator
