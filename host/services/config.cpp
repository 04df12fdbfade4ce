// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/config.h"

#include "host/config/configreader_p.h"
#include "host/core/basicexception.h"

#include <limits>

template class Singleton<Config>;

using namespace Qt::StringLiterals;

Config::~Config() = default;

void Config::load(const QString& fileName)
{
    const poshost::ConfigReader reader(fileName);
    QList<poshost::Message> notices;
    for (const ConfigFinding& finding : reader.findings) {
        if (finding.isError()) {
            throw BasicException(tr::Tr(u"configError"_s, finding.text));
        }
        notices.append(finding.text);
    }
    values = reader.values;
    loadNotices = notices;
    loadedFile = fileName;
}

QList<ConfigFinding> Config::examine(const QString& fileName)
{
    const poshost::ConfigReader reader(fileName);
    values = reader.values;
    loadNotices.clear();
    loadedFile = fileName;
    return reader.findings;
}

QStringList Config::warnings() const
{
    QStringList texts;
    for (const poshost::Message& notice : loadNotices) {
        texts.append(notice.ru());
    }
    return texts;
}

bool Config::contains(const QString& key) const
{
    return values.contains(key);
}

QString Config::getString(const QString& key, const QString& defaultValue) const
{
    const QVariant value = values.value(key);
    return value.typeId() == QMetaType::QString ? value.toString() : defaultValue;
}

int Config::getInt(const QString& key, int defaultValue) const
{
    const QVariant value = values.value(key);
    const qlonglong number = value.toLongLong();
    const bool fits = value.typeId() == QMetaType::LongLong &&
                      number >= std::numeric_limits<int>::min() &&
                      number <= std::numeric_limits<int>::max();
    return fits ? static_cast<int>(number) : defaultValue;
}
