// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// How often a request allocates memory.

#include "bench/requestallocations.h"
#include "bench/rows.h"
#include "bench/suites.h"
#include "bench/workplace.h"

namespace bench {

namespace {

void measureAllocations(benchmark::State& state)
{
    const Workplace workplace;
    AllocationsPerLine counted{};
    for ([[maybe_unused]] const auto turn : state) {
        counted = countRequestAllocations();
        state.SetIterationTime(1);
    }
    report(state, counted.floor, counted.subject, counted.subject / counted.floor,
           {.value = 1.3, .isTime = false});
}

} // namespace

void addAllocationRows()
{
    addRow("allocations per line", 1, measureAllocations)->Repetitions(3);
}

} // namespace bench
