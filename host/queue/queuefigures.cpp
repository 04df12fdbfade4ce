// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/queuefigures.h"

#include "host/database/statement.h"
#include "host/queue/outgoingqueue.h"

#include <QDateTime>

#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;

QueueFigures QueueFigures::of(Database& database)
{
    QueueFigures figures;
    OutgoingQueue queue(database);
    figures.counts = queue.counts();
    figures.stored = queue.lastAddedId();
    Statement oldest(database, u"SELECT min(created_at) FROM queue_messages "
                               "WHERE account_id IS NOT NULL"_s);
    if (oldest.next() && !oldest.value(0).isNull()) {
        constexpr qint64 millisecondsOfSecond = 1000;
        figures.oldestSeconds = std::max<qint64>(0, QDateTime::currentMSecsSinceEpoch() -
                                                        oldest.value(0).toLongLong()) /
                                millisecondsOfSecond;
    }
    Statement failed(database, u"SELECT coalesce(last_status, 0), count(*) FROM queue_messages "
                               "WHERE account_id IS NOT NULL AND last_error IS NOT NULL "
                               "AND last_error <> '' GROUP BY 1"_s);
    while (failed.next()) {
        figures.failedByStatus.insert(failed.value(0).toInt(), failed.value(1).toInt());
    }
    return figures;
}

} // namespace poshost
