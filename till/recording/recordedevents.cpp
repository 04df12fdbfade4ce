// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordedevents.h"

#include "till/recording/valuejson.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace till {
namespace {

QJsonObject readingEvent(const QJsonValue& time, int times)
{
    QJsonObject event{{u"clock"_s, time}};
    if (times > 1) {
        event.insert(u"times"_s, times);
    }
    return event;
}

} // namespace

void RecordedEvents::add(const QJsonObject& event)
{
    writeReadings();
    events.append(event);
}

void RecordedEvents::addReading(const QDateTime& time)
{
    if (readings > 0 && valuejson::areSameTime(time, reading)) {
        ++readings;
        return;
    }
    writeReadings();
    reading = time;
    readings = 1;
}

void RecordedEvents::writeReadings()
{
    if (readings > 0) {
        events.append(readingEvent(valuejson::ofTime(reading), readings));
        readings = 0;
    }
}

QJsonArray RecordedEvents::take()
{
    writeReadings();
    return std::exchange(events, {});
}

QJsonArray RecordedEvents::joined(const QJsonArray& events)
{
    QJsonArray all;
    QJsonValue time;
    int times = 0;
    const auto write = [&] {
        if (times > 0) {
            all.append(readingEvent(time, times));
        }
        times = 0;
    };
    for (const auto& entry : events) {
        const QJsonObject event = entry.toObject();
        const QJsonValue next = event.value("clock"_L1);
        if (next.isUndefined() || next != time) {
            write();
        }
        if (next.isUndefined()) {
            all.append(event);
        } else {
            time = next;
            times += timesOf(event);
        }
    }
    write();
    return all;
}

int RecordedEvents::timesOf(const QJsonObject& event)
{
    return event.value("times"_L1).toInt(1);
}

} // namespace till
