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
    /// Uses a database that is already open, which is shared.
    explicit DBQueueBroker(const QSharedPointer<poshost::Database>& database);
    virtual ~DBQueueBroker();

    /// Stores a message behind all others of the named queue.
    ///
    /// Inside an open Transaction of this thread's database the message becomes durable with the
    /// outer commit; outside one it is durable when this returns.
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
