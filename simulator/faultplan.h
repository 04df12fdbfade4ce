// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"
#include "simulator/faultrule.h"

#include <mutex>
#include <random>
#include <vector>

namespace simulator {

/// Decides which request meets which fault. Knows nothing of sockets: a server asks it for every
/// request, and so may a test that calls a Service without any HTTP between.
///
/// Every rule counts the requests that it matches, whatever other rules do with them; the first
/// rule that strikes wins. The same rules and the same requests in the same order meet the same
/// faults. All operations may be called from several threads at once.
class FaultPlan
{
public:
    /// Without rules nothing goes wrong.
    explicit FaultPlan(const std::vector<FaultRule>& rules = {});

    /// Counts the request and says what it meets; nothing when all goes well.
    std::optional<Fault> take(const Request& request);

    /// Replaces all rules and begins to count anew; with none, nothing goes wrong from now on.
    void setRules(const std::vector<FaultRule>& rules);

    /// How many requests were struck since the rules were set.
    [[nodiscard]] int struck() const;

private:
    struct Rule
    {
        FaultRule rule;
        std::mt19937_64 generator;
        int matched = 0;
        int struck = 0;
    };

    static bool wouldStrike(Rule& rule);

    mutable std::mutex mutex; // guards what follows
    std::vector<Rule> states;
    bool asksForCards = false;
};

} // namespace simulator
