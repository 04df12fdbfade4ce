// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/subject.h"

#include "host/config/keysheet.h"
#include "host/config/knownkeys.h"
#include "host/core/basicexception.h"
#include "till/doctor/errand.h"
#include "till/doctor/shell.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace till::doctor {

void Subject::read(int milliseconds)
{
    struct Result
    {
        QSharedPointer<Config> config = QSharedPointer<Config>::create();
        QList<ConfigFinding> findings;
    };
    Errand<Result> reading([file = configFile, named = plugin, standby = installed] {
        Result result;
        // whose keys the rest is written in shows the file itself
        static_cast<void>(result.config->examine(file));
        const QString loaded = chosenPlugin(named, *result.config, standby);
        try {
            poshost::keysheet::registerPlugin(loaded);
        } catch (const BasicException& error) {
            result.findings.append({ConfigFinding::Kind::Unreadable, QString(), QString(),
                                    poshost::keysheet::fileOf(loaded), error.tr().message()});
        }
        result.findings.append(result.config->examine(file));
        return result;
    });
    if (const auto result = reading.await(QDeadlineTimer(milliseconds))) {
        config = result->config;
        findings = result->findings;
        wasRead = true;
    }
}

QString Subject::pluginFile() const
{
    return chosenPlugin(plugin, *config, installed);
}

QString Subject::databaseFile() const
{
    return database.isEmpty() ? config->getString(u"till:database"_s, QString()) : database;
}

QString Subject::serverAddress() const
{
    const auto key = poshost::knownkeys::find(poshost::ConfigKey::Use::ServerAddress);
    return key ? config->getString(key->name(), QString()) : QString();
}

QString Subject::proxy() const
{
    return config->getString(u"http:proxy"_s, QString());
}

QString Subject::command(const QStringList& words) const
{
    QStringList all{u"orva-till"_s, u"--config"_s, QFileInfo(configFile).absoluteFilePath()};
    if (!plugin.isEmpty()) {
        all << u"--plugin"_s << QFileInfo(plugin).absoluteFilePath();
    }
    if (!database.isEmpty()) {
        all << u"--database"_s << QFileInfo(database).absoluteFilePath();
    }
    return shell::words(all + words);
}

} // namespace till::doctor
