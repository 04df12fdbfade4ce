// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/config.h"
#include "host/services/dbqueuebroker.h"
#include "host/services/session.h"

#include <QString>
#include <QTemporaryDir>

namespace bench {

/// The process's services while it lives: a configuration that names a server and a database in a
/// temporary folder, and the cashier's session.
class Workplace
{
public:
    /// @param authorityFile whom to trust besides the system's authorities; empty for nobody
    /// @param furtherKeys further lines of the configuration
    explicit Workplace(const QString& serverUrl = QStringLiteral("http://127.0.0.1:1/"),
                       const QString& authorityFile = QString(),
                       const QByteArray& furtherKeys = QByteArray());
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    /// A file of that name in the folder that goes with this object.
    QString file(const QString& name) const { return folder.filePath(name); }

    Config config;
    Session session;

private:
    QTemporaryDir folder;
};

} // namespace bench
