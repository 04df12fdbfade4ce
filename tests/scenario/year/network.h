// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/restclient.h"
#include "tests/scenario/year/saboteur.h"
#include "tests/support/loyaltyserver.h"
#include "tests/support/mocked.h"

#include <QMap>

#include <optional>

namespace year {

class YearClock;

/// The way from the tills to the loyalty server, in place of the host's HTTP client: it hands every
/// request to the server in this process and lets happen what the weather says. Nobody waits; a
/// request that hangs lets the clock go on by the till's time-out.
class Network : public RestClient
{
public:
    Network(YearClock& clock, const QString& serverDatabase, Plant plant, int plantAt);

    /// Starts the server, or starts it anew with other rules.
    void serve(const simulator::Rules& rules) { server.start(rules); }
    /// From now on so many requests in a thousand meet a fault.
    void setWeather(int perMille, quint64 seed);
    /// Nothing gets through any more, in the way that the kind says, until endOutage.
    /// @param after begins after so many more requests, so that it may begin between two requests
    /// for the same check
    /// @param onlyBooking pre-checks still get through
    void beginOutage(simulator::FaultKind kind, int after, bool onlyBooking);
    void endOutage() { outage.reset(); }

    void post(const QUrl& url, const QByteArray& body,
              const QHash<QString, QString>& headers) override;
    int getError() override { return error; }
    int getHttpStatusCode() override { return status; }
    tr::Tr getErrorText() override;
    QByteArray getResponse() override { return response; }
    void setTimeout(int seconds) override { timeout = seconds; }
    QString getResponseHeader(const QString&) override { return {}; }
    int getSendCount() override { return sendCount; }

    /// How many requests the tills have sent, and how often each fault struck.
    int requests() const { return sent; }
    const QMap<QString, int>& faults() const { return struck; }
    /// The names of the faults since the last call.
    QStringList takeFaults() { return std::exchange(recent, {}); }

private:
    struct Outage
    {
        simulator::FaultKind kind;
        int after;
        bool onlyBooking;
    };

    bool isAway(const QUrl& url);
    void receive(const simulator::Answer& answer);
    void pass(const simulator::Fault& fault);
    void note(simulator::FaultKind kind);
    void lose(int statusSoFar);

    YearClock& clock;
    Saboteur saboteur;
    tests::LoyaltyServer server;
    std::optional<Outage> outage;

    int timeout = 10;
    int error = 0;
    int status = 0;
    int sendCount = 0;
    QByteArray response;

    int sent = 0;
    QMap<QString, int> struck;
    QStringList recent;
    tests::Registered<RestClient> registration;
};

} // namespace year
