// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QDateTime>
#include <QList>
#include <QtGlobal>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <random>

class RestClient;

namespace poshost {

class Database;
class DeliveryJournal;
class HandOver;
class ParallelSending;
struct OwnShare;
struct DeliveryResult;
struct DeliveryTask;

/// What one call of QueueDelivery::deliverDue did.
struct DeliveryReport
{
    bool elsewhere = false; ///< another process or thread is delivering this file; nothing was done
    int requests = 0;       ///< sent
    int delivered = 0;      ///< messages finished
    int handedOver = 0;     ///< messages that are the store's now, which delivers them
    int parked = 0;         ///< messages taken out of the delivery
    QDateTime nextAttempt;  ///< end of the earliest wait; invalid when nothing waits for a time
};

/// Sends the outgoing queue's messages, on the thread that calls it.
///
/// A message's body is posted with its headers to its addresses in ascending order of their
/// numbers. Each attempt is counted durably before it is sent and each finished step written down,
/// so after a crash the delivery goes on at the right step. What an answer means stands in
/// deliverypolicy.h. First in, first out; a message waits for those it depends on. Where
/// "queue:connections" is above 1, so many requests are under way at once, one of each lane
/// (OutgoingQueue::putIntoLane), on threads that end with the call. Where a store is configured
/// under "store:database", messages are handed over to it with their checks (closedcheck.h) and not
/// sent from here, except as "store:fallback" says while it is away. Nothing that is
/// undelivered is ever removed; a delivered message loses its authorization at once and is removed
/// after the number of days configured under "queue:keepDeliveredDays" (30).
///
/// An operating-system lock on a file beside the database (its name with ".delivery-lock" added)
/// keeps two deliverers, in this process or another, from sending the same message.
class HOST_EXPORT QueueDelivery
{
public:
    /// Sends nothing yet.
    /// @param database stays the caller's, must live longer, and belongs to the same thread
    /// @param seed of the jitter in the waits
    explicit QueueDelivery(Database& database, quint64 seed = std::random_device()());
    ~QueueDelivery();
    QueueDelivery(const QueueDelivery&) = delete;
    QueueDelivery& operator=(const QueueDelivery&) = delete;

    /// Sends until nothing is due any more. Blocks for every request up to the time-out that is
    /// configured for the plug-in (ConfigKey::Use::Timeout; 10 s without such a key), never for a
    /// back-off. Memory does not grow with the queue.
    /// @return what this call did; nothing when another one is delivering
    /// @throws BasicException "databaseError" when the queue cannot be read or written. What was
    /// sent just then counts as attempted, and the next call goes on from there.
    DeliveryReport deliverDue();

    /// Has deliverDue tell after each request what it has done so far, on its thread.
    /// @param listener replaces the former one; empty: nobody is told
    void onProgress(const std::function<void(const DeliveryReport&)>& listener);

    /// Makes deliverDue, now and from now on, return as soon as it can: a request under way is
    /// broken off within about a second and counts as attempted. Any thread; does not wait.
    void requestStop();

    /// @return how long one request may take, as configured
    static std::chrono::seconds requestTimeout();

private:
    OwnShare handOverWhatIsDue(DeliveryReport& report);
    void deliverWhatIsDue(const OwnShare& share, DeliveryReport& report);
    void fill(ParallelSending& sending);
    bool takeAnswer(ParallelSending& sending, DeliveryReport& report);
    DeliveryResult send(const DeliveryTask& task);
    void removeOld();
    bool isStopping();
    void breakOff(const std::lock_guard<std::mutex>& held);

    Database& database;
    std::unique_ptr<DeliveryJournal> journal;
    std::unique_ptr<HandOver> handOver;
    QDateTime lastRemoval;
    std::function<void(const DeliveryReport&)> progressed;

    std::mutex mutex; ///< guards what follows, which requestStop uses
    bool stopping = false;
    bool breakingOff = false; ///< what is sent from now on fails at once
    QList<RestClient*> underWay;
};

} // namespace poshost
