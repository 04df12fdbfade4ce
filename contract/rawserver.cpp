// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/rawserver.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdlib>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// How many body bytes the head announces.
size_t announcedLength(std::string head)
{
    std::transform(head.begin(), head.end(), head.begin(),
                   [](char c) { return static_cast<char>(std::tolower(c)); });
    const size_t at = head.find("content-length:");
    return at == std::string::npos ? 0 : std::strtoul(head.c_str() + at + 15, nullptr, 10);
}

} // namespace

std::optional<std::string> RawServer::Connection::readRequest()
{
    for (;;) {
        const size_t end = unread.find("\r\n\r\n");
        if (end != std::string::npos) {
            const size_t whole = end + 4 + announcedLength(unread.substr(0, end + 4));
            if (unread.size() >= whole) {
                const std::string request = unread.substr(0, whole);
                unread.erase(0, whole);
                const std::lock_guard lock(server.mutex);
                server.received.push_back(request);
                return request;
            }
        }
        pollfd waiting[2] = {{descriptor, POLLIN, 0}, {server.stopPipe[0], POLLIN, 0}};
        ::poll(waiting, 2, -1);
        char bytes[4096];
        const ssize_t count =
            waiting[1].revents != 0 ? 0 : ::recv(descriptor, bytes, sizeof(bytes), 0);
        if (count <= 0) {
            return std::nullopt;
        }
        unread.append(bytes, static_cast<size_t>(count));
    }
}

void RawServer::Connection::send(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t count = ::send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<size_t>(count));
    }
}

void RawServer::Connection::hang() const
{
    pollfd waiting[2] = {{descriptor, POLLIN | POLLRDHUP, 0}, {server.stopPipe[0], POLLIN, 0}};
    char bytes[4096];
    do {
        ::poll(waiting, 2, -1);
    } while (waiting[1].revents == 0 && ::recv(descriptor, bytes, sizeof(bytes), 0) > 0);
}

bool RawServer::Connection::pause(int milliseconds) const
{
    pollfd waiting = {server.stopPipe[0], POLLIN, 0};
    return ::poll(&waiting, 1, milliseconds) == 0;
}

RawServer::RawServer(Handler given) : handler(std::move(given))
{
    listening = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof(address);
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listening, plain, length) != 0 || ::listen(listening, 64) != 0 ||
        ::getsockname(listening, plain, &length) != 0 || ::pipe(stopPipe) != 0) {
        throw std::runtime_error("no listening socket on the loopback");
    }
    portNumber = ntohs(address.sin_port);
    acceptor = std::thread(&RawServer::acceptAll, this);
}

RawServer::~RawServer()
{
    // never read, so it wakes everybody
    if (::write(stopPipe[1], "x", 1) != 1) {
        std::abort();
    }
    acceptor.join();
    for (std::thread& worker : workers) {
        worker.join();
    }
    for (const int descriptor : {listening, stopPipe[0], stopPipe[1]}) {
        ::close(descriptor);
    }
}

void RawServer::acceptAll()
{
    for (;;) {
        pollfd waiting[2] = {{listening, POLLIN, 0}, {stopPipe[0], POLLIN, 0}};
        ::poll(waiting, 2, -1);
        if (waiting[1].revents != 0) {
            return;
        }
        const int descriptor = ::accept(listening, nullptr, nullptr);
        if (descriptor >= 0) {
            ++accepted;
            workers.emplace_back(&RawServer::serve, this, descriptor);
        }
    }
}

void RawServer::serve(int descriptor)
{
    Connection connection(*this, descriptor);
    handler(connection);
    ::close(descriptor);
}

QUrl RawServer::url() const
{
    return QUrl(u"http://127.0.0.1:%1/api/1.x/precheck"_s.arg(portNumber));
}

std::vector<std::string> RawServer::requests()
{
    const std::lock_guard lock(mutex);
    return received;
}

RawServer::Handler RawServer::answering(const std::string& bytes)
{
    return [bytes](Connection& connection) {
        while (connection.readRequest()) {
            connection.send(bytes);
        }
    };
}

std::string RawServer::answer(const std::string& statusLine, const std::string& body,
                              const std::string& headers)
{
    return "HTTP/1.1 " + statusLine + "\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\n" + headers + "\r\n" + body;
}
