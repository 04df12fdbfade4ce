// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/database/storeerror.h"
#include "store/worker/turn.h"

#include <QString>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

namespace orvastore {

/// What a worker has done so far.
struct WorkerReport
{
    int requests = 0;  ///< sent
    int delivered = 0; ///< messages finished
    int parked = 0;    ///< messages left out until somebody looks at them
    int late = 0;      ///< answers that came after another worker had taken the message
};

class Hand;
struct StoreSettings;

/// Delivers what stands in the store, one request at a time, until it is stopped. Any number of
/// them work beside each other, on any number of machines.
///
/// Each attempt is committed, on the standby too where there is one, before its request is sent.
/// While the loyalty server is waited for, no transaction is open; signs of life keep the session,
/// and with it the lane. A worker that dies frees its lane at once, one that is frozen when its
/// session has been silent for the lane's time-out, and what it brings afterwards is not written
/// down.
///
/// It has two hands, each with a session and a message of its own: while one waits for the loyalty
/// server, the other writes down what came of the request before and claims the next message, so
/// that no commit stands between two requests.
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
    /// or on one of the worker's own, never on two at a time.
    using Complaint = std::function<void(const poshost::Message&)>;

    Worker(const StoreSettings& settings, const Manner& manner, const Complaint& complaint);
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Works until stop. Throws nothing but StoreError Refused where the database cannot be used by
    /// this program.
    void run();
    /// Makes run return once the request under way is finished. Any thread, or a signal's handler.
    void stop() { stopping = true; }
    /// To be read when run has returned.
    const WorkerReport& report() const { return done; }

private:
    friend class Hand;
    bool isEnding() const { return stopping || isDone; }
    void complain(const poshost::Message& what);
    void count(const std::function<void(WorkerReport&)>& add);

    const Manner manner;
    const Complaint complaint;
    std::atomic<bool> stopping = false;
    std::atomic<bool> isDone = false; ///< nothing is due any more
    Turn turn{[this] { return isEnding(); }};
    std::mutex mutex; ///< guards the complaints and the report
    WorkerReport done;
    poshost::Message lastComplaint;
    std::unique_ptr<Hand> first;
    std::unique_ptr<Hand> ahead;
};

} // namespace orvastore
