// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

namespace till {

/// Moves old checks into the archive while the service delivers, and gives the database's free
/// pages back: a little at a time, on a thread and a connection of its own, and mostly at rest.
class ArchiveWatch
{
public:
    /// Begins. @param days how long a check stays after its last change
    ArchiveWatch(const QString& databaseFile, int days);
    /// Ends after the step under way, some milliseconds. What is moved then is moved.
    ~ArchiveWatch() = default;
    ArchiveWatch(const ArchiveWatch&) = delete;
    ArchiveWatch& operator=(const ArchiveWatch&) = delete;

private:
    void run(const std::stop_token& ended) const;
    void work(const std::stop_token& ended) const;
    void rest(std::chrono::milliseconds time, const std::stop_token& ended) const;

    const QString database;
    const int keepDays;
    mutable std::mutex resting;
    mutable std::condition_variable_any wake;
    std::jthread thread; ///< last: it uses the others, and ends first
};

} // namespace till
