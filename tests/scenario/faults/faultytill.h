// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/queueentry.h"
#include "tests/support/stoppedclock.h"
#include "till/commands/workplace.h"

#include <QStringList>

#include <memory>

/// The reference till with the built plug-in, in this process, on a clock that stands still. Its
/// queue is delivered when the test says so, on the test's thread.
class FaultyTill
{
public:
    /// Limit of one exchange that the till is configured with.
    static constexpr int timeoutMilliseconds = 1000;

    /// @param folder holds its files and must live longer
    /// @param seed of the queue's waits
    FaultyTill(const QString& folder, const QString& serverAddress, const QString& caFile,
               quint64 seed);
    ~FaultyTill();

    /// The till as after its process has ended: everything made anew on the same files.
    void restart();

    till::CashDesk& desk() { return workplace->cashDesk(); }

    /// Opens the tests' sale: 2 pieces at 100.00 and 0.500 kg at 60.00.
    void openSale();
    /// Opens a return of one of the two pieces of the last sale.
    void openReturn();
    void presentCard();
    /// The open check's sale with a card, a request and 50.00 points.
    void openPaidWithPoints();

    /// One run of the delivery.
    void deliver();
    /// Lets the time pass until the delivery would try again.
    void waitForNextAttempt();
    /// The oldest undelivered message, or nothing.
    std::optional<poshost::QueueEntry> undelivered();
    /// What a manager does after a change of password: new credentials, and the message at once.
    void reauthorizeAndRetry();
    /// Delivers as a till and its people do in the end: waits where it waits, has parked messages
    /// sent again.
    void drain();

    /// The books as till::Ledger writes them.
    QString books();

private:
    void write(const QString& name, const QString& content) const;

    const QString folder;
    const quint64 seed;
    till::Options options;
    StoppedClock clock;
    QDateTime nextAttempt;
    std::unique_ptr<till::Workplace> workplace;
};
