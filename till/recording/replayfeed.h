// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonArray>
#include <QJsonObject>

namespace till {

/// What a recorded call got from the services, handed out again in its order, each kind by itself.
class ReplayFeed
{
public:
    void begin(const QJsonArray& recordedEvents)
    {
        events = recordedEvents;
        exchanges = 0;
        clocks = 0;
        readings = 0;
        messages = 0;
    }

    /// Empty when the call asks for more than it did.
    QJsonObject nextExchange() { return next("exchange", exchanges).value(u"exchange").toObject(); }
    QJsonObject nextMessage() { return next("queue", messages).value(u"queue").toObject(); }
    /// After the last one, that one again: the clock stands still.
    QString nextClock();

    /// The value of an answer's header, as far as the plug-in asked for it.
    QString responseHeader(const QString& name) const;

private:
    QJsonObject next(const char* kind, qsizetype& position) const;

    QJsonArray events;
    qsizetype exchanges = 0;
    qsizetype clocks = 0;
    int readings = 0; ///< that the present one still stands for
    qsizetype messages = 0;
    QString lastClock;
};

} // namespace till
