// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>

namespace simulator {

/// A thread that does one piece of work after the other for other threads that wait for it.
class WorkerThread
{
public:
    WorkerThread();

    /// Finishes what was handed in and ends the thread.
    ~WorkerThread();
    WorkerThread(const WorkerThread&) = delete;
    WorkerThread& operator=(const WorkerThread&) = delete;

    /// Runs work in the thread and waits for it; returns or throws what the work does.
    /// May be called from any thread but this one.
    template <typename Work>
    std::invoke_result_t<Work> run(Work work)
    {
        if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
            wait(work);
        } else {
            std::optional<std::invoke_result_t<Work>> result;
            wait([&] { result.emplace(work()); });
            return std::move(*result);
        }
    }

private:
    void wait(const std::function<void()>& work);
    void loop();

    std::mutex mutex;
    std::condition_variable wakeUp;
    std::condition_variable finished;
    std::deque<std::function<void()>> queue;
    bool ending = false;
    std::thread thread; // last: it uses the others
};

} // namespace simulator
