// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/faults/fault.h"

#include <limits>

namespace simulator {

/// A fault and the requests that it strikes: those that match all that is said here.
struct FaultRule
{
    static constexpr int always = std::numeric_limits<int>::max();

    Fault fault;
    QString endpoint;       ///< "precheck", "paymenttry" or "checkconfirm"; empty: any
    QString card;           ///< the check's card; empty: any
    int firstRequest = 1;   ///< the first request that is struck, counted among the matching ones
    double probability = 1; ///< that a request from the first on is struck
    quint64 seed = 1;       ///< of the probability and of what the fault makes up
    int times = always;     ///< how many requests are struck at most
};

} // namespace simulator
