// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/valuejson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTimeZone>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace Qt::StringLiterals;
using namespace till;

namespace {

/// Through a file's text and back.
QJsonValue written(const QJsonValue& value)
{
    return QJsonDocument::fromJson(QJsonDocument(QJsonArray{value}).toJson()).array().at(0);
}

} // namespace

TEST(ValueJson, numbersKeepEveryBit)
{
    for (const double number :
         {0.1 + 0.2, 149.9, -0.0, 1e300, 5e-324, 1.0 / 3, double(1LL << 53) + 1,
          std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}) {
        const double back = valuejson::toNumber(written(valuejson::ofNumber(number)));
        EXPECT_EQ(back, number);
        EXPECT_EQ(std::signbit(back), std::signbit(number)) << number;
    }
    EXPECT_TRUE(std::isnan(valuejson::toNumber(written(valuejson::ofNumber(std::nan(""))))));
}

TEST(ValueJson, bytesThatAreNoTextAreKeptAsTheyAre)
{
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("<a>\xd0\x90</a>"), QByteArray("\xc0\xc1"),
          QByteArray("a\0b", 3), QByteArray("\xef\xbb\xbf<a/>"), QByteArray("\xff\xfe<\0", 4)}) {
        EXPECT_EQ(valuejson::toBytes(written(valuejson::ofBytes(bytes))), bytes);
    }
}

TEST(ValueJson, variantsKeepTheirTypes)
{
    const QDateTime local(QDate(2026, 3, 5), QTime(14, 20, 31, 7));
    const QVariantList values{QVariant(),
                              true,
                              7,
                              7LL << 40,
                              7.0,
                              u"text"_s,
                              QString(QChar::ByteOrderMark) + u"text"_s,
                              QString(QChar(0xd800)) + u"text"_s,
                              local,
                              QDateTime(local.date(), local.time(), QTimeZone::utc()),
                              QVariantList{1, u"two"_s},
                              QVariantMap{{u"map"_s, 1}, {u"int"_s, u"x"_s}},
                              QByteArray("\x01\xff", 2),
                              QVariantMap()};
    for (const QVariant& value : values) {
        const QVariant back = valuejson::toVariant(written(valuejson::ofVariant(value)));
        EXPECT_EQ(back.typeId(), value.typeId()) << value.typeName();
        EXPECT_EQ(back, value) << value.typeName();
    }
}

TEST(ValueJson, valuesAreSameExactlyWhereTheyAreRecordedTheSame)
{
    const QDateTime time({2024, 3, 5}, {14, 20, 31, 250});
    const QVariantMap map{{u"a"_s, 1}, {u"b"_s, u"x"_s}};
    const QVariantList values{{},
                              true,
                              false,
                              1,
                              2,
                              1LL,
                              2LL,
                              1.0,
                              0.0,
                              -0.0,
                              std::nan(""),
                              u"1"_s,
                              u""_s,
                              u"x"_s,
                              time,
                              time.toUTC(),
                              time.addMSecs(1),
                              QVariantList{},
                              QVariantList{1},
                              QVariantList{1LL},
                              QVariantList{1, 2},
                              QVariantList{map},
                              QVariantList{QVariantMap{{u"a"_s, 1}}},
                              QVariantMap{},
                              map,
                              QVariantMap{{u"a"_s, 1LL}, {u"b"_s, u"x"_s}},
                              QVariantMap{{u"a"_s, 1}, {u"c"_s, u"x"_s}}};
    for (const QVariant& one : values) {
        for (const QVariant& other : values) {
            EXPECT_EQ(valuejson::areSame(one, other),
                      valuejson::ofVariant(one) == valuejson::ofVariant(other))
                << one.typeName() << one.toString().toStdString() << " and " << other.typeName()
                << other.toString().toStdString();
        }
    }
    EXPECT_FALSE(valuejson::areSame(QByteArray("a"), QByteArray("b")));
}
