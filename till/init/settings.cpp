// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/init/settings.h"

#include "till/doctor/settingsfile.h"

using namespace Qt::StringLiterals;

namespace till::init {

Settings Settings::ofSimulator()
{
    Settings settings;
    settings.address = u"http://127.0.0.1:8710/"_s;
    settings.shop = u"1042"_s;
    settings.desk = u"3"_s;
    settings.user = u"till"_s;
    settings.password = u"secret"_s;
    settings.key = u"demo"_s;
    return settings;
}

QList<Entry> entriesOf(const Settings& settings)
{
    const QString& server = settings.serverTable;
    const QString till = u"till"_s;
    QList<Entry> entries{
        {server, u"serverUrl"_s, settings.address},
        {server, u"merchantId"_s, settings.shop},
        {server, u"pos"_s, settings.desk},
        {server, u"user"_s, settings.user},
        {server, u"password"_s, settings.password, true},
        {server, u"apikey"_s, settings.key, true},
        {till, u"name"_s, settings.desk},
        {till, u"database"_s, settings.database, false, true},
        {till, u"plugin"_s, settings.plugin, false, true},
    };
    entries.removeIf([](const Entry& entry) { return entry.value.isEmpty(); });
    return entries;
}

QByteArray toToml(const QList<Entry>& entries, Secrets secrets)
{
    // written by hand, since the library sorts the keys; what needs care is its business
    const auto quoted = [](const QString& text) {
        return doctor::SettingsFile::quoted(text).toUtf8();
    };
    QByteArray text =
        "# Written by \"orva-till init\". README.md lists all keys; paths start at the "
        "folder of this file.\n";
    QString table;
    for (const Entry& entry : entries) {
        if (entry.table != table) {
            table = entry.table;
            text += "\n[" + table.toUtf8() + "]\n";
        }
        const bool inFile = entry.isSecret && secrets == Secrets::InFiles;
        text += entry.key.toUtf8() + " = " +
                (inFile ? "{ file = " + quoted(entry.key) + " }" : quoted(entry.value)) + '\n';
    }
    return text;
}

} // namespace till::init
