// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The quick reading and writing of numbers against Qt's own, bit for bit.

#include "client/response/number.h"
#include "client/request/fixedtext.h"

#include <QString>

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <rapidcheck.h>

using namespace Qt::StringLiterals;

namespace {

bool isSameAsQt(const QString& text)
{
    return std::bit_cast<quint64>(orva::toNumber(text)) ==
           std::bit_cast<quint64>(QStringView(text).toDouble());
}

bool isWrittenAsByQt(double value)
{
    return orva::fixedText(value, 2) == QString::number(value, 'f', 2) &&
           orva::fixedText(value, 3) == QString::number(value, 'f', 3);
}

/// A value and what stands beside it.
bool isWrittenAsByQtAround(double value)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return isWrittenAsByQt(value) && isWrittenAsByQt(-value) &&
           isWrittenAsByQt(std::nextafter(value, infinity)) &&
           isWrittenAsByQt(std::nextafter(value, -infinity));
}

} // namespace

TEST(Number, TextsAtTheEdgesReadAsQtReadsThem)
{
    for (const QString& text : {QString(),
                                u"-"_s,
                                u"."_s,
                                u"-."_s,
                                u"0"_s,
                                u"-0"_s,
                                u"0.0"_s,
                                u"-0.00"_s,
                                u"5."_s,
                                u".5"_s,
                                u"-.5"_s,
                                u"+5"_s,
                                u" 5"_s,
                                u"5 "_s,
                                u"1.2.3"_s,
                                u".5.5"_s,
                                u"1..5"_s,
                                u"1,5"_s,
                                u"1e3"_s,
                                u"0x10"_s,
                                u"x5"_s,
                                u"--5"_s,
                                u"-x5"_s,
                                u"5x"_s,
                                u"inf"_s,
                                u"nan"_s,
                                u"007"_s,
                                u"12.34"_s,
                                u"-12.34"_s,
                                u"0.005"_s,
                                u"999999999999999"_s,
                                u"99999999999999.9"_s,
                                u"1000000000000000"_s,
                                u"9007199254740993"_s,
                                u"0.12345678901234"_s,
                                u"0.123456789012345"_s,
                                u"00000000000000000001"_s,
                                u"123456789012345678901234567890"_s,
                                u"\u0661\u0662"_s,
                                u"1\u00A0000"_s}) {
        EXPECT_TRUE(isSameAsQt(text)) << qPrintable(text);
    }
}

TEST(Number, DigitsOfEveryLengthWithThePointAnywhereReadAsQtReadsThem)
{
    for (const QString& all : {u"9007199254740993123"_s, u"1234567890123456789"_s,
                               u"9999999999999999999"_s, u"0000000000000000001"_s}) {
        for (int length = 1; length <= all.size(); ++length) {
            const QString digits = all.left(length);
            EXPECT_TRUE(isSameAsQt(digits)) << qPrintable(digits);
            for (int point = 0; point <= length; ++point) {
                const QString text = QString(digits).insert(point, u'.');
                EXPECT_TRUE(isSameAsQt(text)) << qPrintable(text);
                EXPECT_TRUE(isSameAsQt(u'-' + text)) << qPrintable(text);
            }
        }
    }
}

TEST(Number, EndsWhereTheTextEnds)
{
    const QString text = u"12345.678"_s;
    for (int length = 1; length < text.size(); ++length) {
        EXPECT_EQ(orva::toNumber(QStringView(text).first(length)), text.left(length).toDouble());
    }
}

TEST(Number, PlainAmountsReadAsQtReadsThem)
{
    EXPECT_TRUE(rc::check("any whole part and up to 16 decimals", [] {
        const auto whole = *rc::gen::inRange<qint64>(0, 10'000'000'000'000'000);
        const auto shift = *rc::gen::inRange(0, 17);
        const auto decimals = *rc::gen::inRange(0, 17);
        const auto fraction = *rc::gen::inRange<qint64>(0, 10'000'000'000'000'000);
        QString text = QString::number(whole).chopped(
            std::min<qsizetype>(shift, QString::number(whole).size() - 1));
        if (decimals > 0) {
            text += u'.' + QString::number(fraction).rightJustified(16, u'0').left(decimals);
        }
        RC_ASSERT(isSameAsQt(text));
        RC_ASSERT(isSameAsQt(u'-' + text));
    }));
}

TEST(Number, TextsOfDigitsAndSignsReadAsQtReadsThem)
{
    EXPECT_TRUE(rc::check("texts of the characters that numbers have", [] {
        const auto characters =
            *rc::gen::container<std::string>(rc::gen::elementOf(std::string("0123456789.-+eE ")));
        RC_ASSERT(isSameAsQt(QString::fromStdString(characters)));
    }));
}

TEST(Number, AmountsAtTheEdgesAreWrittenAsQtWritesThem)
{
    using Limits = std::numeric_limits<double>;
    for (const double value : {0.0,
                               0.0005,
                               0.001,
                               0.0025,
                               0.004,
                               0.005,
                               0.0050001,
                               0.009,
                               0.01,
                               0.015,
                               0.05,
                               0.099,
                               0.1,
                               0.995,
                               0.999,
                               0.9995,
                               1.0,
                               1.005,
                               1.0049999,
                               2.675,
                               9.995,
                               99.995,
                               149.9,
                               999.995,
                               1234.5,
                               0.1 + 0.2,
                               1e11,
                               1e11 + 0.01,
                               1e12,
                               1e12 - 1,
                               1e13 - 1,
                               1e14,
                               1e15 + 0.3,
                               1e17,
                               1e300,
                               9007199.1,
                               99999e6,
                               Limits::min(),
                               Limits::max(),
                               Limits::denorm_min(),
                               Limits::infinity(),
                               Limits::quiet_NaN()}) {
        EXPECT_TRUE(isWrittenAsByQtAround(value)) << value;
    }
}

TEST(Number, EveryThousandthAndTheHalvesBetweenAreWrittenAsQtWritesThem)
{
    for (int number = 0; number < 100'000; ++number) {
        ASSERT_TRUE(isWrittenAsByQtAround(number / 1000.0)) << number;
        ASSERT_TRUE(isWrittenAsByQtAround((number + 0.5) / 1000)) << number;
    }
}

TEST(Number, SumsAndProductsAreWrittenAsQtWritesThem)
{
    EXPECT_TRUE(rc::check("a price times a quantity, and any bits", [] {
        const double price =
            static_cast<double>(*rc::gen::inRange<qint64>(0, 100'000'000'000)) / 100;
        const double quantity = *rc::gen::inRange(0, 1'000'000) / 1000.0;
        const double tenths = 1.0 / *rc::gen::inRange(1, 1000);
        RC_ASSERT(isWrittenAsByQtAround(price * quantity));
        RC_ASSERT(isWrittenAsByQtAround(price * tenths));
        RC_ASSERT(isWrittenAsByQtAround(std::bit_cast<double>(*rc::gen::arbitrary<quint64>())));
    }));
}
