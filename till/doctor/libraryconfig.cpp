// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/libraryconfig.h"

#include "till/desk/librarylog.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

const QString fileName = u"log4qt.properties"_s;
const QString prefix = u"log4j."_s;
/// Any value but "false" keeps the library from looking for a configuration.
constexpr const char* overrideVariable = "LOG4QT_DEFAULTINITOVERRIDE";
constexpr const char* ownOverride = "doctor";
constexpr const char* configurationVariable = "LOG4QT_CONFIGURATION";
constexpr qint64 longestFile = 1024LL * 1024;

QHash<QString, QString> readProperties(const QString& name)
{
    QHash<QString, QString> properties;
    QFile file(name);
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly)) {
        return properties;
    }
    QString content = QString::fromUtf8(file.read(longestFile));
    content.replace(u"\\\n"_s, QString()); // a line that goes on
    const QStringList lines = content.split(u'\n');
    for (const QString& line : lines) {
        const QString text = line.trimmed();
        const qsizetype sign = text.indexOf(u'=');
        if (sign > 0 && !text.startsWith(u'#') && !text.startsWith(u'!')) {
            properties.insert(text.first(sign).trimmed(), text.sliced(sign + 1).trimmed());
        }
    }
    return properties;
}

/// The line that gives a key that value: in the place of the one there, or at the end. One that
/// goes on in the next line is left: of two the library takes the later one.
Mend settingMend(const QString& name, const QString& key, const QString& value)
{
    QFile file(name);
    const QString path = QFileInfo(name).absoluteFilePath();
    const QString setting = key + u'=' + value;
    if (!file.open(QIODevice::ReadOnly)) {
        return Mend::line(setting, path, Mend::Place::AtEnd);
    }
    const QStringList lines = QString::fromUtf8(file.read(longestFile)).split(u'\n');
    for (qsizetype index = 0; index < lines.size(); ++index) {
        const QString& line = lines.at(index);
        if (line.section(u'=', 0, 0).trimmed() == key && !line.endsWith(u'\\')) {
            return Mend::line(setting, path, Mend::Place::Instead, int(index) + 1);
        }
    }
    return Mend::line(setting, path, Mend::Place::AtEnd);
}

/// What the library would read in a till at work, the same environment given; empty for nothing.
QString configurationFile()
{
    const QByteArray override = qgetenv(overrideVariable);
    if (!override.isEmpty() && override != "false" && override != ownOverride) {
        return {};
    }
    const QString configured = qEnvironmentVariable(configurationVariable);
    if (!configured.isEmpty() && QFileInfo::exists(configured)) {
        return configured;
    }
    const QString program = QCoreApplication::applicationFilePath();
    for (const QString& file : {QString(program + u'.' + fileName),
                                QString(QFileInfo(program).path() + u'/' + fileName), fileName}) {
        if (QFileInfo::exists(file)) {
            return QFileInfo(file).absoluteFilePath();
        }
    }
    return {};
}

/// "LEVEL, appender, appender"
struct LoggerEntry
{
    explicit LoggerEntry(const QString& value)
    {
        const QStringList parts = value.split(u',');
        level = parts.first().trimmed().toUpper();
        for (const QString& part : parts.mid(1)) {
            appenders.append(part.trimmed());
        }
    }

    QString level;
    QStringList appenders;
};

void addTarget(LibraryConfig& config, const QHash<QString, QString>& properties,
               const QString& appender)
{
    const QString key = prefix + u"appender."_s + appender;
    const QString kind = properties.value(key).section(u'.', -1);
    const QString file = properties.value(key + u".file"_s);
    const QString target = file.isEmpty() ? kind : file;
    if (target.isEmpty() || config.targets.contains(target)) {
        return;
    }
    config.targets.append(target);
    const bool appends =
        properties.value(key + u".appendFile"_s).compare(u"true"_s, Qt::CaseInsensitive) == 0;
    if (!file.isEmpty() && !appends && config.cutFile.isEmpty()) {
        config.cutFile = file;
        if (config.switchedOff) {
            return;
        }
        config.mend = settingMend(config.file, key + u".appendFile"_s, u"true"_s);
    }
}

} // namespace

LibraryConfig LibraryConfig::find()
{
    LibraryConfig config;
    config.file = configurationFile();
    if (config.file.isEmpty()) {
        return config;
    }
    const QHash<QString, QString> properties = readProperties(config.file);
    const LoggerEntry own(properties.value(prefix + u"logger.orva"_s));
    const LoggerEntry root(properties.value(prefix + u"rootLogger"_s));
    const QString level = own.level.isEmpty() ? root.level : own.level;
    config.switchedOff = level == "OFF"_L1;
    if (config.switchedOff) {
        config.mend = settingMend(config.file, prefix + u"logger.orva"_s,
                                  (QStringList{u"INFO"_s} + own.appenders).join(u", "_s));
    }
    QStringList appenders = own.appenders;
    if (properties.value(prefix + u"additivity.orva"_s) != "false"_L1) {
        appenders += root.appenders;
    }
    for (const QString& appender : std::as_const(appenders)) {
        addTarget(config, properties, appender);
    }
    return config;
}

void keepLibraryUnconfigured(char** arguments)
{
    const QByteArray before = qgetenv(overrideVariable);
    if (!before.isEmpty() && before != "false") {
        return; // begun anew already, or whoever started it wants no configuration either
    }
    qputenv(overrideVariable, ownOverride);
    if (librarylog::isKnown()) {
        ::execv("/proc/self/exe", arguments); // comes back only when it cannot
    }
}

} // namespace till::doctor
