// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include <functional>

namespace till {

/// A check of the shop, of whichever till.
struct SharedRow
{
    enum class State
    {
        Suspended, ///< waits for a till to take it up
        Closed,    ///< its confirmation is to be delivered yet
        Delivered,
    };
    QString id;
    qint64 number = 0; ///< at its till
    QString till;
    bool isReturn = false;
    State state = State::Closed;
    QDateTime at; ///< when it was closed or left
};

/// The list of the shop's checks, in parts: however many there are, they take no memory.
class SharedList
{
public:
    using Write = std::function<void(const QString& part)>;

    /// @param width how many characters fit on a line
    SharedList(int width, Write into);
    void add(const SharedRow& row);
    /// Writes what is left. To be called once.
    void end();

    static QJsonObject object(const SharedRow& row);

private:
    void flush();

    const int columns;
    Write write;
    QList<SharedRow> page;
    bool isFirst = true;
};

} // namespace till
