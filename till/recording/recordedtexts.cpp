// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordedtexts.h"

#include "till/recording/recordtarget.h"
#include "till/recording/valuejson.h"

#include <QJsonArray>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// Characters. What is shorter stays where it is read.
constexpr qsizetype leastLength = 16'384;

/// Puts texts back into the values of objects and arrays within one another.
class PuttingBack
{
public:
    explicit PuttingBack(const QStringList& known) : texts(known) {}

    /// The value of an object at that key, and there those of an object so many levels deeper.
    void inObject(QJsonObject& object, const QString& key, int deeper = 0)
    {
        const auto found = object.constFind(key);
        if (found == object.constEnd() || !found->isObject()) {
            return;
        }
        QJsonObject inner = found->toObject();
        if (isIndex(inner)) {
            object.insert(key, textOf(inner));
        } else if (deeper > 0) {
            const QStringList keys = inner.keys();
            for (const QString& innerKey : keys) {
                inObject(inner, innerKey, deeper - 1);
            }
            object.insert(key, inner);
        }
    }

    void inEvents(QJsonObject& call)
    {
        QJsonArray events = call.value("events"_L1).toArray();
        for (qsizetype i = 0; i < events.size(); ++i) {
            QJsonObject event = events.at(i).toObject();
            if (event.contains("exchange"_L1) || event.contains("queue"_L1)) {
                inObject(event, u"exchange"_s, 1);
                inObject(event, u"queue"_s, 2);
                events.replace(i, event);
            }
        }
        call.insert(u"events"_s, events);
    }

    bool allKnown = true;

private:
    static bool isIndex(const QJsonObject& object)
    {
        return object.size() == 1 && object.begin().key() == u"text"_s &&
               object.begin()->isDouble();
    }
    QJsonValue textOf(const QJsonObject& object)
    {
        const int index = object.begin()->toInt(-1);
        const bool isKnown = index >= 0 && index < texts.size();
        allKnown = allKnown && isKnown;
        return isKnown ? QJsonValue(texts.at(index)) : QJsonValue();
    }

    const QStringList& texts;
};

} // namespace

bool RecordedTexts::putBack(QJsonObject& line, const QStringList& texts)
{
    PuttingBack putting(texts);
    if (line.contains("events"_L1)) {
        putting.inEvents(line);
    }
    for (const QString& part : {u"content"_s, u"changed"_s}) {
        if (line.contains(part) && line.value(part).isObject()) {
            QJsonObject fields = line.value(part).toObject();
            putting.inObject(fields, u"pluginData"_s, 2);
            line.insert(part, fields);
        }
    }
    return putting.allKnown;
}

RecordedTexts::RecordedTexts(RecordTarget& recordTarget)
    : target(recordTarget),
      seeds(QRandomGenerator::system()->generate64(), QRandomGenerator::system()->generate64())
{}

QJsonValue RecordedTexts::once(const QString& text)
{
    if (text.size() < leastLength) {
        return text;
    }
    const Key key{text.size(), qHash(text, seeds.first), qHash(text, seeds.second)};
    const auto [found, isNew] = known.try_emplace(key, int(known.size()));
    if (isNew) {
        target.add({{u"text"_s, found->second}, {u"content"_s, text}});
    }
    return QJsonObject{{u"text"_s, found->second}};
}

QJsonValue RecordedTexts::ofVariant(const QVariant& value)
{
    return valuejson::isPlainText(value) ? once(value.toString()) : valuejson::ofVariant(value);
}

QJsonValue RecordedTexts::ofBytes(const QByteArray& bytes)
{
    return valuejson::isPlainText(bytes) ? once(QString::fromUtf8(bytes))
                                         : valuejson::ofBytes(bytes);
}

} // namespace till
