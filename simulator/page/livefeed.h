// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/http/adminroute.h"

#include <vector>

namespace simulator {

class ExchangeBook;
class FaultPlan;
class RulesState;
class ServerSwitch;

/// What a page is told about; all must outlive the routes made from it.
struct Sources
{
    ExchangeBook& exchanges;
    FaultPlan& faults;
    RulesState& rules;
    ServerSwitch& server;
};

/// GET /events: what has changed, as server-sent events, each a JSON object:
///
/// - first, last: the numbers of the exchanges that are there
/// - rows: those since the last event, where they are few enough to be told; whoever has missed
///   some asks GET /exchanges for them by their numbers
/// - faults, confirmations, rules: grow when something of that kind has changed
/// - away: whether the server is switched off
///
/// An event is made when the client has taken the one before, at most five a second, so a slow one
/// gets fewer of them and nothing waits for it.
std::vector<AdminRoute> eventRoutes(const Sources& sources);

} // namespace simulator
