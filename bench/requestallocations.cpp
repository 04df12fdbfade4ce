// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/requestallocations.h"

#include "bench/allocations.h"
#include "bench/wholerequest.h"

namespace bench {

namespace {

constexpr int shortCheck = 1'000;
constexpr int longCheck = 2'000;

/// The first run fills what is made once a process and is not counted.
template <typename Work>
double allocationsOf(Work& work)
{
    work.run();
    return static_cast<double>(countAllocations([&work] { work.run(); }));
}

template <typename Work>
double perLine()
{
    Work small(shortCheck);
    const double few = allocationsOf(small);
    Work large(longCheck);
    return (allocationsOf(large) - few) / (longCheck - shortCheck);
}

} // namespace

AllocationsPerLine countRequestAllocations()
{
    return {perLine<RequestFloor>(), perLine<WholeRequest>()};
}

} // namespace bench
