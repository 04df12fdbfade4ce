// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/check.h"
#include "simulator/documents/grant.h"
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

/// The key that decides for a goods code, and its value, as in "earn.percent = 5.00 %".
/// table: of the rules, as in "earn"
QString ruleText(const QString& table, const Percentage& percentage, const QString& sku);

/// The discounts of a whole grant.
Kopecks discountOf(const Grant& grant);

/// What a sale earns of which points pay so much, as its booking will count it.
Kopecks earnedWith(const Check& check, const Grant& grant, Kopecks points);

} // namespace simulator
