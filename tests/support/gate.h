// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

namespace tests {

/// What went over the wire once.
struct Exchange
{
    QString endpoint; ///< the address's last segment
    QByteArray contentType;
    QByteArray accept;
    QByteArray authorization;
    QByteArray request;
    int status = 0;
    QByteArray answer;
};

} // namespace tests

/// Stands between till and server and passes every request on; a test may do something before or
/// look at what was said. As a till's proxy it passes to that server what is meant for any.
class Gate
{
public:
    /// Called on the gate's thread with the endpoint's last path segment before a request is passed
    /// on. Calls of both never overlap.
    using Before = std::function<void(const QString& endpoint)>;
    /// Called on the gate's thread before the answer goes back.
    using After = std::function<void(const tests::Exchange& exchange)>;

    /// @param server address of the server, ending with "/"
    explicit Gate(const QString& server, Before before = {}, After after = {});
    ~Gate();
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    QString address() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> self;
};
