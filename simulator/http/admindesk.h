// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/http/admingate.h"
#include "simulator/http/adminroute.h"

#include <vector>

namespace simulator {

class FaultPlan;
class Service;

/// What a test may look at and change while the server runs, without any credentials: whom it
/// answers is the gate's. Every address is a route; those of the page are added by it.
///
/// | Request | What it does |
/// |---|---|
/// | GET /ledger | the books as JSON, as the command ledger --json prints them |
/// | GET /faults | the faults and how often each has struck, as JSON |
/// | POST /faults | arms a fault; the body is a JSON object with the keys of a [[fault]] table |
/// | DELETE /faults | takes all faults away, those of the file too until it changes |
/// | DELETE /faults/{id} | takes one fault away |
class AdminDesk
{
public:
    /// Both must outlive the desk.
    AdminDesk(Service& lookedAt, FaultPlan& faultPlan);

    /// Adds what else can be asked. Not while requests are answered.
    void add(std::vector<AdminRoute> more);

    /// All that can be asked.
    [[nodiscard]] const std::vector<AdminRoute>& routes() const { return table; }

    /// What the page must send to change something.
    [[nodiscard]] const QByteArray& pageToken() const { return gate.pageToken(); }

    /// How much of a request's body is read: nothing where the request is refused whatever it is.
    [[nodiscard]] qsizetype bodyLimit(const Request& request) const;

    /// Answers one request; never throws. May be called from several threads at once.
    Answer handle(const Request& request) const;

private:
    [[nodiscard]] Answer answered(const Request& request) const;

    const AdminGate gate;
    std::vector<AdminRoute> table;
};

/// The faults of a plan in the order in which they strike, as JSON.
QByteArray faultsJson(const FaultPlan& plan);

} // namespace simulator
