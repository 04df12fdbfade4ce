// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace bench {

/// An HTTP server on the loopback that does next to nothing: it reads whole requests and sends the
/// same bytes back for each. Every connection has a thread of its own and is kept.
class LoopbackServer
{
public:
    /// @param pause how long it takes for each request
    explicit LoopbackServer(const QByteArray& body, std::chrono::milliseconds pause = {});
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    /// Ends with a "/".
    QString url() const;
    /// How many TCP connections were opened to it.
    int connections() const { return accepted; }
    int requests() const { return answered; }

private:
    void acceptAll();
    void serve(int descriptor);

    std::string answer;
    std::chrono::milliseconds pause;
    int listening = -1;
    int port = 0;
    std::atomic<int> accepted = 0;
    std::atomic<int> answered = 0;
    std::mutex mutex; // guards what follows
    std::vector<int> open;
    std::vector<std::thread> workers;
    std::thread acceptor;
};

} // namespace bench
