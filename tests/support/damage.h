// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/database.h"

#include <QByteArray>
#include <QVariant>

/// What a failing disk makes of values in a database.
namespace tests::damage {

inline QByteArray withFlippedBit(QByteArray bytes, qsizetype bit)
{
    bytes[bit / 8] = static_cast<char>(bytes.at(bit / 8) ^ (1 << (bit % 8)));
    return bytes;
}

/// The values that differ from a number, a text or bytes in one bit.
inline QVariantList flipped(const QVariant& value)
{
    QVariantList values;
    if (value.typeId() == QMetaType::LongLong) {
        for (int bit = 0; bit < 64; ++bit) {
            values.append(qint64(quint64(value.toLongLong()) ^ (1ULL << unsigned(bit))));
        }
        return values;
    }
    const bool isText = value.typeId() == QMetaType::QString;
    const QByteArray bytes = value.toByteArray();
    for (qsizetype bit = 0; bit < bytes.size() * 8; ++bit) {
        const QByteArray other = withFlippedBit(bytes, bit);
        values.append(isText ? QVariant(QString::fromUtf8(other)) : QVariant(other));
    }
    return values;
}

/// Lets a connection write what its tables would refuse, thousands of times without a sync.
inline void allow(poshost::Database& database)
{
    for (const char* pragma :
         {"synchronous = OFF", "foreign_keys = OFF", "ignore_check_constraints = ON"}) {
        database.execute(QStringLiteral("PRAGMA ") + QLatin1StringView(pragma));
    }
}

} // namespace tests::damage
