// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/http/adminroute.h"

#include <vector>

namespace simulator {

class RulesState;
class ServerSwitch;

/// GET /server, POST /server and GET /rules. Both must outlive the routes.
std::vector<AdminRoute> stateRoutes(ServerSwitch& server, RulesState& rules);

} // namespace simulator
