// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include <cstdio>
#include <log4qt/logger.h>
#include <log4qt/logmanager.h>
#include <map>

namespace Log4Qt {

namespace {

void write(const char* what, const QString& text)
{
    std::printf("%s: %s\n", what, text.toUtf8().constData());
    std::fflush(stdout);
}

Logger* theLogger(const QString& name)
{
    static std::map<QString, Logger> loggers; // whose nodes stay where they are
    return &loggers.try_emplace(name, name).first->second;
}

} // namespace

void Logger::debug(const QString& message) const
{
    write("debug", message);
}

void Logger::info(const QString& message) const
{
    write("info", message);
}

void Logger::error(const QString& message) const
{
    write("error", message);
}

Logger* LogManager::logger(const QString& name)
{
    write("logger", QStringLiteral("\"%1\"").arg(name));
    return theLogger(name);
}

#if LOG4QT_ARGUMENTS == 2
Logger* LogManager::logger(const QString& name, const QString& second)
{
    write("logger", QStringLiteral("\"%1\", \"%2\"").arg(name, second));
    return theLogger(name);
}
#endif

} // namespace Log4Qt
