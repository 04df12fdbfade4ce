// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDataStream>
#include <QMap>
#include <QStringList>
#include <QVariant>

/// Reading lists and variants that QDataStream has written, from bytes that may be damaged. Qt's
/// own readers make room for as many elements as the bytes say, and an object of any type that they
/// name; these take one element after the other, and plain values only.
///
/// What cannot be read leaves the stream's status other than Ok.
namespace till::storedvalues {

QStringList readTexts(QDataStream& stream);
QVariantMap readMap(QDataStream& stream);
/// A number, a text, bytes, a time, an address, or maps and lists of these.
QVariant readVariant(QDataStream& stream);

} // namespace till::storedvalues
