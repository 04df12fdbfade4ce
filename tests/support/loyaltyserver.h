// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/faults/faultplan.h"
#include "simulator/faults/faultyservice.h"
#include "simulator/http/httpserver.h"
#include "simulator/ledger/ledgerprinter.h"
#include "simulator/rules/rules.h"

#include <functional>
#include <memory>

namespace simulator {
class Service;
}

namespace tests {

/// The loyalty server in the test's own process: its service with its books, faults before it that
/// a test arms, and HTTP over loopback as long as it listens.
class LoyaltyServer
{
public:
    using Handler = simulator::FaultyService::Handler;
    /// Gets each request that the faults let through, in the place of the service; it may hand the
    /// request on to that and change what comes back. Called on any thread.
    using Between =
        std::function<simulator::Answer(const simulator::Request& request, const Handler& service)>;

    /// Answers nothing before start.
    /// @param database the file of its books, whose folder must outlive it
    /// @param between nothing: the service answers
    explicit LoyaltyServer(const QString& database, Between between = {});
    ~LoyaltyServer();
    LoyaltyServer(const LoyaltyServer&) = delete;
    LoyaltyServer& operator=(const LoyaltyServer&) = delete;

    /// The built-in rules.
    static simulator::Rules usualRules();
    /// The same, refusing what does not fit the schemas.
    static simulator::Rules strictRules();

    /// Starts the service, or starts it anew on the same books with other rules, while nobody asks
    /// it. Faults stay as they are.
    void start(const simulator::Rules& rules);

    /// Listens over HTTP from now on, in another way than before if it did already.
    /// @param port 0 takes a free one
    /// @param certificate empty: without TLS
    void listen(int port = 0, const simulator::HttpServer::Certificate& certificate = {});
    /// Refuses connections until it listens again.
    void stopListening() { http.reset(); }
    bool isListening() const { return http != nullptr; }
    /// While it listens.
    int port() const { return http->port(); }
    QString url() const { return http->url(); }

    /// Answers a request without a network between: what needs one to go wrong stands in the
    /// answer. Any thread.
    simulator::Answer handle(const simulator::Request& request) { return faulty.handle(request); }

    /// Lets these faults strike from now on, in the place of those before. Any thread.
    void strike(const std::vector<simulator::FaultRule>& faults) { plan.setRules(faults); }
    /// How many requests they have struck.
    int struck() const;

    /// What the books hold of cards and checks; the service may be at work.
    simulator::LedgerView books() const;

private:
    const QString database;
    const Between between;
    simulator::Rules rules;
    simulator::FaultPlan plan;
    std::unique_ptr<simulator::Service> service;
    simulator::FaultyService faulty;
    std::unique_ptr<simulator::HttpServer> http;
};

} // namespace tests
