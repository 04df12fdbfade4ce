// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace simulator {

/// How much memory the requests that are under way may take together. Whoever needs some takes a
/// share of it first and waits until there is one. All operations may be called from several
/// threads at once.
class MemoryBudget
{
public:
    explicit MemoryBudget(qint64 bytes) : capacity(bytes) {}

    /// Gives its part back when it is destroyed; the budget must outlive it. Empty: nothing taken.
    using Share = std::shared_ptr<void>;

    /// Takes so many bytes, at most all that there are. Waits that long; empty when there was no
    /// room meanwhile.
    [[nodiscard]] Share take(qint64 bytes, std::chrono::milliseconds patience);

private:
    const qint64 capacity;
    std::mutex mutex; // guards what follows
    std::condition_variable givenBack;
    qint64 taken = 0;
};

} // namespace simulator
