// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/singleton.h"
#include "host/hostexport.h"

#include <QSharedPointer>
#include <QString>
#include <QVariantMap>

namespace poshost {
class Database;
} // namespace poshost

/// The host's persistent outgoing queue, a table of the till's database.
class HOST_EXPORT DBQueueBroker
{
public:
    /// Opens nothing yet: the first use opens the file that the configuration names
    /// (poshost::Database::configuredFile).
    DBQueueBroker();
    /// Uses a database that is already open.
    /// @param database shared; belongs to the thread that queues
    explicit DBQueueBroker(const QSharedPointer<poshost::Database>& database);
    virtual ~DBQueueBroker();

    /// Stores a message behind all others of the named queue.
    ///
    /// Called by a loyalty system's commit, on the host thread, in the transaction that closes the
    /// check. Waits for the disk, and for another program that writes up to Database's busy
    /// time-out; asks no server. The delivery takes it from there (QueueDelivery).
    ///
    /// Inside an open Transaction of this thread's database the message becomes durable with the
    /// outer commit; outside one it is durable when this returns.
    /// @param queueName of the system that queues; each queue is delivered in its own order
    /// @param message "payload" (the body, a text), "headers" (a map of texts) and "urls" (a map: a
    /// number as a text to an address; they are posted to in ascending order)
    /// @param extra kept with the message, not interpreted
    /// @return true
    /// @throws BasicException "queueError" when the message cannot be stored (disk full, locked,
    /// read-only); then nothing of it is left in the file.
    virtual bool addToQueue(const QString& queueName, const QVariantMap& message,
                            const QString& extra);

private:
    QSharedPointer<poshost::Database> database;
};

extern template class HOST_EXPORT Singleton<DBQueueBroker>;
