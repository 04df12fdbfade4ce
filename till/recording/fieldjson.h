// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/money.h"
#include "till/checks/field.h"
#include "till/recording/valuejson.h"

#include <QJsonObject>
#include <QList>
#include <QMap>

/// An object of the contracts by the list of its fields, to and from JSON.
namespace till::fieldjson {

inline QJsonValue of(int number)
{
    return number;
}
inline QJsonValue of(bool flag)
{
    return flag;
}
inline QJsonValue of(qint64 kopecks)
{
    return valuejson::ofNumber(money::fromKopecks(kopecks));
}
inline QJsonValue of(double number)
{
    return valuejson::ofNumber(number);
}
inline QJsonValue of(const QString& text)
{
    return text;
}
inline QJsonValue of(const QDateTime& time)
{
    return valuejson::ofTime(time);
}
inline QJsonValue of(const QVariant& value)
{
    return valuejson::ofVariant(value);
}
/// Sums by position.
inline QJsonValue of(const QMap<int, double>& value)
{
    QJsonObject sums;
    for (auto it = value.cbegin(); it != value.cend(); ++it) {
        sums.insert(QString::number(it.key()), valuejson::ofNumber(it.value()));
    }
    return sums;
}

inline void read(const QJsonValue& json, int& number)
{
    number = json.toInt();
}
inline void read(const QJsonValue& json, bool& flag)
{
    flag = json.toBool();
}
inline void read(const QJsonValue& json, qint64& kopecks)
{
    kopecks = money::toKopecks(valuejson::toNumber(json)).value_or(0);
}
inline void read(const QJsonValue& json, double& number)
{
    number = valuejson::toNumber(json);
}
inline void read(const QJsonValue& json, QString& text)
{
    text = json.toString();
}
inline void read(const QJsonValue& json, QDateTime& time)
{
    time = valuejson::toTime(json.toString());
}
inline void read(const QJsonValue& json, QVariant& value)
{
    value = valuejson::toVariant(json);
}

/// Fields as an object.
class JsonFields
{
public:
    template <typename Value>
    void add(const QString& name, const Value& value)
    {
        object.insert(name, of(value));
    }

    QJsonObject object;
};

/// Adds an object's fields one by one. A field that came with a later version is left out while it
/// is empty, as in records from before it, which a replay compares with.
template <typename Owner, typename Fields>
void add(const Owner& owner, const QList<Field<Owner>>& table, Fields& fields)
{
    static const Owner empty;
    for (const Field<Owner>& field : table) {
        std::visit(
            [&](const auto& access) {
                const auto value = access.get(owner);
                if (field.since == 1 || value != access.get(empty)) {
                    fields.add(field.name, value);
                }
            },
            field.access);
    }
}

template <typename Owner>
QJsonObject write(const Owner& owner, const QList<Field<Owner>>& table)
{
    JsonFields fields;
    add(owner, table, fields);
    return fields.object;
}

/// Sets every field; one that the object does not have to nothing.
template <typename Owner>
void read(const QJsonObject& object, Owner& owner, const QList<Field<Owner>>& fields)
{
    for (const Field<Owner>& field : fields) {
        std::visit(
            [&](const auto& access) {
                std::decay_t<decltype(access.get(owner))> value{};
                read(object.value(field.name), value);
                access.set(owner, value);
            },
            field.access);
    }
}

} // namespace till::fieldjson
