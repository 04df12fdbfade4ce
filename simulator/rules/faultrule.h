// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/fault.h"
#include "simulator/rules/requestmatch.h"

namespace simulator {

/// A fault and the requests that it strikes: those that match all that is said here.
struct FaultRule : RequestMatch
{
    Fault fault;
    double probability = 1; ///< that a request from the first on is struck
    quint64 seed = 1;       ///< of the probability and of what the fault makes up
};

} // namespace simulator
