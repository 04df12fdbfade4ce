// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QUrl>
#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// A TCP server on the loopback that does to each connection whatever a test wants, also what no
/// HTTP server would do. Every connection is served on a thread of its own; ending the server ends
/// all waiting in it.
class RawServer
{
public:
    class Connection
    {
    public:
        Connection(RawServer& owner, int socket) : server(owner), descriptor(socket) {}

        /// The next whole request, head and body; nothing when the peer has closed.
        std::optional<std::string> readRequest();
        void send(std::string_view bytes) const;
        /// Waits until the peer closes or the server ends.
        void hang() const;
        /// Waits that long, or until the server ends.
        /// @return false: the server ends
        bool pause(int milliseconds) const;

    private:
        RawServer& server;
        int descriptor;
        std::string unread;
    };

    using Handler = std::function<void(Connection&)>;

    explicit RawServer(Handler handler);
    ~RawServer();
    RawServer(const RawServer&) = delete;
    RawServer& operator=(const RawServer&) = delete;

    int port() const { return portNumber; }
    QUrl url() const;
    int connections() const { return accepted; }
    std::vector<std::string> requests();

    /// Answers every request of a connection with these bytes.
    static Handler answering(const std::string& bytes);
    /// A whole answer with its length.
    static std::string answer(const std::string& statusLine, const std::string& body = {},
                              const std::string& headers = {});

private:
    void acceptAll();
    void serve(int descriptor);

    Handler handler;
    int listening = -1;
    int stopPipe[2] = {-1, -1};
    int portNumber = 0;
    std::atomic<int> accepted = 0;
    std::mutex mutex; // guards what follows
    std::vector<std::string> received;
    std::vector<std::thread> workers;
    std::thread acceptor;
};
