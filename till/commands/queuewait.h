// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/queueentry.h"

#include <QString>

#include <functional>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

/// Waiting until the outgoing queue has been delivered by somebody else: the delivery thread or
/// another process.
class QueueWait
{
public:
    /// How long a cashier waits who names no number of seconds, and the most that may be named.
    static constexpr int usualSeconds = 30;
    static constexpr int longestSeconds = 3600;

    /// Waits until nothing is left that is sent by itself, at most so many seconds.
    /// @param look is told now and then how many are delivered of those that were left at first
    static poshost::QueueCounts
    untilDelivered(poshost::Database& database, int seconds,
                   const std::function<void(qint64, qint64)>& look = {});

    /// How many checks without a message are on their way to the store.
    static int silentUnderWay(poshost::Database& database);
    static int undelivered(const poshost::QueueCounts& counts);
    /// One line with what is left.
    static QString text(const poshost::QueueCounts& counts);
};

} // namespace till
