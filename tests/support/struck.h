// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/faults/faultplan.h"

namespace simulator {

/// How many requests the rules that a plan has now have struck.
inline int struckBy(const FaultPlan& plan)
{
    int sum = 0;
    for (const FaultPlan::State& state : plan.states()) {
        sum += state.struck;
    }
    return sum;
}

} // namespace simulator
