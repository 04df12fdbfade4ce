// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QUrl>
#include <curl/curl.h>

namespace poshost {

/// The part of the configuration that belongs to every exchange with a server.
struct TransportSettings
{
    /// The largest answer that is accepted where the configuration says nothing else.
    static constexpr int defaultMaxAnswerBytes = 8 * 1024 * 1024;

    QByteArray proxy;
    QByteArray caFile;
    int maxAnswerBytes = 0;

    /// From the process's configuration; does not make one when there is none, so any thread may
    /// ask.
    static TransportSettings read();
    /// Names the way to a server. Requests whose ways have the same name may share a connection.
    QByteArray wayTo(const QUrl& url) const;
    /// Sets up the way to a server: protocols, proxy, trust. The settings must live as long as the
    /// handle uses them.
    void applyTo(CURL* handle) const;
};

} // namespace poshost
