// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/queueentry.h"

#include <QList>
#include <QString>
#include <optional>

namespace orvastore {

class Connection;
class Result;

/// The store's messages as people see and steer them, with the words of a till's own queue. Every
/// operation throws StoreError, and then nothing has changed.
class StoreQueue
{
public:
    explicit StoreQueue(Connection& owner) : connection(owner) {}

    /// How many messages one list shows at most: a store may hold a million.
    static constexpr int listedAtMost = 1000;
    /// The oldest messages that are not delivered.
    QList<poshost::QueueEntry> list();
    /// One message with its content; "***" stands for its secrets.
    std::optional<poshost::QueueContent> show(qint64 message);

    /// @return false: there is no such undelivered message
    bool retry(qint64 message);
    bool park(qint64 message);
    /// @return false: there is no such parked message
    bool settle(qint64 message);
    /// Replaces what a queue's messages are sent as. @param shop empty: of all shops
    /// @return how many undelivered messages go out with it
    qint64 reauthorize(const QString& queue, const QString& shop, const QString& authorization);

private:
    static poshost::QueueEntry readEntry(const Result& found, int row);
    bool change(const QByteArray& function, qint64 message);

    Connection& connection;
};

} // namespace orvastore
