// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/config.h"

#include <QList>
#include <QSharedPointer>
#include <QString>

namespace till::doctor {

/// The set-up that is looked at.
struct Subject
{
    /// Of the command line; empty where it says nothing.
    QString configFile;
    QString plugin;
    QString database;
    QString card;

    /// What the configuration file holds; empty when it cannot be read.
    QSharedPointer<Config> config = QSharedPointer<Config>::create();
    QList<ConfigFinding> findings;
    /// False: the file was not read in time.
    bool wasRead = false;

    /// Reads the configuration file, waiting at most so long.
    void read(int milliseconds);

    QString pluginFile() const;
    QString databaseFile() const;
    /// Empty when the plug-in does not say which key holds it.
    QString serverAddress() const;
    QString proxy() const;
};

} // namespace till::doctor
