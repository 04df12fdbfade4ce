// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/field.h"
#include "till/checks/storedvalues.h"

#include <QDataStream>
#include <QList>

#include <algorithm>

/// An object by the list of its fields, to and from a stream.
namespace till::fieldstream {

template <typename Value>
void writeValue(QDataStream& stream, const Value& value)
{
    stream << value;
}

template <typename Value>
void writeValue(QDataStream& stream, const std::optional<Value>& value)
{
    stream << value.has_value() << value.value_or(Value());
}

template <typename Value>
void readValue(QDataStream& stream, Value& value)
{
    stream >> value;
}

template <typename Value>
void readValue(QDataStream& stream, std::optional<Value>& value)
{
    bool isPresent = false;
    Value content{};
    stream >> isPresent >> content;
    value = isPresent ? std::optional(content) : std::nullopt;
}

inline void readValue(QDataStream& stream, QVariant& value)
{
    value = storedvalues::readVariant(stream);
}

inline void readValue(QDataStream& stream, QStringList& value)
{
    value = storedvalues::readTexts(stream);
}

/// The version that stored checks need for the sake of these fields.
template <typename Owner, typename... Values>
int versionOf(const QList<FieldOf<Owner, Values...>>& fields)
{
    int version = 1;
    for (const auto& field : fields) {
        version = std::max(version, field.since);
    }
    return version;
}

/// Writes every field, in the order of the list.
template <typename Owner, typename... Values>
void write(QDataStream& stream, const Owner& owner, const QList<FieldOf<Owner, Values...>>& fields)
{
    for (const auto& field : fields) {
        std::visit([&](const auto& access) { writeValue(stream, access.get(owner)); },
                   field.access);
    }
}

/// Reads one field. What cannot be read, or is no number of the enumeration, leaves the stream's
/// status other than Ok.
template <typename Owner, typename Value>
void readField(QDataStream& stream, Owner& owner, const Access<Owner, Value>& access,
               std::optional<int> largest)
{
    Value value{};
    readValue(stream, value);
    if constexpr (std::is_same_v<Value, int>) {
        if (largest && (value < 0 || value > *largest)) {
            stream.setStatus(QDataStream::ReadCorruptData);
            value = 0;
        }
    }
    access.set(owner, value);
}

/// Reads the fields that the version has; the others are put right as they say.
template <typename Owner, typename... Values>
void read(QDataStream& stream, Owner& owner, const QList<FieldOf<Owner, Values...>>& fields,
          int version)
{
    for (const auto& field : fields) {
        if (field.since <= version) {
            std::visit([&](const auto& access) { readField(stream, owner, access, field.largest); },
                       field.access);
        }
    }
    for (const auto& field : fields) {
        if (field.since > version && field.fromOlder) {
            field.fromOlder(owner);
        }
    }
}

} // namespace till::fieldstream
