// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/commands/servicemanager.h"

#include <QString>

#include <chrono>
#include <optional>

namespace poshost {
class DeliveryThread;
class QueueBell;
} // namespace poshost

namespace till {

/// Delivers the queue of a database until the process is asked to end, as a service does. A till
/// that closes a check or stops delivering wakes it; the queue is looked at once a minute all the
/// same, should a ring have been lost.
class QueueWatch
{
public:
    /// @param interval of the looks at the queue that nobody asked for
    explicit QueueWatch(const QString& databaseFile,
                        std::chrono::milliseconds interval = std::chrono::minutes(1));

    /// Has checks that were last changed so many days ago moved into the archive meanwhile.
    void archiveAfter(int days) { keepDays = days; }
    /// Has the till's metrics written into a file meanwhile; empty: nowhere.
    void writeMetricsInto(const QString& file) { metricsFile = file; }
    /// Returns once SIGTERM or SIGINT has come and the delivery has ended. Where the transport
    /// needs longer for that than a second allows, the whole process ends here, with 0.
    /// @throws Failure or BasicException when it cannot begin
    void run();

private:
    void waitUntilStopped(int stopSignals, poshost::QueueBell& bell,
                          poshost::DeliveryThread& delivery) const;
    void tellThatAlive(const poshost::DeliveryThread& delivery) const;

    const QString database;
    const std::chrono::milliseconds look;
    const ServiceManager manager;
    std::optional<int> keepDays;
    QString metricsFile;
};

} // namespace till
