// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/deliverytask_p.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace poshost {

/// Sends several requests at once, each on a thread of its own, for one thread that hands them out
/// and takes what became of them. With one connection there is no thread: the caller's sends.
///
/// Threads rather than the multi interface of libcurl: so a request is made by the same RestClient,
/// with the same pool, limits and doubles, as everything else that the host sends.
class ParallelSending
{
public:
    struct Finished
    {
        DeliveryTask task;
        DeliveryResult result;
    };
    using Send = std::function<DeliveryResult(const DeliveryTask&)>;

    /// Starts no thread yet; they come with the tasks.
    /// @param connections how many requests at most are under way, from 1
    /// @param send posts a task and waits for the answer; called on the threads, throws nothing
    ParallelSending(int connections, Send send);
    /// Waits for what is under way: who does not want to wait has it broken off first.
    ~ParallelSending();
    ParallelSending(const ParallelSending&) = delete;
    ParallelSending& operator=(const ParallelSending&) = delete;

    /// How many tasks were started and not taken back yet.
    int underWay() const { return tasksUnderWay; }
    bool hasRoom() const { return tasksUnderWay < connections; }
    /// To be called while there is room.
    void start(DeliveryTask task);
    /// Waits for the next answer; to be called while something is under way.
    Finished takeFinished();

private:
    void work();

    const int connections;
    const Send send;
    int tasksUnderWay = 0; ///< the handing thread's own
    std::vector<std::thread> threads;

    std::mutex mutex; ///< guards what follows
    std::condition_variable changed;
    std::deque<DeliveryTask> waiting;
    std::deque<Finished> finished;
    int idle = 0;
    bool ending = false;
};

} // namespace poshost
