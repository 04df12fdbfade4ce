// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/replayfeed.h"

#include "till/recording/recordedevents.h"

using namespace Qt::StringLiterals;

namespace till {

QJsonObject ReplayFeed::next(const char* kind, qsizetype& position) const
{
    const QLatin1StringView name(kind);
    while (position < events.size()) {
        const QJsonObject event = events.at(position++).toObject();
        if (event.contains(name)) {
            return event;
        }
    }
    return {};
}

QString ReplayFeed::nextClock()
{
    if (readings == 0) {
        const QJsonObject event = next("clock", clocks);
        const QString time = event.value("clock"_L1).toString();
        if (time.isEmpty()) {
            return lastClock;
        }
        lastClock = time;
        readings = RecordedEvents::timesOf(event);
    }
    --readings;
    return lastClock;
}

QString ReplayFeed::responseHeader(const QString& name) const
{
    for (const auto& entry : events) {
        const QJsonObject event = entry.toObject();
        if (event.value("name"_L1).toString().compare(name, Qt::CaseInsensitive) == 0) {
            return event.value("value"_L1).toString();
        }
    }
    return {};
}

} // namespace till
