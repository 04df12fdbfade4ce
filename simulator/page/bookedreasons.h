// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/ledger/booking.h"
#include "simulator/rules/rules.h"

#include <vector>

namespace simulator {

/// By which rule a booked amount would come about now.
struct BookedReason
{
    int line = 0;       ///< its id; 0 for the check as a whole
    QString what;       ///< total, discount, spent, earned, paid, givenBack or takenBack
    QString rule;       ///< keys of the rules and amounts, as in "earn.percent = 5.00 %"
    Kopecks amount = 0; ///< what is booked
    bool fits = false;  ///< whether the rules of the moment allow for it
};

/// The reasons of a sale's amounts, first those of the check. Rules that have changed since, or a
/// least total, which is not booked, are why one may not fit.
std::vector<BookedReason> saleReasons(const Rules& rules, const Booking& sale);

/// The reasons of a return's amounts, first those of the check: shares of what the sale had booked
/// by the quantity returned so far, less what was returned before.
/// returns: of the sale, in the order of their booking; i: which of them
std::vector<BookedReason> returnReasons(const Booking& sale, const std::vector<Booking>& returns,
                                        size_t i);

} // namespace simulator
