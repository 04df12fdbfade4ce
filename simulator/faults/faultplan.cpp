// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/faults/faultplan.h"

#include "simulator/documents/requestfacts.h"

#include <algorithm>

namespace simulator {
namespace {

/// From 0 up to 1, the same everywhere for the same state of the generator.
double draw(std::mt19937_64& generator)
{
    constexpr int spare = 11; // bits that a double cannot hold
    constexpr double unit = 1.0 / 9007199254740992.0;
    return static_cast<double>(generator() >> spare) * unit;
}

} // namespace

FaultPlan::FaultPlan(const std::vector<FaultRule>& rules)
{
    setRules(rules);
}

void FaultPlan::setRules(const std::vector<FaultRule>& rules)
{
    const std::scoped_lock lock(mutex);
    std::erase_if(rows, [](const Rule& row) { return !row.isArmed; });
    quint64 number = 0;
    for (const FaultRule& rule : rules) {
        // rules with one seed must not strike together
        rows.push_back({{.rule = rule, .id = ++lastId}, std::mt19937_64(rule.seed + number)});
        ++number;
    }
}

void FaultPlan::arm(const FaultRule& rule)
{
    const std::scoped_lock lock(mutex);
    rows.insert(rows.begin(),
                {{.rule = rule, .isArmed = true, .id = ++lastId}, std::mt19937_64(rule.seed)});
}

void FaultPlan::clear()
{
    const std::scoped_lock lock(mutex);
    rows.clear();
}

bool FaultPlan::remove(int id)
{
    const std::scoped_lock lock(mutex);
    return std::erase_if(rows, [id](const Rule& row) { return row.id == id; }) > 0;
}

std::vector<FaultPlan::State> FaultPlan::states() const
{
    const std::scoped_lock lock(mutex);
    return {rows.begin(), rows.end()};
}

bool FaultPlan::asksForCards() const
{
    return std::any_of(rows.begin(), rows.end(),
                       [](const Rule& row) { return !row.rule.card.isEmpty(); });
}

std::optional<Fault> FaultPlan::take(const Request& request)
{
    const QString endpoint = endpointOf(request);
    const std::scoped_lock lock(mutex);
    const QString card = asksForCards() ? cardOf(request) : QString();
    std::optional<Fault> met;
    for (Rule& state : rows) {
        const FaultRule& rule = state.rule;
        const bool matches = (rule.endpoint.isEmpty() || rule.endpoint == endpoint) &&
                             (rule.card.isEmpty() || rule.card == card);
        if (matches && wouldStrike(state) && !met) {
            ++state.struck;
            met = rule.fault;
            met->random = state.generator();
        }
    }
    return met;
}

bool FaultPlan::wouldStrike(Rule& state)
{
    const FaultRule& rule = state.rule;
    ++state.matched;
    const bool byChance = draw(state.generator) < rule.probability;
    return byChance && state.matched >= rule.firstRequest && state.struck < rule.times;
}

} // namespace simulator
