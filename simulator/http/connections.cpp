// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/connections.h"

#include <algorithm>
#include <csignal>

namespace simulator {
namespace {

/// A client that has gone is told by the write's result, with TLS too.
void blockBrokenPipe()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

} // namespace

Connections::Connections(size_t most, Service service) : capacity(most), serve(std::move(service))
{}

Connections::~Connections()
{
    finish(std::chrono::milliseconds(0));
    std::unique_lock lock(mutex);
    for (const Connection& connection : open) {
        connection.channel->end();
    }
    changed.wait(lock, [this] { return open.empty(); });
    std::list<Connection> ended = std::move(over);
    lock.unlock();
    join(std::move(ended));
}

void Connections::join(std::list<Connection> ended)
{
    for (Connection& connection : ended) {
        connection.thread.join();
    }
}

bool Connections::waitForRoom()
{
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return ending || open.size() < capacity; });
    std::list<Connection> ended = std::move(over);
    over.clear();
    const bool hasRoom = !ending;
    lock.unlock();
    join(std::move(ended));
    return hasRoom;
}

void Connections::add(std::unique_ptr<Channel> channel)
{
    const std::scoped_lock lock(mutex);
    open.emplace_back();
    const auto position = std::prev(open.end());
    position->channel = std::move(channel);
    position->thread = std::thread([this, position] { run(position); });
}

void Connections::run(Position position)
{
    blockBrokenPipe();
    Channel* channel = nullptr;
    {
        const std::scoped_lock lock(mutex);
        channel = position->channel.get();
    }
    serve(*channel);
    // closed with the lock held, so that nobody ends another connection of the same number
    const std::scoped_lock lock(mutex);
    position->channel.reset();
    over.splice(over.end(), open, position);
    changed.notify_all();
}

void Connections::finish(std::chrono::milliseconds patience)
{
    std::unique_lock lock(mutex);
    ending = true;
    changed.notify_all();
    for (const Connection& connection : open) {
        if (!connection.channel->isBusy) {
            connection.channel->stopReading();
        }
    }
    changed.wait_for(lock, patience, [this] { return open.empty(); });
}

} // namespace simulator
