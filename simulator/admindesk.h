// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

namespace simulator {

class FaultPlan;
class Service;

/// What a test may look at and change while the server runs, without any credentials: it is to be
/// reached over loopback only.
///
/// | Request | What it does |
/// |---|---|
/// | GET /ledger | the books as JSON, as the command ledger --json prints them |
/// | GET /faults | the faults and how often each has struck, as JSON |
/// | POST /faults | arms a fault; the body is TOML with the keys of a [[fault]] table |
/// | DELETE /faults | takes all faults away, those of the file too until it changes |
class AdminDesk
{
public:
    /// Both must outlive the desk.
    AdminDesk(Service& lookedAt, FaultPlan& faultPlan) : service(lookedAt), plan(faultPlan) {}

    /// Answers one request; never throws. May be called from several threads at once.
    Answer handle(const Request& request) const;

private:
    [[nodiscard]] QByteArray faults() const;

    Service& service;
    FaultPlan& plan;
};

} // namespace simulator
