// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <utility>

namespace Log4Qt {

/// As in the released library, the operations with arguments are not const.
class Logger
{
public:
    explicit Logger(const QString& loggerName) : ownName(loggerName) {}

    QString name() const { return ownName; }

    void debug(const QString& message) const;
    void info(const QString& message) const;
    void error(const QString& message) const;

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
    QString ownName;
};

} // namespace Log4Qt
