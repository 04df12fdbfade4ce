// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/loopbackserver.h"

#include <arpa/inet.h>
#include <array>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

/// Receives until a whole request has come.
/// @return false: the peer has closed
bool receive(int descriptor)
{
    std::string head;
    size_t bodyBytes = 0;
    size_t wanted = 0;
    std::array<char, 65536> bytes{};
    while (wanted == 0 || head.size() + bodyBytes < wanted) {
        const ssize_t count = ::recv(descriptor, bytes.data(), bytes.size(), 0);
        if (count <= 0) {
            return false;
        }
        if (wanted > 0) {
            bodyBytes += static_cast<size_t>(count);
            continue;
        }
        head.append(bytes.data(), static_cast<size_t>(count));
        const size_t end = head.find("\r\n\r\n");
        if (end != std::string::npos) {
            const char* const length = ::strcasestr(head.c_str(), "\r\nContent-Length:");
            wanted = end + 4 + (length == nullptr ? 0 : std::strtoul(length + 17, nullptr, 10));
        }
    }
    return true;
}

} // namespace

LoopbackServer::LoopbackServer(const QByteArray& body, std::chrono::milliseconds taken)
    : answer("HTTP/1.1 200 OK\r\nContent-Type: application/xml\r\nContent-Length: " +
             std::to_string(body.size()) + "\r\n\r\n" + body.toStdString()),
      pause(taken), listening(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof(address);
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listening, plain, length) != 0 || ::listen(listening, 64) != 0 ||
        ::getsockname(listening, plain, &length) != 0) {
        throw std::runtime_error("no listening socket on the loopback");
    }
    port = ntohs(address.sin_port);
    acceptor = std::thread(&LoopbackServer::acceptAll, this);
}

LoopbackServer::~LoopbackServer()
{
    ::shutdown(listening, SHUT_RDWR);
    acceptor.join();
    {
        const std::lock_guard lock(mutex);
        for (const int descriptor : open) {
            ::shutdown(descriptor, SHUT_RDWR);
        }
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    for (const int descriptor : open) {
        ::close(descriptor);
    }
    ::close(listening);
}

void LoopbackServer::acceptAll()
{
    for (;;) {
        const int descriptor = ::accept(listening, nullptr, nullptr);
        if (descriptor < 0) {
            return;
        }
        ++accepted;
        const std::lock_guard lock(mutex);
        open.push_back(descriptor);
        workers.emplace_back(&LoopbackServer::serve, this, descriptor);
    }
}

void LoopbackServer::serve(int descriptor)
{
    while (receive(descriptor)) {
        std::this_thread::sleep_for(pause);
        ++answered;
        std::string_view rest = answer;
        while (!rest.empty()) {
            const ssize_t count = ::send(descriptor, rest.data(), rest.size(), MSG_NOSIGNAL);
            if (count <= 0) {
                return;
            }
            rest.remove_prefix(static_cast<size_t>(count));
        }
    }
}

QString LoopbackServer::url() const
{
    return u"http://127.0.0.1:%1/"_s.arg(port);
}

} // namespace bench
