// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/connections.h"

#include <QDir>

#include <array>
#include <netdb.h>
#include <netinet/in.h>
#include <optional>
#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// The port in an address of the internet, or -1 for one of another family.
int portOf(const sockaddr_storage& address)
{
    switch (address.ss_family) {
    case AF_INET:
        return ntohs(reinterpret_cast<const sockaddr_in&>(address).sin_port);
    case AF_INET6:
        return ntohs(reinterpret_cast<const sockaddr_in6&>(address).sin6_port);
    default:
        return -1;
    }
}

/// The other end of a connection that was accepted at a port; nothing for other descriptors.
std::optional<sockaddr_storage> peerAt(int descriptor, int port)
{
    sockaddr_storage own{};
    sockaddr_storage peer{};
    socklen_t ownSize = sizeof own;
    socklen_t peerSize = sizeof peer;
    const bool accepted =
        ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&own), &ownSize) == 0 &&
        portOf(own) == port &&
        ::getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &peerSize) == 0;
    return accepted ? std::optional(peer) : std::nullopt;
}

/// The address as the HTTP library writes it.
std::string textOf(const sockaddr_storage& address)
{
    std::array<char, NI_MAXHOST> text{};
    const auto length = static_cast<socklen_t>(address.ss_family == AF_INET6 ? sizeof(sockaddr_in6)
                                                                             : sizeof(sockaddr_in));
    const int error = ::getnameinfo(reinterpret_cast<const sockaddr*>(&address), length,
                                    text.data(), text.size(), nullptr, 0, NI_NUMERICHOST);
    return error == 0 ? text.data() : "";
}

QStringList openDescriptors()
{
    return QDir(u"/proc/self/fd"_s)
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

int findConnection(int localPort, const std::string& peerAddress, int peerPort)
{
    for (const QString& name : openDescriptors()) {
        const int descriptor = name.toInt();
        const auto peer = peerAt(descriptor, localPort);
        if (peer && portOf(*peer) == peerPort && textOf(*peer) == peerAddress) {
            return descriptor;
        }
    }
    return -1;
}

void stopReading(int localPort)
{
    for (const QString& name : openDescriptors()) {
        const int descriptor = name.toInt();
        if (peerAt(descriptor, localPort)) {
            ::shutdown(descriptor, SHUT_RD);
        }
    }
}

} // namespace simulator
