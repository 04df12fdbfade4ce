// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

/// Writes the till's metrics into a file while the service delivers, once a minute, on a thread and
/// a connection of its own.
class MetricsWatch
{
public:
    /// Begins. @param file is read by a monitoring, and so by everybody
    MetricsWatch(const QString& databaseFile, const QString& file,
                 std::chrono::milliseconds interval = std::chrono::minutes(1));
    /// Ends after the writing under way.
    ~MetricsWatch() = default;
    MetricsWatch(const MetricsWatch&) = delete;
    MetricsWatch& operator=(const MetricsWatch&) = delete;

    /// Writes them now: whole, or not at all.
    /// @throws Failure or BasicException; then the file stays as it was
    static void write(poshost::Database& database, const QString& file);

private:
    void run(const std::stop_token& ended) const;

    const QString database;
    const QString target;
    const std::chrono::milliseconds look;
    mutable std::mutex resting;
    mutable std::condition_variable_any wake;
    std::jthread thread; ///< last: it uses the others, and ends first
};

} // namespace till
