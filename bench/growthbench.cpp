// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Whether the work of each reader and builder grows with the check and no faster.

#include "bench/parts.h"
#include "bench/rows.h"
#include "bench/suites.h"
#include "bench/workplace.h"

namespace bench {

namespace {

constexpr int smallCheck = 100;
constexpr int largeCheck = 10'000;

/// The small check is measured on as many checks as have the large one's lines together: both run
/// through the same amount of memory, so that only the growth differs and not the luck with caches.
void measureGrowth(benchmark::State& state, const NamedPart& part)
{
    const Workplace workplace;
    std::vector<std::unique_ptr<Part>> small;
    for (int lines = 0; lines < largeCheck; lines += smallCheck) {
        small.push_back(part.make(smallCheck));
    }
    const std::unique_ptr<Part> large = part.make(largeCheck);
    const auto runSmall = [&small] {
        for (const auto& one : small) {
            one->run();
        }
    };
    double smallSum = 0;
    double largeSum = 0;
    for ([[maybe_unused]] const auto turn : state) {
        smallSum += seconds(Clock::OwnWork, runSmall);
        for (const auto& one : small) {
            one->reset();
        }
        const double time = seconds(Clock::OwnWork, [&large] { large->run(); });
        large->reset();
        largeSum += time;
        state.SetIterationTime(time);
    }
    const auto lines = static_cast<double>(state.iterations() * largeCheck);
    report(state, smallSum / lines, largeSum / lines, largeSum / smallSum, {1.2});
}

} // namespace

void addGrowthRows()
{
    for (const NamedPart& part : allParts()) {
        addRow("growth/" + part.name, 3,
               [part](benchmark::State& state) { measureGrowth(state, part); });
    }
}

} // namespace bench
