// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <log4qt/level.h>

namespace Log4Qt {

/// One line on its way to the appenders.
class LoggingEvent
{
public:
    LoggingEvent(const QString& logger, Level level, const QString& text)
        : ownLogger(logger), ownLevel(level), ownText(text)
    {}

    QString loggerName() const { return ownLogger; }
    Level level() const { return ownLevel; }
    QString message() const { return ownText; }

private:
    QString ownLogger;
    Level ownLevel;
    QString ownText;
};

} // namespace Log4Qt
