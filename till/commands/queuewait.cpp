// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/queuewait.h"

#include "host/queue/outgoingqueue.h"
#include "host/queue/storestate.h"
#include "till/sharing/silentchecks.h"
#include "till/text.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>

namespace till {
poshost::QueueCounts QueueWait::untilDelivered(poshost::Database& database, int seconds,
                                               const std::function<void(qint64, qint64)>& look)
{
    constexpr unsigned long lookEveryMilliseconds = 20;
    const QDeadlineTimer deadline(seconds * 1000LL);
    poshost::OutgoingQueue queue(database);
    poshost::QueueCounts counts = queue.counts();
    const int atFirst = counts.waiting + counts.paused;
    while ((counts.waiting + counts.paused > 0 || silentUnderWay(database) > 0) &&
           !deadline.hasExpired()) {
        QThread::msleep(lookEveryMilliseconds);
        counts = queue.counts();
        if (look) {
            look(std::max(0, atFirst - counts.waiting - counts.paused), atFirst);
        }
    }
    return counts;
}

int QueueWait::undelivered(const poshost::QueueCounts& counts)
{
    return counts.waiting + counts.paused + counts.parked;
}

int QueueWait::silentUnderWay(poshost::Database& database)
{
    if (!poshost::storestate::isConfigured()) {
        return 0;
    }
    const silentchecks::Waiting waiting = silentchecks::waiting(database);
    return waiting.count - waiting.refused;
}

QString QueueWait::text(const poshost::QueueCounts& counts)
{
    return undelivered(counts) == 0
               ? Text::tr("The queue is delivered.")
               : Text::tr("Still to be delivered: %1 waiting, %2 paused, %3 parked.")
                     .arg(counts.waiting)
                     .arg(counts.paused)
                     .arg(counts.parked);
}

} // namespace till
