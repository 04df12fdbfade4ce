// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The quick reading of numbers against Qt's own, bit for bit.

#include "client/response/number.h"

#include <QString>

#include <bit>
#include <gtest/gtest.h>
#include <rapidcheck.h>

using namespace Qt::StringLiterals;

namespace {

bool isSameAsQt(const QString& text)
{
    return std::bit_cast<quint64>(orva::toNumber(text)) ==
           std::bit_cast<quint64>(QStringView(text).toDouble());
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
