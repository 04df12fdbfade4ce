// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/http/adminroute.h"

#include <vector>

namespace simulator {

class ExchangeBook;
class Service;

/// Takes a request as the server takes one that has come over the wire, and notes it.
using Sender = std::function<Answer(const Request&)>;

/// GET /exchanges, GET /exchanges/{number} and POST /exchanges/{number}/send. All must outlive the
/// routes. send: takes a request again, with the credentials of the moment; a fault that it meets
/// is noted, but nothing of it happens on any wire.
std::vector<AdminRoute> exchangeRoutes(ExchangeBook& book, Service& service, Sender send);

} // namespace simulator
