// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <memory>

/// An HTTPS server on the loopback whose certificate comes from an authority made for the test. It
/// answers every POST with the same text.
class TlsServer
{
public:
    /// @param certifiedName the host name that the certificate vouches for
    /// @param folder where its certificates are kept
    TlsServer(const QString& folder, const QString& certifiedName,
              const QByteArray& answer = "secure");
    ~TlsServer();
    TlsServer(const TlsServer&) = delete;
    TlsServer& operator=(const TlsServer&) = delete;

    QUrl url(const QString& host) const;
    QString authorityFile() const;
    int requests() const;
    /// How many different connections the requests came by.
    int peers() const;

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation;
};
