// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/parallelsending_p.h"

#include <utility>

namespace poshost {

ParallelSending::ParallelSending(int most, Send sending)
    : connections(most), send(std::move(sending))
{}

ParallelSending::~ParallelSending()
{
    {
        const std::lock_guard lock(mutex);
        ending = true;
        waiting.clear();
        changed.notify_all();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

void ParallelSending::start(DeliveryTask task)
{
    ++tasksUnderWay;
    const std::lock_guard lock(mutex);
    waiting.push_back(std::move(task));
    if (connections > 1 && std::cmp_less(idle, waiting.size())) {
        threads.emplace_back(&ParallelSending::work, this);
    }
    changed.notify_all();
}

ParallelSending::Finished ParallelSending::takeFinished()
{
    --tasksUnderWay;
    std::unique_lock lock(mutex);
    if (connections == 1) {
        DeliveryTask task = std::move(waiting.front());
        waiting.pop_front();
        lock.unlock();
        DeliveryResult result = send(task);
        return {std::move(task), std::move(result)};
    }
    changed.wait(lock, [this] { return !finished.empty(); });
    Finished next = std::move(finished.front());
    finished.pop_front();
    return next;
}

void ParallelSending::work()
{
    std::unique_lock lock(mutex);
    while (true) {
        ++idle;
        changed.wait(lock, [this] { return ending || !waiting.empty(); });
        --idle;
        if (ending) {
            return;
        }
        DeliveryTask task = std::move(waiting.front());
        waiting.pop_front();
        lock.unlock();
        DeliveryResult result = send(task);
        lock.lock();
        finished.push_back({std::move(task), std::move(result)});
        changed.notify_all();
    }
}

} // namespace poshost
