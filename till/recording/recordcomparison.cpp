// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordcomparison.h"

#include "host/queue/xmltext.h"
#include "protocol/xmldifference.h"
#include "till/text.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace till {
namespace {

using Found = std::optional<RecordDifference>;

Found anyDifference(const QJsonValue& recorded, const QJsonValue& replayed, const QString& path);

/// A value on one line, cut where nobody would read on.
QString shown(const QJsonValue& value)
{
    constexpr qsizetype longest = 120;
    QString text;
    if (value.isString()) {
        text = u'"' + value.toString() + u'"';
    } else if (!value.isUndefined()) {
        text = QString::fromUtf8(
            QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).chopped(1).sliced(1));
    }
    return text.size() <= longest ? text : text.first(longest) + u'…';
}

Found difference(const QString& path, const QString& recorded, const QString& replayed,
                 qint64 line = 0)
{
    return RecordDifference{0, {}, path, line, recorded, replayed};
}

bool isDocument(const QJsonValue& value)
{
    return value.isString() && value.toString().startsWith(u'<');
}

Found documentDifference(const QJsonValue& recorded, const QJsonValue& replayed,
                         const QString& path)
{
    const auto found = protocol::XmlDifference::between(
        poshost::xmltext::declaredAsUtf8(recorded.toString().toUtf8()),
        poshost::xmltext::declaredAsUtf8(replayed.toString().toUtf8()));
    if (!found) {
        return std::nullopt;
    }
    const QString element =
        found->path.isEmpty() ? Text::tr("(the same elements, written otherwise)") : found->path;
    return difference(path + u' ' + element, u'"' + found->first + u'"',
                      u'"' + found->second + u'"', found->line);
}

Found objectDifference(const QJsonObject& recorded, const QJsonObject& replayed,
                       const QString& path)
{
    QStringList keys = recorded.keys() + replayed.keys();
    keys.removeDuplicates();
    for (const QString& key : std::as_const(keys)) {
        if (key == u"milliseconds"_s || key == u"at"_s) {
            continue;
        }
        if (auto found =
                anyDifference(recorded.value(key), replayed.value(key), path + u'/' + key)) {
            return found;
        }
    }
    return std::nullopt;
}

Found arrayDifference(const QJsonArray& recorded, const QJsonArray& replayed, const QString& path)
{
    for (qsizetype i = 0; i < std::max(recorded.size(), replayed.size()); ++i) {
        const QString entry = u"%1[%2]"_s.arg(path).arg(i + 1);
        if (auto found = anyDifference(i < recorded.size() ? recorded.at(i) : QJsonValue::Undefined,
                                       i < replayed.size() ? replayed.at(i) : QJsonValue::Undefined,
                                       entry)) {
            return found;
        }
    }
    return std::nullopt;
}

Found anyDifference(const QJsonValue& recorded, const QJsonValue& replayed, const QString& path)
{
    if (recorded == replayed) {
        return std::nullopt;
    }
    if (isDocument(recorded) && isDocument(replayed)) {
        return documentDifference(recorded, replayed, path);
    }
    if (recorded.isObject() && replayed.isObject()) {
        return objectDifference(recorded.toObject(), replayed.toObject(), path);
    }
    if (recorded.isArray() && replayed.isArray()) {
        return arrayDifference(recorded.toArray(), replayed.toArray(), path);
    }
    return difference(path, shown(recorded), shown(replayed));
}

/// What left the plug-in: posted requests and queued messages.
QJsonArray sentIn(const QJsonObject& call)
{
    QJsonArray sent;
    const QJsonArray events = call.value("events"_L1).toArray();
    for (const auto& entry : events) {
        const QJsonObject event = entry.toObject();
        if (event.contains("exchange"_L1) || event.contains("queue"_L1)) {
            sent.append(event);
        }
    }
    return sent;
}

Found callDifference(const Record& recorded, const QJsonObject& then, const Record& replayed)
{
    if (replayed.calls.isEmpty()) {
        return difference(u"call"_s, shown(then.value("call"_L1)), QString());
    }
    const QJsonObject now = replayed.calls.first();
    if (auto found = arrayDifference(sentIn(then), sentIn(now), u"sent"_s)) {
        return found;
    }
    for (const QString& key : {u"events"_s, u"result"_s, u"thrown"_s, u"cardAfter"_s}) {
        if (auto found = anyDifference(then.value(key), now.value(key), key)) {
            return found;
        }
    }
    return anyDifference(recorded.document(then.value("after"_L1).toInt(-1)),
                         replayed.document(now.value("after"_L1).toInt(-1)), u"document"_s);
}

} // namespace

QString RecordDifference::text() const
{
    const QString where = line > 0 ? Text::tr("%1 (line %2)").arg(path).arg(line) : path;
    return Text::tr("call %1, %2: %3: recorded %4, now %5")
        .arg(call)
        .arg(name, where, recorded.isEmpty() ? Text::tr("nothing") : recorded,
             replayed.isEmpty() ? Text::tr("nothing") : replayed);
}

QJsonObject RecordDifference::json() const
{
    return {{u"call"_s, call}, {u"name"_s, name},         {u"path"_s, path},
            {u"line"_s, line}, {u"recorded"_s, recorded}, {u"replayed"_s, replayed}};
}

QList<RecordDifference> recordcomparison::differences(const Record& recorded,
                                                      const QList<Record>& replayed)
{
    QList<RecordDifference> all;
    for (qsizetype i = 0; i < recorded.calls.size(); ++i) {
        const QJsonObject& call = recorded.calls.at(i);
        if (auto found = callDifference(recorded, call, replayed.value(i))) {
            found->call = int(i) + 1;
            found->name = call.value("call"_L1).toString();
            all.append(*found);
        }
    }
    return all;
}

} // namespace till
