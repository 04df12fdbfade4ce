// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <functional>
#include <memory>

/// Stands between till and server and passes every request on; a test may do something first. As a
/// till's proxy it passes to that server what is meant for any.
class Gate
{
public:
    /// Called on the gate's thread with the endpoint's last path segment before a request is passed
    /// on. Calls never overlap.
    using Before = std::function<void(const QString& endpoint)>;

    /// @param server address of the server, ending with "/"
    Gate(const QString& server, Before before);
    ~Gate();
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    QString address() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> self;
};
