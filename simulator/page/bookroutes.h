// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/http/adminroute.h"

#include <vector>

namespace simulator {

class Service;

/// GET /cards, GET /cards/{number}, GET /checks and GET /checks/{id}: the books a page at a time,
/// read over a connection of each request's own, so that nobody at a till waits for it. The service
/// must outlive the routes. database: the file of the books
std::vector<AdminRoute> bookRoutes(const Service& service, const QString& database);

} // namespace simulator
