// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/handoverjournal_p.h"
#include "host/queue/storeerrandrun_p.h"
#include "host/queue/storesetup.h"

#include <QSharedPointer>
#include <functional>
#include <mutex>
#include <random>

namespace poshost {

/// What one call of HandOver::run did.
struct HandOverReport
{
    int handed = 0;                    ///< messages that are the store's from now on
    int parked = 0;                    ///< messages taken out of the delivery
    std::optional<qint64> nextAttempt; ///< when the store is tried again, milliseconds since 1970
};

/// Hands closed checks with their messages over to the configured store, on the thread that
/// delivers. The file is never locked while the store is waited for.
class HandOver
{
public:
    HandOver(Database& database, quint64 seed) : journal(database), errands(database), random(seed)
    {}

    /// Does what errands are due, hands over what is due, and waits after a failure: a second,
    /// doubled each time, at most longestWaitMilliseconds. Blocks for the store's time-outs.
    /// @param progressed called after every few checks with how many are known to be handed over so
    /// far; false: the call is to end
    /// @throws BasicException "databaseError"; what was sent just then is repeated
    HandOverReport run(const StoreSetup& setup, const std::function<bool(int)>& progressed);
    /// Whether there are messages that the till delivers itself since they belong to no check.
    bool hasOwn() { return journal.hasOwn(); }
    /// Makes run, now and from now on, return within about a second. Any thread; does not wait.
    void interrupt();

    /// A store that comes back is found within that.
    static constexpr qint64 longestWaitMilliseconds = 15'000;

private:
    bool prepare(const StoreSetup& setup);
    bool handOverSome(const StoreSetup& setup, HandOverReport& report,
                      const std::function<bool(int)>& progressed);
    QList<orvastore::StoreResult> handOverInTurn(const QList<orvastore::HandedCheck>& checks,
                                                 const HandOverReport& report,
                                                 const std::function<bool(int)>& progressed);
    bool isTrouble(const orvastore::StoreResult& result);
    void postpone(const Message& why);

    HandOverReport handOverAll(const StoreSetup& setup, const std::function<bool(int)>& progressed);

    HandOverJournal journal;
    StoreErrandRun errands;
    std::mt19937_64 random;
    int failures = 0;
    qint64 nextTry = 0;
    qint64 failedAt = 0;
    Message lastTrouble; ///< in the log already

    std::mutex mutex; ///< guards what follows, which interrupt uses
    QSharedPointer<orvastore::StoreClient> client;
    bool interrupted = false;
};

} // namespace poshost
