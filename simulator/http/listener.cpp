// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/listener.h"

#include "simulator/http/httpserver.h"
#include "simulator/text.h"

#include <cerrno>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

// a shorter queue makes tills that connect together wait a second
constexpr int backlog = 128;

using Addresses = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

Addresses lookUp(const QString& address, int port)
{
    addrinfo wanted{};
    wanted.ai_family = AF_UNSPEC;
    wanted.ai_socktype = SOCK_STREAM;
    wanted.ai_flags = AI_PASSIVE;
    addrinfo* found = nullptr;
    const int error =
        ::getaddrinfo(address.toUtf8().constData(), std::to_string(port).c_str(), &wanted, &found);
    return {error == 0 ? found : nullptr, &::freeaddrinfo};
}

/// A socket that listens at the address, or -1 with errno set.
int listenAt(const addrinfo& address)
{
    const int socket =
        ::socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC, address.ai_protocol);
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    if (::bind(socket, address.ai_addr, address.ai_addrlen) == 0 &&
        ::listen(socket, backlog) == 0) {
        return socket;
    }
    const int error = errno;
    ::close(socket);
    errno = error;
    return -1;
}

int portOf(int socket)
{
    sockaddr_storage own{};
    socklen_t size = sizeof own;
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&own), &size);
    return ntohs(own.ss_family == AF_INET6 ? reinterpret_cast<const sockaddr_in6&>(own).sin6_port
                                           : reinterpret_cast<const sockaddr_in&>(own).sin_port);
}

} // namespace

Listener::Listener(const QString& address, int port)
{
    const Addresses addresses = lookUp(address, port);
    errno = 0;
    for (const addrinfo* next = addresses.get(); next != nullptr && socket < 0;
         next = next->ai_next) {
        socket = listenAt(*next);
    }
    if (socket < 0) {
        throw ListenError(
            Text::tr("Cannot listen at %1, port %2: %3; choose another with --listen or --port")
                .arg(address)
                .arg(port)
                .arg(errno == 0 ? Text::tr("no such address")
                                : QString::fromStdString(std::generic_category().message(errno))));
    }
    boundPort = portOf(socket);
}

Listener::~Listener()
{
    ::close(socket);
}

std::optional<int> Listener::accept() const
{
    const int connection = ::accept4(socket, nullptr, nullptr, SOCK_CLOEXEC);
    return connection < 0 ? std::nullopt : std::optional(connection);
}

void Listener::stop() const
{
    ::shutdown(socket, SHUT_RD);
}

} // namespace simulator
