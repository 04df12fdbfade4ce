// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/storeerrandrun_p.h"

#include "host/queue/deliverylog_p.h"
#include "host/queue/storeerrands.h"
#include "host/services/currenttime.h"

#include <algorithm>

namespace poshost {

namespace {

/// A store that comes back is found within that.
constexpr qint64 waitMilliseconds = 15'000;

StoreErrands storeErrands;

} // namespace

void registerStoreErrands(const StoreErrands& errands)
{
    storeErrands = errands;
}

std::optional<qint64> StoreErrandRun::run(const StoreSetup& setup)
{
    if (storeErrands.nextDue == nullptr) {
        return std::nullopt;
    }
    const std::optional<qint64> due = storeErrands.nextDue(database);
    const qint64 now = CurrentTime::milliseconds();
    if (!due) {
        return std::nullopt;
    }
    const bool waits = now < nextTry && nextTry <= now + waitMilliseconds; // clocks are put back
    if (waits || *due > now) {
        return std::max(*due, waits ? nextTry : 0);
    }
    if (!prepare(setup)) {
        return nextTry;
    }
    const orvastore::StoreResult result = storeErrands.run(database, *books, setup.shop);
    if (result.end != orvastore::StoreEnd::Done) {
        postpone(result.error);
        return nextTry;
    }
    lastTrouble = {};
    return storeErrands.nextDue(database);
}

bool StoreErrandRun::prepare(const StoreSetup& setup)
{
    if (books) {
        return true;
    }
    Message problem;
    const QSharedPointer<orvastore::SharedBooks> made = setup.books(problem);
    if (!made) {
        postpone(problem);
        return false;
    }
    const std::lock_guard guard(mutex);
    books = made;
    if (interrupted) {
        books->interrupt();
    }
    return true;
}

void StoreErrandRun::postpone(const Message& why)
{
    nextTry = CurrentTime::milliseconds() + waitMilliseconds;
    if (!(why == lastTrouble)) {
        qCWarning(logDelivery).noquote() << why.ru();
        lastTrouble = why;
    }
}

void StoreErrandRun::interrupt()
{
    const std::lock_guard guard(mutex);
    interrupted = true;
    if (books) {
        books->interrupt();
    }
}

} // namespace poshost
