// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/faults/faultplan.h"
#include "simulator/faults/faultyservice.h"
#include "simulator/http/httpserver.h"
#include "simulator/service.h"
#include "tests/scenario/month/verdict.h"

#include <mutex>

namespace month {

/// The loyalty server over loopback, which notes what arrives.
class Server
{
public:
    Server(const simulator::Rules& rules, const QString& database);

    QString url() const { return http.url(); }
    /// While they are away, requests to the addresses that book are lost; pre-checks are answered.
    void setBookingAway(bool away);
    /// Everything that has arrived and was answered since the last call, in order.
    QList<Arrival> takeArrivals();

private:
    simulator::Answer handle(const simulator::Request& request);

    simulator::Service service;
    simulator::FaultPlan plan;
    simulator::FaultyService faulty;
    std::mutex mutex;
    QList<Arrival> arrivals;
    simulator::HttpServer http;
};

} // namespace month
