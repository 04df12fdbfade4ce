// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/longlists.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

bool isSeries(const QJsonValue& value)
{
    return value.isObject() && value.toObject().size() == 1 &&
           value.toObject().value("series"_L1).isArray();
}

/// The whole objects of a series.
QJsonArray entriesOf(const QJsonValue& series)
{
    const QJsonArray written = series.toObject().value("series"_L1).toArray();
    const QJsonObject first = written.first().toObject();
    QJsonArray entries;
    for (const auto& entry : written) {
        if (entry.isArray()) {
            entries.append(entry.toArray().first());
            continue;
        }
        QJsonObject whole = first;
        const QJsonObject others = entry.toObject();
        for (auto it = others.begin(); it != others.end(); ++it) {
            whole.insert(it.key(), it.value());
        }
        entries.append(whole);
    }
    return entries;
}

void putBackAt(QJsonObject& object, const QString& key)
{
    const QJsonValue value = object.value(key);
    if (isSeries(value)) {
        object.insert(key, entriesOf(value));
    }
}

QJsonValue wholeVariant(const QJsonValue& value);

QJsonObject wholeMembers(const QJsonObject& object)
{
    QJsonObject whole = object;
    for (auto it = whole.begin(); it != whole.end(); ++it) {
        if (it.value().isArray() || it.value().isObject()) { // nothing else holds a list
            it.value() = wholeVariant(QJsonValue(it.value()));
        }
    }
    return whole;
}

/// A value of a plug-in's, as valuejson::ofVariant writes it.
QJsonValue wholeVariant(const QJsonValue& value)
{
    const auto mapOf = [](const QJsonValue& map) {
        return QJsonObject{{u"map"_s, wholeMembers(map.toObject())}};
    };
    if (value.isArray() || isSeries(value)) {
        const QJsonArray written = value.isArray() ? value.toArray() : entriesOf(value);
        QJsonArray entries;
        for (const auto& entry : written) {
            entries.append(value.isArray() ? wholeVariant(entry) : mapOf(entry));
        }
        return entries;
    }
    const QJsonObject object = value.toObject();
    return object.contains("map"_L1) ? mapOf(object.value("map"_L1)) : value;
}

/// Values within so many objects, each by its name.
void putBackVariants(QJsonObject& object, const QString& key, int levels)
{
    if (!object.value(key).isObject()) {
        return;
    }
    QJsonObject inner = object.value(key).toObject();
    if (levels == 0) {
        inner = wholeMembers(inner);
    } else {
        const QStringList keys = inner.keys();
        for (const QString& innerKey : keys) {
            putBackVariants(inner, innerKey, levels - 1);
        }
    }
    object.insert(key, inner);
}

void putBackQueued(QJsonObject& line)
{
    QJsonArray events = line.value("events"_L1).toArray();
    bool changed = false;
    for (qsizetype i = 0; i < events.size(); ++i) {
        if (QJsonObject event = events.at(i).toObject(); event.contains("queue"_L1)) {
            QJsonObject queued = event.value("queue"_L1).toObject();
            putBackVariants(queued, u"message"_s, 0);
            event.insert("queue"_L1, queued);
            events.replace(i, event);
            changed = true;
        }
    }
    if (changed) {
        line.insert("events"_L1, events);
    }
}

} // namespace

void longlists::putBack(QJsonObject& line)
{
    putBackAt(line, u"result"_s);
    putBackQueued(line);
    for (const QString& part : {u"content"_s, u"changed"_s}) {
        if (line.contains(part) && line.value(part).isObject()) {
            QJsonObject fields = line.value(part).toObject();
            for (const QString& list : {u"goods"_s, u"impacts"_s}) {
                putBackAt(fields, list);
            }
            putBackVariants(fields, u"pluginData"_s, 1);
            line.insert(part, fields);
        }
    }
}

} // namespace till
