// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/worker/turn.h"

namespace orvastore {

using std::chrono::steady_clock;

namespace {

/// A signal that ends the worker wakes nobody.
constexpr std::chrono::milliseconds untilNextLook{20};

} // namespace

bool Turn::hasChanceNow(bool isAhead) const
{
    if (!isTaken) {
        return !isAhead;
    }
    return lastTook < shortRequest && steady_clock::now() - since < shortRequest;
}

bool Turn::hasChance(bool isAhead)
{
    const std::lock_guard guard(mutex);
    return hasChanceNow(isAhead);
}

bool Turn::awaitChance(bool isAhead)
{
    std::unique_lock guard(mutex);
    while (!hasChanceNow(isAhead) && !isOver()) {
        changed.wait_for(guard, untilNextLook);
    }
    return hasChanceNow(isAhead);
}

int Turn::failures()
{
    const std::lock_guard guard(mutex);
    return failed;
}

bool Turn::enter(int failuresBefore)
{
    const auto begun = steady_clock::now();
    std::unique_lock guard(mutex);
    changed.wait_until(guard, begun + patience,
                       [&] { return !isTaken || failed != failuresBefore; });
    // behind a process that was stopped meanwhile another worker may have the message
    const auto now = steady_clock::now();
    if (isTaken || failed != failuresBefore || now - begun > patience) {
        return false;
    }
    isTaken = true;
    since = now;
    changed.notify_all();
    return true;
}

void Turn::leave(bool hasFailed, steady_clock::duration took)
{
    const std::lock_guard guard(mutex);
    isTaken = false;
    failed += hasFailed ? 1 : 0;
    lastTook = took;
    changed.notify_all();
}

} // namespace orvastore
