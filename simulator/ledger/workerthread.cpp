// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/workerthread.h"

#include <exception>

namespace simulator {

WorkerThread::WorkerThread() : thread([this] { loop(); }) {}

WorkerThread::~WorkerThread()
{
    {
        const std::scoped_lock lock(mutex);
        ending = true;
    }
    wakeUp.notify_one();
    thread.join();
}

/// Hands work in and waits until it is done; throws what it throws.
void WorkerThread::wait(const std::function<void()>& work)
{
    std::exception_ptr error;
    bool done = false;
    std::unique_lock lock(mutex);
    queue.emplace_back([&] {
        try {
            work();
        } catch (...) {
            error = std::current_exception();
        }
        const std::scoped_lock doneLock(mutex);
        done = true;
        finished.notify_all();
    });
    wakeUp.notify_one();
    finished.wait(lock, [&done] { return done; });
    lock.unlock();
    if (error) {
        std::rethrow_exception(std::move(error));
    }
}

void WorkerThread::loop()
{
    std::unique_lock lock(mutex);
    for (;;) {
        wakeUp.wait(lock, [this] { return ending || !queue.empty(); });
        if (queue.empty()) {
            return;
        }
        const std::function<void()> work = std::move(queue.front());
        queue.pop_front();
        lock.unlock();
        work();
        lock.lock();
    }
}

} // namespace simulator
