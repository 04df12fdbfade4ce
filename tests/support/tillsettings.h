// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace tests {

/// The configuration of a till that works with the loyalty server for trying.
struct TillSettings
{
    QString server; ///< its address
    QString plugin; ///< file of the library
    int timeoutSeconds = 10;
    QString user = QStringLiteral("till");
    QString password = QStringLiteral("secret");
    QString apiKey = QStringLiteral("demo");
    QString number = QStringLiteral("3");             ///< as the server knows it
    QString name = {};                                ///< as the till prints it; empty: not said
    QString database = QStringLiteral("till.sqlite"); ///< relative to the file
    QString caFile = {};                              ///< to be trusted; empty: not said
    QString store = {};                               ///< of shop 1042; empty: there is none
    QString storeModule = {};                         ///< file of the library that reaches it

    /// One of several tills, named as the server knows it.
    static TillSettings numbered(int number, const QString& server, const QString& plugin)
    {
        TillSettings settings;
        settings.server = server;
        settings.plugin = plugin;
        settings.number = QString::number(number);
        settings.name = settings.number;
        return settings;
    }

    /// As orva.toml has it. There is a password in it, so the file is its owner's alone.
    QString toml() const
    {
        return QStringLiteral("[Orva]\nserverUrl = \"%1\"\nmerchantId = \"1042\"\npos = \"%2\"\n"
                              "timeout = %3\nuser = \"%4\"\npassword = \"%5\"\napikey = \"%6\"\n")
                   .arg(server, number, QString::number(timeoutSeconds), user, password, apiKey) +
               said(QStringLiteral("[http]\ncaFile"), caFile) +
               QStringLiteral("[till]\ndatabase = \"%1\"\nplugin = \"%2\"\n")
                   .arg(database, plugin) +
               said(QStringLiteral("name"), name) +
               (store.isEmpty() ? QString()
                                : QStringLiteral("[store]\ndatabase = \"%1\"\nshop = \"1042\"\n"
                                                 "module = \"%2\"\n")
                                      .arg(store, storeModule));
    }

private:
    static QString said(const QString& key, const QString& value)
    {
        return value.isEmpty() ? QString() : QStringLiteral("%1 = \"%2\"\n").arg(key, value);
    }
};

} // namespace tests
