// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/books/deliverybook.h"
#include "store/database/connection.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>

namespace orvastore {

/// What a worker has done so far.
struct WorkerReport
{
    int requests = 0;  ///< sent
    int delivered = 0; ///< messages finished
    int parked = 0;    ///< messages left out until somebody looks at them
    int late = 0;      ///< answers that came after another worker had taken the message
};

/// Delivers what stands in the store, one request at a time, until it is stopped. Any number of
/// them work beside each other, on any number of machines.
///
/// Each attempt is committed, on the standby too where there is one, before its request is sent.
/// While the loyalty server is waited for, no transaction is open; signs of life keep the session,
/// and with it the lane. A worker that dies frees its lane at once, one that is frozen when its
/// session has been silent for the lane's time-out, and what it brings afterwards is not written
/// down.
class Worker
{
public:
    struct Manner
    {
        QString name; ///< under which its attempts are written down
        std::chrono::milliseconds laneTimeout{10'000};
        int requestSeconds = 10; ///< how long the loyalty server is waited for
        int keepDays = 30;       ///< how long what is delivered is kept
        QString authorization;   ///< instead of the tills' own; empty: theirs
        bool untilEmpty = false; ///< ends when nothing is due
    };
    /// Told what went wrong at the store, a sentence, each time another one. On the thread of run
    /// or on one of the worker's own, never on both at a time.
    using Complaint = std::function<void(const poshost::Message&)>;

    Worker(const StoreSettings& settings, const Manner& manner, const Complaint& complaint);

    /// Works until stop. Throws nothing but StoreError Refused where the database cannot be used by
    /// this program.
    void run();
    /// Makes run return once the request under way is finished. Any thread, or a signal's handler.
    void stop() { stopping = true; }
    const WorkerReport& report() const { return done; }

private:
    std::optional<Task> work(const Task& claimed, std::unique_lock<std::mutex>& atSession);
    poshost::DeliveryResult send(const Task& task, std::unique_lock<std::mutex>& atSession);
    poshost::DeliveryResult post(const Task& task) const;
    DeliveryBook::Next write(Task task, const poshost::DeliveryResult& result, int generation);
    void showLife(const std::stop_token& ending);
    void keepUp();
    void complain(const poshost::Message& what);
    void rest(std::chrono::milliseconds time) const;

    const Manner manner;
    const Complaint complaint;
    std::mutex session; ///< guards the connection, the book and the complaints
    Connection connection;
    DeliveryBook book;
    WorkerReport done;
    poshost::Message lastComplaint;
    std::chrono::steady_clock::time_point nextUpkeep;
    int usableSession = 0; ///< the session whose schema was looked at
    std::atomic<bool> stopping = false;
};

} // namespace orvastore
