// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/loglistener.h"

#include <QList>
#include <QMutex>
#include <QString>

#include <ostream>

namespace tests {

/// One line of the log.
struct LogLine
{
    QtMsgType level = QtDebugMsg;
    QString text;

    bool operator==(const LogLine&) const = default;
};

inline LogLine debugLine(const QString& text)
{
    return {QtDebugMsg, text};
}
inline LogLine infoLine(const QString& text)
{
    return {QtInfoMsg, text};
}
inline LogLine errorLine(const QString& text)
{
    return {QtCriticalMsg, text};
}

inline void PrintTo(const LogLine& line, std::ostream* out)
{
    switch (line.level) {
    case QtDebugMsg:
        *out << "debug: ";
        break;
    case QtInfoMsg:
        *out << "info: ";
        break;
    case QtCriticalMsg:
        *out << "error: ";
        break;
    default:
        *out << "level " << static_cast<int>(line.level) << ": ";
        break;
    }
    *out << line.text.toStdString();
}

/// Records every line of the logger "orva", debug lines included, for as long as it lives.
class LogCapture
{
public:
    LogCapture()
        : listener([this](QtMsgType level, const QString& text) {
              const QMutexLocker lock(&mutex);
              recorded.append({level, text});
          })
    {}

    QList<LogLine> lines() const
    {
        const QMutexLocker lock(&mutex);
        return recorded;
    }
    void clear()
    {
        const QMutexLocker lock(&mutex);
        recorded.clear();
    }

private:
    mutable QMutex mutex;
    QList<LogLine> recorded;
    LogListener listener;
};

} // namespace tests
