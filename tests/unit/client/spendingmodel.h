// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/unit/client/spendinganswer.h"

#include <utility>
#include <vector>

/// The rule by which points are spread over goods lines, written a second time without the host's
/// and Qt's types, to compare with. Slow and plain on purpose.
namespace tests {

/// What a line that takes part ends up with.
struct ModelImpact
{
    int position = 0;
    /// The share of the first pass, which stays the sum and the rate of the impact.
    double share = 0;
};

struct ModelResult
{
    /// By ascending position.
    std::vector<ModelImpact> impacts;
    /// Every amount in the order in which it is recorded, with its position; also those recorded
    /// for an impact that a later line with the same position replaces.
    std::vector<std::pair<int, double>> records;
};

ModelResult spreadByModel(const std::vector<SpendingLine>& lines, double amount, double maximum);

/// Rounds to hundredths as the rule does; shares beyond 64 bits take the nearest limit.
double roundByModel(double value);

} // namespace tests
