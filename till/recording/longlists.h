// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/recording/jsonseries.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

/// Lists of many entries that differ in few of their fields, the lines of a check and what they are
/// granted. A long one is written as {"series":[...]} with the entries of JsonSeries::shortOf, in a
/// quarter of the text and of the time; a short one as the array that it is. Read, both are arrays.
namespace till::longlists {

/// A list of fewer entries is written whole: people read it.
constexpr qsizetype leastEntries = 16;

/// @param one called with each entry in turn; gives what recordedfields knows to write
template <typename List, typename One>
QJsonValue of(const List& list, One one)
{
    const bool isLong = list.size() >= leastEntries;
    QJsonArray entries;
    JsonSeries series;
    for (const auto& entry : list) {
        entries.append(isLong ? series.shortOf(one(entry)) : QJsonValue(series.of(one(entry))));
    }
    return isLong ? QJsonValue(QJsonObject{{QStringLiteral("series"), entries}})
                  : QJsonValue(entries);
}

/// Puts the long lists of a record's line back as they were: the results of calls, the parts of
/// documents, and the values of plug-ins and of queued messages.
void putBack(QJsonObject& line);

} // namespace till::longlists
