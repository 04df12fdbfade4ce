// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/books/deliverybook.h"
#include "store/database/connection.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <stop_token>

namespace orvastore {

class Worker;

/// One of a worker's two hands: a session, and the message that it has.
class Hand
{
public:
    enum class Kind
    {
        First, ///< looks after the store too, and finds out that nothing is due
        Ahead, ///< works while the other one waits for the loyalty server
    };
    /// @param owner must live longer
    Hand(Worker& owner, Kind which, const StoreSettings& settings);

    /// Works until the worker ends.
    /// @param other the other hand; must live longer
    /// @throws StoreError Refused where the database cannot be used by this program; the hand that
    /// works ahead tries again instead
    void run(const Hand& other);

private:
    using Session = std::unique_lock<std::mutex>;
    std::optional<Task> claim(const Hand& other);
    std::optional<Task> work(const Task& claimed, Session& atSession);
    poshost::DeliveryResult send(const Task& task, Session& atSession) const;
    poshost::DeliveryResult post(const Task& task) const;
    DeliveryBook::Next write(Task task, const poshost::DeliveryResult& result, int generation);
    void open();
    void showLife(const std::stop_token& ending);
    void keepUp();
    void rest(std::chrono::milliseconds time) const;
    bool isAhead() const { return kind == Kind::Ahead; }

    Worker& worker;
    const Kind kind;
    std::mutex session; ///< guards the connection and the book
    Connection connection;
    DeliveryBook book;
    std::atomic<bool> hasTask = false;
    int failuresBefore = 0; ///< when the task was claimed
    std::chrono::steady_clock::time_point nextUpkeep;
    int usableSession = 0; ///< the session whose schema was looked at
};

} // namespace orvastore
