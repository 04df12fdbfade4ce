// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the library does that a till can notice: nothing is written anywhere until a file of
// properties names appenders; the first logger that is asked for opens all of them; a file is cut
// to nothing unless it is said to be appended to; what the environment says is read when the
// library is loaded.

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <cstdio>
#include <log4qt/appenderskeleton.h>
#include <log4qt/logger.h>
#include <log4qt/loggingevent.h>
#include <log4qt/logmanager.h>
#include <map>

using namespace Qt::StringLiterals;

namespace Log4Qt {

namespace {

struct Environment
{
    QString configuration = qEnvironmentVariable("LOG4QT_CONFIGURATION");
    QString override = qEnvironmentVariable("LOG4QT_DEFAULTINITOVERRIDE", u"false"_s);
    bool isTraced = qEnvironmentVariableIsSet("LOG4QT_STAND_IN_TRACE");
};
const Environment environment;

void trace(const char* what, const QString& text)
{
    if (environment.isTraced) {
        std::printf("%s: %s\n", what, text.toUtf8().constData());
        std::fflush(stdout);
    }
}

const char* nameOf(Level level)
{
    return level == Level(Level::DEBUG_INT)  ? "DEBUG"
           : level == Level(Level::INFO_INT) ? "INFO"
                                             : "ERROR";
}

class StreamAppender : public AppenderSkeleton
{
public:
    explicit StreamAppender(FILE* target) : stream(target) {}
    bool requiresLayout() const override { return false; }

protected:
    void append(const LoggingEvent& event) override
    {
        std::fprintf(stream, "%s %s: %s\n", nameOf(event.level()),
                     event.loggerName().toUtf8().constData(), event.message().toUtf8().constData());
        std::fflush(stream);
    }

private:
    FILE* const stream;
};

QHash<QString, QString> readProperties(const QString& fileName)
{
    QHash<QString, QString> properties;
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly)) {
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        for (const QString& line : lines) {
            if (!line.trimmed().startsWith(u'#') && line.contains(u'=')) {
                properties.insert(line.section(u'=', 0, 0).trimmed(),
                                  line.section(u'=', 1).trimmed());
            }
        }
    }
    return properties;
}

AppenderSharedPtr makeAppender(const QHash<QString, QString>& properties, const QString& name)
{
    const QString key = u"log4j.appender."_s + name;
    if (properties.value(key).endsWith(u"ConsoleAppender"_s)) {
        return AppenderSharedPtr(new StreamAppender(stderr));
    }
    const bool appends = properties.value(key + u".appendFile"_s) == u"true"_s;
    FILE* const file = std::fopen(QFile::encodeName(properties.value(key + u".file"_s)).constData(),
                                  appends ? "a" : "w");
    return file == nullptr ? AppenderSharedPtr() : AppenderSharedPtr(new StreamAppender(file));
}

Level levelOf(const QString& name)
{
    static const QHash<QString, Level> levels{{u"DEBUG"_s, Level::DEBUG_INT},
                                              {u"INFO"_s, Level::INFO_INT},
                                              {u"ERROR"_s, Level::ERROR_INT},
                                              {u"OFF"_s, Level::OFF_INT}};
    return levels.value(name);
}

class Repository
{
public:
    Repository()
    {
        if (environment.override == u"false"_s) {
            configure(readProperties(configuration()));
        }
    }

    Logger* named(const QString& name)
    {
        return &loggers.try_emplace(name, name, &root).first->second;
    }

    Logger root{u"root"_s, nullptr};

private:
    static QString configuration()
    {
        if (!environment.configuration.isEmpty()) {
            return environment.configuration;
        }
        const QString name = u"log4qt.properties"_s;
        const QString program = QCoreApplication::applicationFilePath();
        for (const QString& file :
             {program + u'.' + name, QFileInfo(program).path() + u'/' + name}) {
            if (QFile::exists(file)) {
                return file;
            }
        }
        return name;
    }

    void configure(const QHash<QString, QString>& properties)
    {
        root.setLevel(Level::DEBUG_INT);
        equip(root, properties, properties.value(u"log4j.rootLogger"_s));
        const QString prefix = u"log4j.logger."_s;
        for (auto it = properties.begin(); it != properties.end(); ++it) {
            if (it.key().startsWith(prefix)) {
                equip(*named(it.key().mid(prefix.size())), properties, *it);
            }
        }
    }

    void equip(Logger& logger, const QHash<QString, QString>& properties, const QString& value)
    {
        const QStringList parts = value.split(u',', Qt::SkipEmptyParts);
        for (qsizetype i = 0; i < parts.size(); ++i) {
            const QString part = parts.at(i).trimmed();
            if (i == 0) {
                logger.setLevel(levelOf(part));
                continue;
            }
            if (!appenders.contains(part)) {
                appenders.insert(part, makeAppender(properties, part));
            }
            if (appenders.value(part)) {
                logger.addAppender(appenders.value(part));
            }
        }
    }

    QHash<QString, AppenderSharedPtr> appenders;
    std::map<QString, Logger> loggers; // whose nodes stay where they are
};

Repository& repository()
{
    static auto* const all = new Repository;
    return *all;
}

} // namespace

Appender::~Appender() = default;
AppenderSkeleton::~AppenderSkeleton() = default;
void AppenderSkeleton::activateOptions() {}

void AppenderSkeleton::doAppend(const LoggingEvent& event)
{
    const std::scoped_lock lock(mutex);
    if (!appending) {
        appending = true;
        append(event);
        appending = false;
    }
}

void Logger::log(Level level, const QString& message) const
{
    trace(level == Level(Level::DEBUG_INT)  ? "debug"
          : level == Level(Level::INFO_INT) ? "info"
                                            : "error",
          message);
    const Level least = ownLevel == Level() && parent != nullptr ? parent->ownLevel : ownLevel;
    if (level < least) {
        return;
    }
    for (const Logger* logger = this; logger != nullptr; logger = logger->parent) {
        for (const AppenderSharedPtr& appender : logger->ownAppenders) {
            appender->doAppend(LoggingEvent(ownName, level, message));
        }
    }
}

Logger* LogManager::rootLogger()
{
    return &repository().root;
}

Logger* LogManager::logger(const QString& name)
{
    trace("logger", u"\"%1\""_s.arg(name));
    return repository().named(name);
}

#if LOG4QT_ARGUMENTS == 2
Logger* LogManager::logger(const QString& name, const QString& second)
{
    trace("logger", u"\"%1\", \"%2\""_s.arg(name, second));
    return repository().named(name);
}
#endif

} // namespace Log4Qt
