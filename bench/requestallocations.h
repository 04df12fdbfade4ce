// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace bench {

/// Allocations that each further line costs a request, by the plug-in and by its floor.
struct AllocationsPerLine
{
    double floor;
    double subject;
};

/// Needs a Workplace.
AllocationsPerLine countRequestAllocations();

} // namespace bench
