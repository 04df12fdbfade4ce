// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/config.h"
#include "till/desk/installedplugin.h"

#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

namespace till::doctor {

/// The set-up that is looked at.
struct Subject
{
    /// Of the command line; empty where it says nothing.
    QString configFile;
    QString plugin;
    QString database;
    QString card;
    /// The plug-in that is installed where the till looks for one; empty for none, or several.
    QString installed = installedPlugin();
    /// The command that has the system deliver this set-up's queue; empty where it has none.
    QString serviceStart;

    /// What the configuration file holds; empty when it cannot be read.
    QSharedPointer<Config> config = QSharedPointer<Config>::create();
    QList<ConfigFinding> findings;
    /// False: the file was not read in time.
    bool wasRead = false;

    /// Reads the configuration file, waiting at most so long.
    void read(int milliseconds);

    /// The one that a till would load.
    QString pluginFile() const;
    QString databaseFile() const;
    /// Empty when the plug-in does not say which key holds it.
    QString serverAddress() const;
    QString proxy() const;
    /// "orva-till" for a shell with what it needs to take the same set-up in any folder, followed
    /// by more words.
    QString command(const QStringList& words) const;
};

} // namespace till::doctor
