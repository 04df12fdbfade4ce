// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <limits>

namespace simulator {

/// Which requests a fault or a finished answer is for.
struct RequestMatch
{
    static constexpr int always = std::numeric_limits<int>::max();

    QString endpoint;     ///< one of endpoints; empty: any
    QString card;         ///< the check's card; empty: any
    int firstRequest = 1; ///< the first request that it is for, counted among the matching ones
    int times = always;   ///< how many requests at most
};

} // namespace simulator
