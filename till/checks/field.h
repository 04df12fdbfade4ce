// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

#include <functional>
#include <optional>
#include <variant>

namespace till {

/// How one value of an object is read and set.
template <typename Owner, typename Value>
struct Access
{
    std::function<Value(const Owner&)> get;
    std::function<void(Owner&, const Value&)> set;
};

/// One field of an object that belongs to a check. A list of them describes the object for all who
/// store, record or read it; none of them names a field of its own.
template <typename Owner, typename... Values>
struct FieldOf
{
    /// As records name it.
    QString name;
    std::variant<Access<Owner, Values>...> access;
    /// The first version of stored checks that has the field. A new one takes the next number after
    /// the version that is written without it (checkcodec).
    int since = 1;
    /// The largest number that a field may have which stands for an enumeration.
    std::optional<int> largest = std::nullopt;
    /// Puts a field right that the stored form of an older version does not have, once everything
    /// else has been read. Without it the field stays as it is in a new object.
    std::function<void(Owner&)> fromOlder = {};
};

/// A field of an object of the contracts; a qint64 is an amount in kopecks.
template <typename Owner>
using Field = FieldOf<Owner, int, bool, qint64, double, QString, QDateTime, QVariant>;

namespace field {

/// A field by its getter and setter.
template <typename Owner, typename Value, typename Argument>
Field<Owner> of(const QString& name, Value (Owner::*get)() const, void (Owner::*set)(Argument),
                int since = 1)
{
    return {name,
            Access<Owner, Value>{[get](const Owner& owner) { return (owner.*get)(); },
                                 [set](Owner& owner, const Value& value) { (owner.*set)(value); }},
            since};
}

/// An enumeration's field, kept as its number.
/// @param largest the largest number that fits into as many bits as the known ones take
template <typename Owner, typename Value>
Field<Owner> ofEnumeration(const QString& name, Value (Owner::*get)() const,
                           void (Owner::*set)(Value), int largest)
{
    return {name,
            Access<Owner, int>{
                [get](const Owner& owner) { return static_cast<int>((owner.*get)()); },
                [set](Owner& owner, int number) { (owner.*set)(static_cast<Value>(number)); }},
            1, largest};
}

} // namespace field
} // namespace till
