// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"
#include "simulator/rules/faultrule.h"

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

    /// Replaces all rules that were set and begins to count anew; armed ones stay.
    void setRules(const std::vector<FaultRule>& rules);

    /// Adds a rule that strikes before those that were set and those armed earlier.
    void arm(const FaultRule& rule);

    /// Takes all rules away, set or armed.
    void clear();

    /// Takes the rule with that id away; false when there is none.
    bool remove(int id);

    /// A rule and what became of it.
    struct State
    {
        FaultRule rule;
        bool isArmed = false;
        int matched = 0; ///< requests that it counted
        int struck = 0;
        int id = 0; ///< its own as long as the plan is there
    };

    /// All rules in the order in which they strike.
    [[nodiscard]] std::vector<State> states() const;

private:
    struct Rule : State
    {
        std::mt19937_64 generator;
    };

    static bool wouldStrike(Rule& state);
    [[nodiscard]] bool asksForCards() const;

    mutable std::mutex mutex; // guards what follows
    std::vector<Rule> rows;
    int lastId = 0;
};

} // namespace simulator
