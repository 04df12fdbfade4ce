// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QLoggingCategory>
#include <QString>

namespace Log4Qt {

/// Stands in for the logger of the Log4Qt library where that is not installed: every line goes to
/// the Qt logging category of the logger's name, so QT_LOGGING_RULES="orva.debug=true" works.
/// Owned by LogManager and alive until the process ends. Safe to use from any thread.
class Logger
{
public:
    explicit Logger(const QString& name);

    QString name() const { return QString::fromUtf8(encodedName); }

    /// Each operation writes one line. Arguments replace the lowest remaining "%n" one after
    /// another; the text is put together only when somebody reads it.
    template <typename... Args>
    void debug(const QString& message, const Args&... args) const
    {
        write(QtDebugMsg, message, args...);
    }
    template <typename... Args>
    void info(const QString& message, const Args&... args) const
    {
        write(QtInfoMsg, message, args...);
    }
    template <typename... Args>
    void error(const QString& message, const Args&... args) const
    {
        write(QtCriticalMsg, message, args...);
    }

private:
    template <typename... Args>
    void write(QtMsgType type, const QString& message, const Args&... args) const
    {
        if (!category.isEnabled(type)) {
            return;
        }
        if constexpr (sizeof...(args) == 0) {
            writeLine(type, message);
        } else {
            QString text = message;
            ((text = text.arg(args)), ...);
            writeLine(type, text);
        }
    }
    void writeLine(QtMsgType type, const QString& text) const;

    QByteArray encodedName;
    QLoggingCategory category;
};

} // namespace Log4Qt
