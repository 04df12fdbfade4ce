// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

#include <QString>

namespace simulator {

/// The last segment of the address, as in "precheck".
QString endpointOf(const Request& request);

/// The number of the check's card; empty for what is no check.
QString cardOf(const Request& request);

} // namespace simulator
