// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

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

/// Stands between till and server, passes every request on and keeps both documents.
class Recorder
{
public:
    /// server: address of the server, ending with "/"
    explicit Recorder(const QString& server);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    [[nodiscard]] QString address() const;
    /// All exchanges so far, in their order.
    [[nodiscard]] std::vector<Exchange> exchanges() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> self;
};

} // namespace tests
