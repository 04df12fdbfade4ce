// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A whole request without a network.

#include "bench/allocations.h"
#include "bench/rows.h"
#include "bench/suites.h"
#include "bench/wholerequest.h"
#include "bench/workplace.h"

namespace bench {

namespace {

/// Only checks of this length and more are limited: what a request costs however short the check
/// is, weighs on a short one.
constexpr int linesOfLimitedChecks = 100;

void measureRequest(benchmark::State& state, int lines)
{
    const Workplace workplace;
    RequestFloor floor(lines);
    WholeRequest request(lines);
    floor.run();
    request.run();
    if (!request.isLike(floor)) {
        state.SkipWithError("floor and subject do not do the same");
        return;
    }
    const Limit limit = lines >= linesOfLimitedChecks ? Limit{1.20} : Limit::none();
    compare(
        state, Clock::OwnWork, limit, [&floor] { floor.run(); }, [&request] { request.run(); });
}

} // namespace

void addRequestRows()
{
    for (const auto& [lines, turns] : {std::pair{10, 200}, {100, 40}, {1'000, 8}, {10'000, 2}}) {
        addRow("request/" + std::to_string(lines), turns,
               [lines = lines](benchmark::State& state) { measureRequest(state, lines); });
    }
}

} // namespace bench
