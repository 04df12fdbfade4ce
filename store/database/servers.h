// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/storeclient.h"

#include <QByteArray>
#include <QList>
#include <QMap>

namespace orvastore {

/// One of the servers that a connection string names.
struct Server
{
    QMap<QByteArray, QByteArray> options; ///< of libpq
    QString name;                         ///< host and port, as people know it
};

/// The servers of a connection string, in the order in which they are tried. One that has let
/// somebody down goes last: a former primary may stand first in
/// the string and take connections without being able to commit.
class Servers
{
public:
    /// @throws StoreError NothingSent for a string that libpq does not understand, or a password
    /// file that cannot be read
    static Servers of(const StoreSettings& settings);

    const QList<Server>& inOrder() const { return servers; }
    void putLast(qsizetype index) { servers.append(servers.takeAt(index)); }

private:
    QList<Server> servers;
};

} // namespace orvastore
