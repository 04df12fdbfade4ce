// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDeadlineTimer>

#include <chrono>
#include <functional>
#include <future>
#include <optional>
#include <thread>

namespace till::doctor {

/// What a promise holds when the time is over; nothing when it was not kept.
template <typename T>
std::optional<T> awaited(std::future<T>& future, const QDeadlineTimer& deadline)
{
    const std::chrono::milliseconds left(deadline.remainingTime());
    return future.wait_for(left) == std::future_status::ready ? std::optional<T>(future.get())
                                                              : std::nullopt;
}

/// Work on a thread of its own that is waited for no longer than there is time: what hangs in the
/// system cannot be ended, only left behind. So the work must own everything that it uses.
template <typename T>
class Errand
{
public:
    explicit Errand(std::function<T()> work)
    {
        std::packaged_task<T()> task(std::move(work));
        result = task.get_future();
        std::thread(std::move(task)).detach();
    }

    /// Waits without taking the result.
    void waitFor(const QDeadlineTimer& deadline) const
    {
        result.wait_for(std::chrono::milliseconds(deadline.remainingTime()));
    }
    /// To be called once.
    std::optional<T> await(const QDeadlineTimer& deadline) { return awaited(result, deadline); }

private:
    std::future<T> result;
};

} // namespace till::doctor
