// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/sharing/sharedstore.h"

#include <QString>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

namespace till {

/// Asks the store, while the service delivers, about suspended checks of which tills have left
/// behind where they are: on a thread and a connection of its own, for no longer than the store's
/// time-out at a time, and nothing that is younger than the interval.
class SuspendedWatch
{
public:
    /// Begins. @param shared the store; null: nothing is done
    SuspendedWatch(const QString& databaseFile, std::unique_ptr<SharedStore> shared,
                   std::chrono::milliseconds interval = std::chrono::minutes(1));
    /// Ends after the question under way, up to the store's time-out.
    ~SuspendedWatch() = default;
    SuspendedWatch(const SuspendedWatch&) = delete;
    SuspendedWatch& operator=(const SuspendedWatch&) = delete;

private:
    void run(const std::stop_token& ended) const;

    const QString database;
    const std::unique_ptr<SharedStore> store;
    const std::chrono::milliseconds look;
    mutable std::mutex resting;
    mutable std::condition_variable_any wake;
    std::jthread thread; ///< last: it uses the others, and ends first
};

} // namespace till
