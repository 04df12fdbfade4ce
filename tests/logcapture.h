// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QLoggingCategory>
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

/// Records every line of the logger "orva", debug lines included, for as long as it lives; lines of
/// other loggers go where they went before. Captures may be nested, the innermost records.
class LogCapture
{
public:
    LogCapture() : outer(current)
    {
        current = this;
        QLoggingCategory::setFilterRules(QStringLiteral("orva.debug=true\norva.info=true"));
        before = qInstallMessageHandler(&LogCapture::take);
    }
    ~LogCapture()
    {
        qInstallMessageHandler(before);
        QLoggingCategory::setFilterRules(QString());
        current = outer;
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

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
    static void take(QtMsgType level, const QMessageLogContext& context, const QString& text)
    {
        if (qstrcmp(context.category, "orva") == 0) {
            const QMutexLocker lock(&current->mutex);
            current->recorded.append({level, text});
        } else {
            current->before(level, context, text);
        }
    }

    inline static LogCapture* current = nullptr;

    LogCapture* outer;
    QtMessageHandler before = nullptr;
    mutable QMutex mutex;
    QList<LogLine> recorded;
};

/// Keeps the logger "orva" quiet, for tests that call an operation many thousands of times.
class LogSilence
{
public:
    LogSilence() { QLoggingCategory::setFilterRules(QStringLiteral("orva=false")); }
    ~LogSilence() { QLoggingCategory::setFilterRules(QString()); }
    LogSilence(const LogSilence&) = delete;
    LogSilence& operator=(const LogSilence&) = delete;
};

} // namespace tests
