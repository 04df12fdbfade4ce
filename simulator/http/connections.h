// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/http/channel.h"

#include <condition_variable>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>

namespace simulator {

/// The connections that a server has accepted, each served in a thread of its own.
class Connections
{
public:
    /// Serves a connection until it ends; called in its thread.
    using Service = std::function<void(Channel&)>;

    /// most: how many there may be at a time
    Connections(size_t most, Service service);

    /// Ends all connections and waits for their threads.
    ~Connections();
    Connections(const Connections&) = delete;
    Connections& operator=(const Connections&) = delete;

    /// Waits until there is room for one more; false when finish was called.
    bool waitForRoom();

    /// Serves a connection from now on.
    void add(std::unique_ptr<Channel> channel);

    /// Ends the connections that are not answering, and all others as soon as they have answered;
    /// waits for these that long. From then on there is no room.
    void finish(std::chrono::milliseconds patience);

private:
    struct Connection
    {
        std::unique_ptr<Channel> channel;
        std::thread thread;
    };
    using Position = std::list<Connection>::iterator;

    void run(Position position);
    static void join(std::list<Connection> ended);

    const size_t capacity;
    const Service serve;
    std::mutex mutex; // guards what follows
    std::condition_variable changed;
    std::list<Connection> open;
    std::list<Connection> over; ///< their threads are at their ends
    bool ending = false;
};

} // namespace simulator
