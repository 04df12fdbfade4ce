// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>

namespace till {

/// What the plug-in asked for in one call, in its order. Readings of the clock that are equal and
/// follow one another are one event: a check of thousands of lines has the clock read for each.
class RecordedEvents
{
public:
    void add(const QJsonObject& event);
    void addReading(const QDateTime& time);
    /// All events; none is left.
    QJsonArray take();

    /// Events with equal readings that follow one another made one, as addReading makes them.
    static QJsonArray joined(const QJsonArray& events);
    /// How many events that one stands for.
    static int timesOf(const QJsonObject& event);

private:
    void writeReadings();

    QJsonArray events;
    QDateTime reading;
    int readings = 0; ///< not yet among the events
};

} // namespace till
