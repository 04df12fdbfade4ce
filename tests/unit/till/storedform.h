// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QtEndian>

#include <gtest/gtest.h>

/// How a stored check looks from outside: a mark, its version, the fields, and from version 2 on a
/// digest.
namespace tests::storedform {

inline constexpr qsizetype versionAt = 4;
inline constexpr qsizetype digestBytes = 20;

inline int versionOf(const QByteArray& stored)
{
    return qFromBigEndian<qint32>(stored.constData() + versionAt);
}

inline QByteArray withVersion(QByteArray stored, int version)
{
    qToBigEndian<qint32>(version, stored.data() + versionAt);
    return stored;
}

/// The same check as version 1 stored it, which had all fields of version 2 and no digest.
inline QByteArray asVersion1(const QByteArray& stored)
{
    EXPECT_EQ(versionOf(stored), 2)
        << "A field has come since. Keep what this test stores without it as a file of version 2 "
           "beside the test, and hand that over instead.";
    return withVersion(stored.chopped(digestBytes), 1);
}

} // namespace tests::storedform
