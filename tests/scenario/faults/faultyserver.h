// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/authority.h"
#include "tests/support/loyaltyserver.h"
#include "tests/support/portreserve.h"

#include <memory>

class BusyConnection;

/// The loyalty server of one pair, with the built-in rules, and the fault that strikes it between
/// begin and end. It has a host name of its own, so that nothing is known about it from before.
class FaultyServer
{
public:
    /// @param folder holds its database and must live longer
    /// @param number of the pair; part of the host name
    FaultyServer(const QString& folder, int number, const simulator::Fault& fault, quint64 seed);
    ~FaultyServer();
    FaultyServer(const FaultyServer&) = delete;
    FaultyServer& operator=(const FaultyServer&) = delete;

    QString hostName() const;
    /// Where a till finds it; https when the fault is one of the certificate.
    QString address() const;
    /// The certificates to trust; empty without https.
    static QString authorityFile();

    /// Whether the fault strikes connections and not single requests.
    bool isConnectionFault() const;
    /// Lets the fault strike all requests to an endpoint, or all connections, from now on.
    void begin(const QString& endpoint);
    /// Lets another fault strike the next request to an endpoint.
    void failOnce(const QString& endpoint, int status);
    /// Lets these strike whatever they match from now on.
    void beginAll(const std::vector<simulator::FaultRule>& given) { loyalty.strike(given); }
    /// From now on all goes well.
    void end();
    /// How many requests or questions after its name were struck since begin.
    int struck() const;

    /// The books as simulator::ledgerCsv writes them.
    QString books() const;
    /// Of the card that the tests present.
    qint64 balanceKopecks() const;

private:
    void listenWell();
    void keepBusy();
    simulator::HttpServer::Certificate wrongCertificate() const;

    const simulator::Fault fault;
    const quint64 seed;
    const int number;
    const simulator::Rules rules;
    PortReserve port;
    tests::LoyaltyServer loyalty;
    std::unique_ptr<BusyConnection> busy;
};
