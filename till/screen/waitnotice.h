// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/http/operationbudget.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace till {

class Output;

/// Tells the cashier whom the till is waiting for and how long at most, once it has waited for a
/// second. A line on a terminal that counts down and is gone when the waiting is over; nothing
/// elsewhere, nor when the output is quiet.
///
/// While the requests are under way another thread writes to the output.
class WaitNotice : public poshost::RequestObserver
{
public:
    /// @param output must live longer
    explicit WaitNotice(Output& output) : out(output) {}
    ~WaitNotice() override;
    WaitNotice(const WaitNotice&) = delete;
    WaitNotice& operator=(const WaitNotice&) = delete;

    void requestBegins(const QString& host, std::chrono::milliseconds since,
                       std::chrono::milliseconds atMost) override;
    void requestEnded() override;

private:
    using Clock = std::chrono::steady_clock;

    void tell(const QString& host, Clock::time_point first, Clock::time_point end);
    void draw(const QString& host, Clock::duration left);

    Output& out;
    std::thread thread;
    std::mutex mutex; ///< guards ended
    std::condition_variable wake;
    bool ended = false;
};

} // namespace till
