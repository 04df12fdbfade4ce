// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/http/adminroute.h"

#include <vector>

namespace simulator {

/// The page itself: GET / and what it is made of below /page/, from the program's own resources.
/// token: what its requests must carry, put into it.
std::vector<AdminRoute> pageFileRoutes(const QByteArray& token);

} // namespace simulator
