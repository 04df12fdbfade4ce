// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/http/adminroute.h"

#include <vector>

namespace simulator {

class Service;

/// POST /try: what a sale would be granted by the rules of the moment and why. Nothing is
/// remembered or booked. The body is a JSON object: card, points (to pay with, as text, "0" when
/// left out) and lines, each with sku, total and minTotal (texts with two decimals, minTotal "0"
/// when left out). The service must outlive the route. database: the file of the books
std::vector<AdminRoute> trialRoutes(const Service& service, const QString& database);

} // namespace simulator
