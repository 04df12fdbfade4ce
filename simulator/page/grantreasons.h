// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/grant.h"
#include "simulator/ledger/booking.h"
#include "simulator/rules/rules.h"

#include <vector>

namespace simulator {

/// Why a line is granted an amount.
struct GrantReason
{
    QString what;        ///< discount, discountOnChange, awardBonus, allowBonus or earned
    QString rule;        ///< the rules' key and its value, as in "earn.percent = 5 %"
    Kopecks base = 0;    ///< of what it is counted
    QString exact;       ///< before it is rounded half up to kopecks, as in "4.7475"
    Kopecks granted = 0; ///< what grantSale made of it
    QString limit;       ///< what has made it smaller: "minTotal"; empty for nothing
};

/// Why line number i is granted what it is; the last is what it earns when so many points pay.
std::vector<GrantReason> grantReasons(const Rules& rules, const Check& check, const Grant& grant,
                                      size_t i, Kopecks points);

/// By which rule a booked amount of a sale's line would come about now.
struct BookedReason
{
    QString what;      ///< discount, spent or earned
    QString rule;      ///< as in GrantReason
    bool fits = false; ///< whether the rules of the moment allow for what is booked
};

/// The reasons of line number i. Rules that have changed since, or a least total, which is not
/// booked, are why one may not fit.
std::vector<BookedReason> bookedReasons(const Rules& rules, const Booking& sale, size_t i);

/// The discounts of a whole grant.
Kopecks discountOf(const Grant& grant);

/// What a sale earns of which points pay so much, as its booking will count it.
Kopecks earnedWith(const Check& check, const Grant& grant, Kopecks points);

} // namespace simulator
