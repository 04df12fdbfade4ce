// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QString>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace poshost {

class QueueDelivery;

/// Delivers the outgoing queue of a database while the till runs: on a thread and a connection of
/// its own, never the cashier's. A failing database is logged and tried again. When the thread ends
/// it rings the queue's bell (queuebell.h), so that another process goes on where it leaves off.
///
/// start, stop and notify do not block, except that stop waits for the thread.
class HOST_EXPORT DeliveryThread
{
public:
    /// Does nothing yet.
    /// @param databaseFile path of the file whose queue it is; opened on the thread that delivers
    /// @param poll how often the queue is looked at for messages that came without notify, from
    /// another process for instance
    explicit DeliveryThread(const QString& databaseFile,
                            std::chrono::milliseconds poll = std::chrono::seconds(1));
    /// Stops, and so waits for the thread.
    ~DeliveryThread();
    DeliveryThread(const DeliveryThread&) = delete;
    DeliveryThread& operator=(const DeliveryThread&) = delete;

    /// Begins to deliver; does nothing when it runs already.
    void start();
    /// Says that a message was stored (after its commit), so that it is sent at once. Any thread.
    void notify();
    /// Ends the thread and waits for it. A request under way is broken off within about a second;
    /// its message stays in the queue. May be started again.
    void stop();
    /// @return how long ago it last came through the queue or through a request; far above the
    /// interval of its looks and the time-out of a request, something holds it up for ever. Any
    /// thread.
    std::chrono::milliseconds sinceSignOfLife() const;

private:
    class Current;

    void run();
    void deliverUntilStopped();
    bool isStopping();
    std::chrono::milliseconds deliver(QueueDelivery& delivery) const;
    void waitFor(std::chrono::milliseconds time);
    void giveSignOfLife();

    const QString databaseFile;
    const std::chrono::milliseconds poll;
    std::thread thread;
    std::atomic<std::chrono::steady_clock::time_point> signOfLife;

    std::mutex mutex; ///< guards what follows
    std::condition_variable wake;
    QueueDelivery* current = nullptr;
    bool stopping = false;
    bool notified = false;
};

} // namespace poshost
