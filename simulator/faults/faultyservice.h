// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

#include <functional>

namespace simulator {

class FaultPlan;

/// Stands in front of what answers requests and lets happen what a plan says. What needs a socket
/// to happen is only noted in the answer, for the server that sends it.
class FaultyService
{
public:
    using Handler = std::function<Answer(const Request&)>;

    /// The plan must outlive it; its rules may change at any time.
    FaultyService(Handler requestHandler, FaultPlan& faultPlan);

    /// Answers one request, handing it on not at all, once or twice. May be called from several
    /// threads at once if the handler may.
    Answer handle(const Request& request) const;

private:
    [[nodiscard]] Answer spoiled(const Request& request, const Fault& fault) const;

    const Handler handler;
    FaultPlan& plan;
};

} // namespace simulator
