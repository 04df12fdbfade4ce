// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace till::init {

/// What a till must know of its loyalty server, and where it keeps its own things.
struct Settings
{
    QString serverTable; ///< of the configuration, the one that the plug-in reads
    QString address;     ///< ends with "/"
    QString shop;
    QString desk;
    QString user;
    QString password;
    QString key;
    QString database;
    QString plugin; ///< empty: the installed one

    /// Those of the loyalty server for trying, as it starts without any of its own.
    static Settings ofSimulator();
};

/// One key of the configuration and its value.
struct Entry
{
    QString table;
    QString key;
    QString value;
    bool isSecret = false;
    bool isPath = false;
};

/// The keys in the order in which they are written, without those that have no value.
QList<Entry> entriesOf(const Settings& settings);

/// How a configuration holds its secrets.
enum class Secrets
{
    InFiles, ///< each in a file of its own beside it, named like the key
    Inside,  ///< for a configuration that nobody else sees
};

/// The configuration as TOML.
QByteArray toToml(const QList<Entry>& entries, Secrets secrets);

} // namespace till::init
