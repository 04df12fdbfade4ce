// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/connections.h"

#include <QDir>

#include <netinet/in.h>
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

bool isConnectionAt(int descriptor, int port)
{
    sockaddr_storage own{};
    sockaddr_storage peer{};
    socklen_t ownSize = sizeof own;
    socklen_t peerSize = sizeof peer;
    return ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&own), &ownSize) == 0 &&
           portOf(own) == port &&
           ::getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &peerSize) == 0;
}

} // namespace

void stopReading(int localPort)
{
    const QStringList descriptors =
        QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : descriptors) {
        const int descriptor = name.toInt();
        if (isConnectionAt(descriptor, localPort)) {
            ::shutdown(descriptor, SHUT_RD);
        }
    }
}

} // namespace simulator
