// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What a service manager listens at: a datagram socket that a service is told of in NOTIFY_SOCKET.
class NotifySocket
{
public:
    /// @param file to be made; a name that begins with "@" stands in no folder
    explicit NotifySocket(const QString& file);
    ~NotifySocket();
    NotifySocket(const NotifySocket&) = delete;
    NotifySocket& operator=(const NotifySocket&) = delete;

    /// Waits for a message that has such a line. What came before it counts as heard.
    /// @return false when none came in so long
    bool waitFor(const QByteArray& line, int milliseconds);
    /// All lines heard so far.
    QStringList heard() const { return lines; }

private:
    int descriptor;
    QStringList lines;
};
