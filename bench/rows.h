// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <benchmark/benchmark.h>
#include <chrono>
#include <ctime>
#include <limits>
#include <string>

namespace bench {

/// What counts as time: the thread's own work where nothing is waited for, since a busy machine
/// cannot bend that; the wall clock where disks and peers are waited for.
enum class Clock
{
    OwnWork,
    Wall,
};

template <typename Work>
double seconds(Clock clock, Work&& work)
{
    const clockid_t id = clock == Clock::OwnWork ? CLOCK_THREAD_CPUTIME_ID : CLOCK_MONOTONIC;
    timespec start{};
    timespec end{};
    clock_gettime(id, &start);
    work();
    clock_gettime(id, &end);
    return static_cast<double>(end.tv_sec - start.tv_sec) +
           static_cast<double>(end.tv_nsec - start.tv_nsec) * 1e-9;
}

/// What a row of the table says.
struct Limit
{
    double value;
    bool isLeast = false; ///< the figure must be at least the value, not at most
    bool isTime = true;   ///< floor and subject are seconds, not counts

    /// For figures that are only shown.
    static Limit none() { return {std::numeric_limits<double>::infinity()}; }
};

inline void report(benchmark::State& state, double floor, double subject, double figure,
                   Limit limit)
{
    state.counters["floor"] = floor;
    state.counters["subject"] = subject;
    state.counters["figure"] = figure;
    state.counters["limit"] = limit.value;
    state.counters["least"] = limit.isLeast ? 1 : 0;
    state.counters["time"] = limit.isTime ? 1 : 0;
}

/// Runs floor and subject in turns, so that what disturbs the machine meets both, and reports the
/// seconds that each took and their ratio.
template <typename Floor, typename Subject>
void compare(benchmark::State& state, Clock clock, Limit limit, Floor&& floor, Subject&& subject)
{
    double floorSum = 0;
    double subjectSum = 0;
    bool floorFirst = true;
    for ([[maybe_unused]] const auto turn : state) {
        if (floorFirst) {
            floorSum += seconds(clock, floor);
        }
        const double time = seconds(clock, subject);
        subjectSum += time;
        if (!floorFirst) {
            floorSum += seconds(clock, floor);
        }
        floorFirst = !floorFirst;
        state.SetIterationTime(time);
    }
    const auto turns = static_cast<double>(state.iterations());
    report(state, floorSum / turns, subjectSum / turns, subjectSum / floorSum, limit);
}

/// How often a row is measured; the table shows the medians.
inline constexpr int repetitions = 7;

/// Adds a row to the table.
/// @param turns of floor and subject for one repetition
template <typename Function>
benchmark::internal::Benchmark* addRow(const std::string& name, int turns, Function function)
{
    return benchmark::RegisterBenchmark(name.c_str(), function)
        ->Iterations(turns)
        ->Repetitions(repetitions)
        ->UseManualTime()
        ->ReportAggregatesOnly();
}

} // namespace bench
