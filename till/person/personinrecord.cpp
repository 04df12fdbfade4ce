// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/person/personinrecord.h"

#include "host/queue/xmltext.h"
#include "till/person/cardspelling.h"
#include "till/person/personincheck.h"
#include "till/person/personmask.h"
#include "till/recording/record.h"
#include "till/recording/valuejson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// What names calls, files and addresses, and never a person.
bool isOfMachine(const QString& key)
{
    static const QSet<QString> keys{u"format"_s,  u"program"_s,   u"plugin"_s,  u"pluginBuild"_s,
                                    u"started"_s, u"session"_s,   u"config"_s,  u"call"_s,
                                    u"at"_s,      u"transport"_s, u"clock"_s,   u"url"_s,
                                    u"urls"_s,    u"headers"_s,   u"outcome"_s, u"time"_s};
    return keys.contains(key);
}

bool isBytes(const QJsonObject& object)
{
    return object.size() == 1 && object.contains("base64"_L1);
}

void gatherText(const QString& text, People& people)
{
    if (text.contains("<client"_L1)) {
        people.names.unite(namesInMarkup(text));
    }
}

void gather(const QJsonValue& value, People& people)
{
    if (value.isString()) {
        gatherText(value.toString(), people);
    } else if (value.isArray()) {
        const QJsonArray array = value.toArray();
        for (const auto& entry : array) {
            gather(entry, people);
        }
    } else if (value.isObject()) {
        const QJsonObject object = value.toObject();
        if (isBytes(object)) {
            gatherText(poshost::xmltext::decoded(valuejson::toBytes(object)), people);
            return;
        }
        if (object.contains("systemType"_L1)) { // a card record
            people.cards.insert(cardspelling::plain(object.value("number"_L1).toString()));
            people.names.insert(object.value("client"_L1).toString());
        }
        for (auto it = object.begin(); it != object.end(); ++it) {
            gather(it.value(), people);
        }
    }
}

QJsonValue maskedValue(const QJsonValue& value, const PersonMask& mask)
{
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (auto it = array.begin(); it != array.end(); ++it) {
            *it = maskedValue(QJsonValue(*it), mask);
        }
        return array;
    }
    if (!value.isObject()) {
        return mask.masked(value);
    }
    QJsonObject object = value.toObject();
    if (isBytes(object)) {
        const QByteArray bytes = valuejson::toBytes(object);
        const QByteArray masked = mask.masked(bytes);
        return masked == bytes ? QJsonValue(object) : valuejson::ofBytes(masked);
    }
    const bool isCard = object.contains("systemType"_L1);
    for (auto it = object.begin(); it != object.end(); ++it) {
        const bool isNumber =
            it.value().isString() && (it.key() == "card"_L1 || (isCard && it.key() == "number"_L1));
        if (isNumber) {
            it.value() = mask.maskedNumber(it.value().toString());
        } else if (!isOfMachine(it.key())) {
            it.value() = maskedValue(QJsonValue(it.value()), mask);
        }
    }
    return object;
}

} // namespace

People personinrecord::of(const QByteArray& content)
{
    People people;
    const QList<QByteArray> lines = content.split('\n');
    for (const QByteArray& line : lines) {
        gather(QJsonDocument::fromJson(line).object(), people);
    }
    people.cards.remove(QString());
    people.names.remove(QString());
    return people;
}

QByteArray personinrecord::masked(const QByteArray& content, const PersonMask& mask)
{
    QByteArray result;
    result.reserve(content.size());
    qsizetype start = 0;
    while (start < content.size()) {
        const qsizetype end = content.indexOf('\n', start);
        const QByteArray text = content.mid(start, end < 0 ? -1 : end - start);
        start = end < 0 ? content.size() : end + 1;
        const QJsonObject line = QJsonDocument::fromJson(text).object();
        const QJsonObject changed = maskedValue(line, mask).toObject();
        result += changed == line ? text : Record::lineOf(changed).chopped(1);
        result += end < 0 ? "" : "\n";
    }
    return result;
}

} // namespace till
