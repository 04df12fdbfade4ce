// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/month/verdict.h"
#include "tests/support/loyaltyserver.h"

#include <mutex>

namespace month {

/// The loyalty server over loopback, which notes what arrives.
class Server
{
public:
    Server(const simulator::Rules& rules, const QString& database);

    QString url() const { return loyalty.url(); }
    /// While they are away, requests to the addresses that book are lost; pre-checks are answered.
    void setBookingAway(bool away);
    /// Everything that has arrived and was answered since the last call, in order.
    QList<Arrival> takeArrivals();
    simulator::LedgerView books() const { return loyalty.books(); }

private:
    simulator::Answer noted(const simulator::Request& request, const simulator::Answer& answer);

    std::mutex mutex; // guards what follows
    QList<Arrival> arrivals;
    tests::LoyaltyServer loyalty;
};

} // namespace month
