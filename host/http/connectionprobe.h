// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/tr.h"
#include "host/hostexport.h"

#include <QDateTime>
#include <QString>
#include <QUrl>

namespace poshost {

/// The way to a server, gone without sending a request: names, proxy, connection and certificates
/// as RestClient would meet them, on a connection of its own.
struct HOST_EXPORT ConnectionProbe
{
    /// What the way ends at.
    enum class Trouble
    {
        None,
        Name,        ///< the server's name is not found, or nobody answers about it
        Proxy,       ///< the proxy cannot be reached or does not let through
        Connection,  ///< the server cannot be reached
        CaFile,      ///< the file of certificates to trust cannot be used
        Certificate, ///< there is no trust in the server's certificate
        Validity,    ///< the certificate is not valid yet, or not any more
        Tls,         ///< no secure connection comes about
    };

    /// Where the way ended; None: it leads there.
    Trouble trouble = Trouble::None;
    tr::Tr text;          ///< of the trouble, for people; empty without
    QString peer;         ///< the address that was connected to, empty without a connection
    QDateTime validUntil; ///< when the first of the certificates ends; invalid without TLS
    int milliseconds = 0; ///< how long it took

    /// Goes the way with the process's configuration. Blocks for the limit at most. Never throws;
    /// any thread may ask.
    /// @param url an address of the server; nothing of its path is asked for
    /// @param limitMilliseconds of the whole
    /// @return what was found
    static ConnectionProbe of(const QUrl& url, int limitMilliseconds);
};

} // namespace poshost
