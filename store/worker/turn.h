// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace orvastore {

/// Lets the two hands of a worker send one request at a time, and tells when it is worth while to
/// claim the next message during a request: when requests are short. With a slow server a message
/// that waits in a hand would be kept from workers that have nothing to do.
///
/// Any thread. Waiting looks at "isOver" every few milliseconds, and ends when it is.
class Turn
{
public:
    /// Requests that take longer are not worked ahead of.
    static constexpr std::chrono::milliseconds shortRequest{100};
    /// So long a claimed message waits for its turn.
    static constexpr std::chrono::milliseconds patience{250};

    /// @param ended whether the worker ends; called often, from both hands
    explicit Turn(std::function<bool()> ended) : isOver(std::move(ended)) {}

    /// Whether a message may be claimed now.
    /// @param isAhead by the hand that claims during the other one's requests alone
    bool hasChance(bool isAhead);
    /// Waits until hasChance, or the end. @return hasChance
    bool awaitChance(bool isAhead);
    /// How many requests have failed so far; to be asked before a message is claimed.
    int failures();
    /// Waits for the turn.
    /// @param failuresBefore when the message was claimed
    /// @return false: it did not come within the patience, or a request has failed since, which may
    /// hold the message too
    bool enter(int failuresBefore);
    /// Ends the turn.
    /// @param took how long the loyalty server was waited for
    void leave(bool hasFailed, std::chrono::steady_clock::duration took);

private:
    bool hasChanceNow(bool isAhead) const;

    const std::function<bool()> isOver;
    std::mutex mutex; ///< guards what follows
    std::condition_variable changed;
    bool isTaken = false;
    int failed = 0;
    std::chrono::steady_clock::time_point since;
    std::chrono::steady_clock::duration lastTook{};
};

} // namespace orvastore
