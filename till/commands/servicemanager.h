// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

#include <chrono>
#include <optional>

namespace till {

/// The service manager that started this process and listens at the socket in NOTIFY_SOCKET; where
/// nobody does, nothing is said. Spoken by hand: it is one datagram a message, and the library for
/// it would be one more dependency of every till for three words.
class ServiceManager
{
public:
    /// Reads the environment, and takes what it reads out of it, so that it is not inherited.
    ServiceManager();

    /// Says something: "READY=1", "STOPPING=1", "WATCHDOG=1", "STATUS=...". Does not block.
    void tell(const QByteArray& what) const;
    /// After how long without "WATCHDOG=1" the manager takes this process for stuck; nothing:
    /// never.
    std::optional<std::chrono::milliseconds> watchdog() const { return longestSilence; }

private:
    QByteArray address;
    std::optional<std::chrono::milliseconds> longestSilence;
};

} // namespace till
