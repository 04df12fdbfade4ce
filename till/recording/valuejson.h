// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QElapsedTimer>
#include <QJsonValue>
#include <QString>
#include <QVariant>

/// Single values to JSON and back, so that nothing is lost on the way: neither the type of a
/// variant nor the last bit of a double, which decides how a kopeck is rounded.
namespace till::valuejson {

QJsonValue ofNumber(double number);
double toNumber(const QJsonValue& value);

/// Milliseconds, with three decimals.
QJsonValue ofElapsed(const QElapsedTimer& clock);

/// A local time keeps its wall clock and no zone: replayed anywhere, it prints as it did here.
QString ofTime(const QDateTime& time);
QDateTime toTime(const QString& text);
/// Whether both are recorded as the same text.
bool areSameTime(const QDateTime& left, const QDateTime& right);

/// A text where the bytes are UTF-8, otherwise { "base64": ... }.
QJsonValue ofBytes(const QByteArray& bytes);
QByteArray toBytes(const QJsonValue& value);

/// Whether the value, or the bytes, are recorded as the text that they are.
bool isPlainText(const QVariant& value);
bool isPlainText(const QByteArray& bytes);

QJsonValue ofVariant(const QVariant& value);
/// Whether both are recorded the same, for whatever plug-ins keep in a document; equal values of
/// other types are not. Never true for what has no form of its own, which would take as long.
bool areSame(const QVariant& left, const QVariant& right);
bool areSame(const QVariantMap& left, const QVariantMap& right);
QVariant toVariant(const QJsonValue& value);

} // namespace till::valuejson
