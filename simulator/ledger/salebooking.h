// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/grant.h"
#include "simulator/ledger/booking.h"
#include "simulator/ledger/payment.h"

namespace simulator {

/// Works out what a sale books from the answer that granted its awards and its confirmation.
///
/// With G the sum of the lines, D the discounts and P the points used on the whole check, each
/// line earns what the answer awarded x (G - D - P) / (G - D), rounded half up, and all of it when
/// P is 0.
///
/// granted and payment: their lines stand in the order of the check's lines.
/// Throws Rejection with status 424 where a line used more discount or points than were granted or
/// where G - D - P is not the amount paid.
Booking bookSale(const Check& check, const std::vector<LineGrant>& granted, const Payment& payment);

} // namespace simulator
