// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/subject.h"

#include "till/doctor/errand.h"

using namespace Qt::StringLiterals;

namespace till::doctor {

void Subject::read(int milliseconds)
{
    struct Result
    {
        QSharedPointer<Config> config = QSharedPointer<Config>::create();
        QList<ConfigFinding> findings;
    };
    Errand<Result> reading([file = configFile] {
        Result result;
        result.findings = result.config->examine(file);
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
    return plugin.isEmpty() ? config->getString(u"till:plugin"_s, QString()) : plugin;
}

QString Subject::databaseFile() const
{
    return database.isEmpty() ? config->getString(u"till:database"_s, QString()) : database;
}

QString Subject::serverAddress() const
{
    return config->getString(u"Orva:serverUrl"_s, QString());
}

QString Subject::proxy() const
{
    return config->getString(u"http:proxy"_s, QString());
}

} // namespace till::doctor
