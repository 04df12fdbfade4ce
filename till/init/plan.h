// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/init/settings.h"

#include <QStringList>

namespace till::init {

/// What would become different in settings that are there already.
struct Change
{
    QString what;   ///< a key, "[till] database", or a file
    QString before; ///< empty: it was not set; "***": a secret
    QString after;
};

/// The files that make settings: the configuration and one for each secret, and the folder for the
/// database.
class Plan
{
public:
    /// @param configFile where the configuration goes; the secrets go beside it
    Plan(const QString& configFile, const Settings& settings);

    /// What writing would change. Nothing: it is all there, or nothing of it is.
    /// @throws BasicException "configError" when what is there cannot be read
    QList<Change> changes() const;
    /// Whether the configuration is there.
    bool isWritten() const;

    /// Writes the files that are missing, the configuration last; none is written over. In a folder
    /// that is shared with its group (set-group-ID) the group may read them, otherwise their owner
    /// only.
    /// @return the files and folders that were made
    /// @throws Failure; what was made until then stays
    QStringList write() const;

private:
    QList<Change> changesInConfig() const;
    QList<Change> changesInSecrets() const;
    QString fileOf(const Entry& secret) const;
    QStringList makeFolders() const;

    const QString file;
    const QList<Entry> entries;
};

} // namespace till::init
