// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/valuejson.h"

#include "till/recording/longlists.h"

#include <QDataStream>
#include <QIODevice>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <bit>
#include <cmath>

using namespace Qt::StringLiterals;

namespace till {
namespace {

constexpr QByteArrayView utf8Mark("\xef\xbb\xbf");

/// For what has no form of its own.
QJsonValue streamed(const QVariant& value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << value;
    return QJsonObject{{u"stream"_s, QString::fromLatin1(bytes.toBase64())}};
}

QVariant fromStream(const QString& text)
{
    QDataStream stream(QByteArray::fromBase64(text.toLatin1()));
    stream.setVersion(QDataStream::Qt_6_4);
    QVariant value;
    stream >> value;
    return value;
}

QJsonValue ofList(const QVariantList& list)
{
    const auto isMap = [](const QVariant& entry) {
        return entry.typeId() == QMetaType::QVariantMap;
    };
    if (list.size() >= longlists::leastEntries && std::all_of(list.cbegin(), list.cend(), isMap)) {
        return longlists::of(list, [](const QVariant& entry) { return entry.toMap(); });
    }
    QJsonArray array;
    JsonSeries maps;
    for (const QVariant& entry : list) {
        array.append(isMap(entry) ? QJsonObject{{u"map"_s, maps.of(entry.toMap())}}
                                  : valuejson::ofVariant(entry));
    }
    return array;
}

QJsonObject ofMap(const QVariantMap& map)
{
    fieldjson::JsonFields fields;
    recordedfields::of(map, fields);
    return fields.object;
}

template <typename Value>
const Value& valueIn(const QVariant& variant)
{
    return *static_cast<const Value*>(variant.constData());
}

/// Whether it comes back from UTF-8 as it is: a mark of the byte order does not.
bool isKeptByUtf8(const QString& text)
{
    return text.isValidUtf16() && !text.startsWith(QChar::ByteOrderMark);
}

bool areSameNumber(double left, double right)
{
    return std::bit_cast<quint64>(left) == std::bit_cast<quint64>(right);
}

bool areSameLists(const QVariantList& left, const QVariantList& right)
{
    return std::equal(
        left.cbegin(), left.cend(), right.cbegin(), right.cend(),
        [](const QVariant& one, const QVariant& other) { return valuejson::areSame(one, other); });
}

QVariant fromTagged(const QString& tag, const QJsonValue& value)
{
    if (tag == u"int"_s) {
        return value.toInt();
    }
    if (tag == u"long"_s) {
        return value.toString().toLongLong();
    }
    if (tag == u"double"_s) {
        return valuejson::toNumber(value);
    }
    if (tag == u"time"_s) {
        return valuejson::toTime(value.toString());
    }
    if (tag == u"stream"_s) {
        return fromStream(value.toString());
    }
    QVariantMap map;
    const QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        map.insert(it.key(), valuejson::toVariant(it.value()));
    }
    return map;
}

} // namespace

QJsonValue valuejson::ofNumber(double number)
{
    // JSON has no such numbers, and its readers drop the sign of a zero
    if (number == 0 && std::signbit(number)) {
        return u"-0"_s;
    }
    return std::isfinite(number) ? QJsonValue(number) : QJsonValue(QString::number(number));
}

double valuejson::toNumber(const QJsonValue& value)
{
    return value.isString() ? value.toString().toDouble() : value.toDouble();
}

QJsonValue valuejson::ofElapsed(const QElapsedTimer& clock)
{
    constexpr double nanosecondsOfMicrosecond = 1000;
    return std::round(double(clock.nsecsElapsed()) / nanosecondsOfMicrosecond) / 1000.0;
}

QString valuejson::ofTime(const QDateTime& time)
{
    // all lines of a check have the same time, or nearly so
    thread_local QDateTime last;
    thread_local QString lastText;
    if (lastText.isNull() || !areSameTime(time, last)) {
        last = time;
        lastText = time.toString(Qt::ISODateWithMs);
    }
    return lastText;
}

bool valuejson::areSameTime(const QDateTime& left, const QDateTime& right)
{
    return left.timeSpec() == right.timeSpec() && left.date() == right.date() &&
           left.time() == right.time() &&
           (left.timeSpec() == Qt::LocalTime || left.offsetFromUtc() == right.offsetFromUtc());
}

QDateTime valuejson::toTime(const QString& text)
{
    return QDateTime::fromString(text, Qt::ISODateWithMs);
}

QJsonValue valuejson::ofBytes(const QByteArray& bytes)
{
    if (isPlainText(bytes)) {
        return QString::fromUtf8(bytes);
    }
    return QJsonObject{{u"base64"_s, QString::fromLatin1(bytes.toBase64())}};
}

QByteArray valuejson::toBytes(const QJsonValue& value)
{
    return value.isObject()
               ? QByteArray::fromBase64(value.toObject().value(u"base64"_s).toString().toLatin1())
               : value.toString().toUtf8();
}

bool valuejson::isPlainText(const QVariant& value)
{
    return value.typeId() == QMetaType::QString && isKeptByUtf8(valueIn<QString>(value));
}

bool valuejson::isPlainText(const QByteArray& bytes)
{
    return bytes.isValidUtf8() && !bytes.startsWith(utf8Mark);
}

bool valuejson::areSame(const QVariant& left, const QVariant& right)
{
    if (left.typeId() != right.typeId()) {
        return false;
    }
    switch (left.typeId()) {
    case QMetaType::UnknownType:
        return true;
    case QMetaType::Bool:
        return left.toBool() == right.toBool();
    case QMetaType::Int:
        return left.toInt() == right.toInt();
    case QMetaType::LongLong:
        return left.toLongLong() == right.toLongLong();
    case QMetaType::Double:
        return areSameNumber(left.toDouble(), right.toDouble());
    case QMetaType::QString:
        return valueIn<QString>(left) == valueIn<QString>(right);
    case QMetaType::QDateTime:
        return areSameTime(valueIn<QDateTime>(left), valueIn<QDateTime>(right));
    case QMetaType::QVariantList:
        return areSameLists(valueIn<QVariantList>(left), valueIn<QVariantList>(right));
    case QMetaType::QVariantMap:
        return areSame(valueIn<QVariantMap>(left), valueIn<QVariantMap>(right));
    default:
        return false;
    }
}

bool valuejson::areSame(const QVariantMap& left, const QVariantMap& right)
{
    return std::equal(left.constKeyValueBegin(), left.constKeyValueEnd(),
                      right.constKeyValueBegin(), right.constKeyValueEnd(),
                      [](const auto& one, const auto& other) {
                          return one.first == other.first && areSame(one.second, other.second);
                      });
}

QJsonValue valuejson::ofVariant(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return {};
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
        return QJsonObject{{u"int"_s, value.toInt()}};
    case QMetaType::LongLong:
        return QJsonObject{{u"long"_s, QString::number(value.toLongLong())}};
    case QMetaType::Double:
        return QJsonObject{{u"double"_s, ofNumber(value.toDouble())}};
    case QMetaType::QString: {
        const QString text = value.toString();
        return isKeptByUtf8(text) ? QJsonValue(text) : streamed(value);
    }
    case QMetaType::QDateTime:
        return QJsonObject{{u"time"_s, ofTime(value.toDateTime())}};
    case QMetaType::QVariantList:
        return ofList(value.toList());
    case QMetaType::QVariantMap:
        return QJsonObject{{u"map"_s, ofMap(value.toMap())}};
    default:
        return streamed(value);
    }
}

QVariant valuejson::toVariant(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return value.toBool();
    case QJsonValue::Double:
        return value.toDouble();
    case QJsonValue::String:
        return value.toString();
    case QJsonValue::Array: {
        QVariantList list;
        const QJsonArray array = value.toArray();
        for (const auto& entry : array) {
            list.append(toVariant(entry));
        }
        return list;
    }
    case QJsonValue::Object: {
        const QJsonObject object = value.toObject();
        const QString tag = object.isEmpty() ? QString() : object.begin().key();
        return fromTagged(tag, object.value(tag));
    }
    default:
        return {};
    }
}

} // namespace till
