// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// A certificate authority made for a test with the openssl command: nothing of it is kept.
class Authority
{
public:
    /// A certificate and its key, PEM.
    struct Certificate
    {
        QString file;
        QString keyFile;
    };

    /// Makes its own certificate in a folder, under file names that begin with the name.
    /// @throws std::runtime_error with what openssl says
    Authority(const QString& folder, const QString& name);

    /// The certificate to trust.
    QString file() const { return path(QStringLiteral(".pem")); }

    /// Makes a certificate that vouches for a host name, which may begin with "*.".
    /// @param days how long it is valid; below 0 it has expired
    Certificate certify(const QString& hostName, int days = 2) const;

private:
    QString path(const QString& suffix) const { return prefix + suffix; }

    const QString prefix;
};
