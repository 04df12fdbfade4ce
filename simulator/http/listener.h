// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace simulator {

/// A socket that others connect to.
class Listener
{
public:
    /// Listens from the moment that it returns. port 0 takes a free one. Throws ListenError.
    Listener(const QString& address, int port);
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    [[nodiscard]] int port() const { return boundPort; }

    /// Waits for the next connection; nothing when stop was called or this one failed.
    [[nodiscard]] std::optional<int> accept() const;

    /// Lets accept return, now and from now on; may be called from another thread.
    void stop() const;

private:
    int socket = -1;
    int boundPort = 0;
};

} // namespace simulator
