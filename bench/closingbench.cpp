// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Closing a check: the commit with its durable message.

#include "bench/closingscene.h"
#include "bench/rows.h"
#include "bench/suites.h"

namespace bench {

namespace {

void measureClosing(benchmark::State& state, int lines)
{
    ClosingScene scene(lines);
    double floorSum = 0;
    double subjectSum = 0;
    for ([[maybe_unused]] const auto turn : state) {
        scene.prepare();
        const double time = seconds(Clock::Wall, [&] { scene.close(); });
        subjectSum += time;
        state.SetIterationTime(time);
        floorSum += seconds(Clock::Wall, [&] { scene.insert(); });
    }
    const auto turns = static_cast<double>(state.iterations());
    report(state, floorSum / turns, subjectSum / turns, subjectSum / floorSum, {1.25});
}

} // namespace

void addClosingRows()
{
    addRow("closing/100", 100, [](benchmark::State& state) { measureClosing(state, 100); });
}

} // namespace bench
