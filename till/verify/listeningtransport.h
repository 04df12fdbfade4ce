// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/restclient.h"
#include "till/verify/wire.h"

namespace till::verify {

/// Stands before the host's HTTP client while it lives: keeps what the plug-in and the queue say to
/// the server, and lets nothing go anywhere but below the marked address.
class ListeningTransport : public RestClient
{
public:
    explicit ListeningTransport(const QUrl& markedAddress);
    ~ListeningTransport() override;

    void post(const QUrl& url, const QByteArray& body,
              const QHash<QString, QString>& headers) override;
    int getError() override;

    /// All exchanges since the last call.
    QList<Exchange> takeExchanges() { return std::exchange(heard, {}); }

private:
    const QUrl marked;
    RestClient* const before;
    bool refused = false;
    QList<Exchange> heard;
};

} // namespace till::verify
