// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QLoggingCategory>
#include <QString>

#include <functional>
#include <utility>

namespace tests {

/// Hears every line of the logger "orva", debug lines included, for as long as it lives; lines of
/// other loggers go where they went before. Listeners may be nested, the innermost hears.
///
/// Qt's message handler is where the lines of the logging library and of its drop-in meet: the
/// library's come there through the till's own console (till/desk/librarylog.h), which every test
/// program gives it.
class LogListener
{
public:
    using Hear = std::function<void(QtMsgType level, const QString& text)>;

    explicit LogListener(Hear toBeCalled) : hear(std::move(toBeCalled)), outer(current)
    {
        current = this;
        QLoggingCategory::setFilterRules(QStringLiteral("orva.debug=true\norva.info=true"));
        before = qInstallMessageHandler(&LogListener::take);
    }
    ~LogListener()
    {
        qInstallMessageHandler(before);
        QLoggingCategory::setFilterRules(QString());
        current = outer;
    }
    LogListener(const LogListener&) = delete;
    LogListener& operator=(const LogListener&) = delete;

private:
    static void take(QtMsgType level, const QMessageLogContext& context, const QString& text)
    {
        if (qstrcmp(context.category, "orva") == 0) {
            current->hear(level, text);
        } else {
            current->before(level, context, text);
        }
    }

    inline static LogListener* current = nullptr;

    Hear hear;
    LogListener* outer;
    QtMessageHandler before = nullptr;
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
