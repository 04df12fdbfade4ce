// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"
#include "host/queue/queueentry.h"

#include <QMap>

namespace poshost {

class Database;

/// How the outgoing queue stands, in numbers alone.
struct HOST_EXPORT QueueFigures
{
    /// How many messages stand how.
    QueueCounts counts;
    qint64 stored = 0;        ///< messages since the file was made
    qint64 oldestSeconds = 0; ///< since the oldest undelivered message was stored, 0 without one
    /// Undelivered messages whose last attempt failed, by HTTP status; 0: there was no answer.
    QMap<int, int> failedByStatus;

    /// Reads them on the caller's connection and thread; every delivered message that is still kept
    /// is counted too.
    /// @param database stays as it is
    /// @return the figures of all queues together
    /// @throws BasicException "databaseError"
    static QueueFigures of(Database& database);
};

} // namespace poshost
