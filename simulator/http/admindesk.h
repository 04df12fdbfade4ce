// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

namespace simulator {

class FaultPlan;
class Service;

/// What a test may look at and change while the server runs, without any credentials: it is to be
/// reached over loopback only. A web page that is open on the same machine can send requests there
/// too, so those are refused that name the machine by anything but a name of loopback (403: a name
/// of the page's own may lead there), that come from a page of another address (403), or that would
/// change something and are no JSON, which a page cannot send without being let (415).
///
/// | Request | What it does |
/// |---|---|
/// | GET /ledger | the books as JSON, as the command ledger --json prints them |
/// | GET /faults | the faults and how often each has struck, as JSON |
/// | POST /faults | arms a fault; the body is a JSON object with the keys of a [[fault]] table |
/// | DELETE /faults | takes all faults away, those of the file too until it changes |
class AdminDesk
{
public:
    /// Both must outlive the desk.
    AdminDesk(Service& lookedAt, FaultPlan& faultPlan) : service(lookedAt), plan(faultPlan) {}

    /// How much of a request's body is read: nothing where the request is refused whatever it is.
    [[nodiscard]] qsizetype bodyLimit(const Request& request) const;

    /// Answers one request; never throws. May be called from several threads at once.
    Answer handle(const Request& request) const;

private:
    [[nodiscard]] QByteArray faults() const;

    Service& service;
    FaultPlan& plan;
};

} // namespace simulator
