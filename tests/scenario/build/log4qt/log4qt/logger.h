// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QString>

#include <log4qt/appender.h>
#include <log4qt/level.h>
#include <utility>

namespace Log4Qt {

/// As in the released library, the operations with arguments are not const.
class Logger
{
public:
    Logger(const QString& loggerName, Logger* parentOfIt) : ownName(loggerName), parent(parentOfIt)
    {}

    QString name() const { return ownName; }
    void setLevel(Level level) { ownLevel = level; }

    QList<AppenderSharedPtr> appenders() const { return ownAppenders; }
    void addAppender(const AppenderSharedPtr& appender) { ownAppenders.append(appender); }

    void debug(const QString& message) const { log(Level::DEBUG_INT, message); }
    void info(const QString& message) const { log(Level::INFO_INT, message); }
    void error(const QString& message) const { log(Level::ERROR_INT, message); }

    template <typename T, typename... Ts>
    void debug(const QString& message, T&& first, Ts&&... others)
    {
        debug(message.arg(std::forward<T>(first), std::forward<Ts>(others)...));
    }
    template <typename T, typename... Ts>
    void info(const QString& message, T&& first, Ts&&... others)
    {
        info(message.arg(std::forward<T>(first), std::forward<Ts>(others)...));
    }
    template <typename T, typename... Ts>
    void error(const QString& message, T&& first, Ts&&... others)
    {
        error(message.arg(std::forward<T>(first), std::forward<Ts>(others)...));
    }

private:
    void log(Level level, const QString& message) const;

    QString ownName;
    Logger* parent;
    Level ownLevel;
    QList<AppenderSharedPtr> ownAppenders;
};

} // namespace Log4Qt
