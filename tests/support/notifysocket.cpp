// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/notifysocket.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <array>
#include <cstddef>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

NotifySocket::NotifySocket(const QString& file)
    : descriptor(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = file.toUtf8();
    EXPECT_LT(size_t(name.size()), sizeof address.sun_path);
    std::copy(name.begin(), name.end(), address.sun_path);
    if (name.startsWith('@')) {
        address.sun_path[0] = '\0';
    }
    EXPECT_EQ(::bind(descriptor, reinterpret_cast<const sockaddr*>(&address),
                     socklen_t(offsetof(sockaddr_un, sun_path) + size_t(name.size()))),
              0);
}

NotifySocket::~NotifySocket()
{
    ::close(descriptor);
}

bool NotifySocket::waitFor(const QByteArray& line, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    std::array<char, 4096> message{};
    for (;;) {
        pollfd awaited{descriptor, POLLIN, 0};
        if (::poll(&awaited, 1, int(deadline.remainingTime())) <= 0) {
            return false;
        }
        const ssize_t length = ::recv(descriptor, message.data(), message.size(), 0);
        const QStringList said =
            QString::fromUtf8(message.data(), qsizetype(length)).split(u'\n', Qt::SkipEmptyParts);
        lines.append(said);
        if (said.contains(QString::fromUtf8(line))) {
            return true;
        }
    }
}
