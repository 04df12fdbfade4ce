// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/servicemanager.h"

#include <QtGlobal>

#include <algorithm>
#include <cstddef>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace till {
namespace {

QByteArray taken(const char* name)
{
    const QByteArray value = qgetenv(name);
    qunsetenv(name);
    return value;
}

/// The watchdog's interval where it is meant for this process and no other.
std::optional<std::chrono::milliseconds> watchdogInterval()
{
    const QByteArray process = taken("WATCHDOG_PID");
    const qint64 microseconds = taken("WATCHDOG_USEC").toLongLong();
    if (microseconds <= 0 || (!process.isEmpty() && process.toLongLong() != ::getpid())) {
        return std::nullopt;
    }
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::microseconds(microseconds));
}

} // namespace

ServiceManager::ServiceManager()
    : address(taken("NOTIFY_SOCKET")), longestSilence(watchdogInterval())
{}

void ServiceManager::tell(const QByteArray& what) const
{
    sockaddr_un target{};
    target.sun_family = AF_UNIX;
    if (address.isEmpty() || size_t(address.size()) > sizeof target.sun_path) {
        return;
    }
    std::copy(address.begin(), address.end(), target.sun_path);
    if (target.sun_path[0] == '@') { // how a name that is in no folder is written
        target.sun_path[0] = '\0';
    }
    const int descriptor = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) {
        return;
    }
    // nobody there, or more said than is read: there is nobody else to tell either
    static_cast<void>(
        ::sendto(descriptor, what.constData(), size_t(what.size()), MSG_NOSIGNAL | MSG_DONTWAIT,
                 reinterpret_cast<const sockaddr*>(&target),
                 socklen_t(offsetof(sockaddr_un, sun_path) + size_t(address.size()))));
    ::close(descriptor);
}

} // namespace till
