// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/money.h"
#include "tests/unit/client/printers.h"

#include <QString>
#include <QStringList>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

/// What the two decimals of the written amount say, read digit by digit.
qint64 kopecksAsWritten(double amount)
{
    const QStringList parts = QString::number(amount, 'f', 2).split(u'.');
    EXPECT_EQ(parts.size(), 2);
    const bool negative = parts.at(0).startsWith(u'-');
    const qint64 roubles = parts.at(0).mid(negative ? 1 : 0).toLongLong();
    const qint64 kopecks = roubles * 100 + parts.at(1).toLongLong();
    return negative ? -kopecks : kopecks;
}

void expectAsWritten(double amount)
{
    const auto kopecks = money::toKopecks(amount);
    ASSERT_TRUE(kopecks.has_value()) << "amount " << amount;
    ASSERT_EQ(*kopecks, kopecksAsWritten(amount))
        << "amount " << QString::number(amount, 'g', 17).toStdString();
}

TEST(Money, RoundsByTheExactValueOfTheDouble)
{
    EXPECT_EQ(money::toKopecks(1234.5), 123450);
    EXPECT_EQ(money::toKopecks(2.675), 267) << "the double lies below 2.675";
    EXPECT_EQ(money::toKopecks(0.005), 1) << "the double lies above 0.005";
    EXPECT_EQ(money::toKopecks(1.005), 100) << "the double lies below 1.005";
    EXPECT_EQ(money::toKopecks(0.0049), 0);
    EXPECT_EQ(money::toKopecks(-2.675), -267);
    EXPECT_EQ(money::toKopecks(-0.005), -1);
}

TEST(Money, NoKopeckIsNegativeZero)
{
    EXPECT_EQ(money::toKopecks(0.0), 0);
    EXPECT_EQ(money::toKopecks(-0.0), 0);
    EXPECT_EQ(money::toKopecks(-0.001), 0);
    EXPECT_EQ(money::toKopecks(std::numeric_limits<double>::denorm_min()), 0);
}

TEST(Money, ExactHalvesGoWhereTheWrittenTextGoes)
{
    // Eighths are the only amounts of three decimals that a double holds exactly.
    for (int eighths = -4001; eighths <= 4001; eighths += 2) {
        expectAsWritten(eighths / 8.0);
    }
}

TEST(Money, AgreesWithTheWrittenTextOnOrdinaryAmounts)
{
    std::mt19937_64 random(20260101);
    std::uniform_real_distribution<double> amounts(-1e6, 1e6);
    for (int i = 0; i < 50000; ++i) {
        expectAsWritten(amounts(random));
    }
}

TEST(Money, AgreesWithTheWrittenTextNextToHalfKopecks)
{
    std::mt19937_64 random(20260102);
    std::uniform_int_distribution<qint64> thousandths(-100'000'000, 100'000'000);
    for (int i = 0; i < 50000; ++i) {
        const double half = static_cast<double>(thousandths(random) * 10 + 5) / 1000.0;
        expectAsWritten(half);
        expectAsWritten(std::nextafter(half, 1e12));
        expectAsWritten(std::nextafter(half, -1e12));
    }
}

TEST(Money, AgreesWithTheWrittenTextOnEveryMagnitude)
{
    std::mt19937_64 random(20260103);
    std::uniform_real_distribution<double> mantissas(1.0, 2.0);
    for (int exponent = -1074; exponent <= 55; ++exponent) {
        for (int i = 0; i < 20; ++i) {
            expectAsWritten(std::ldexp(mantissas(random), exponent));
        }
    }
}

TEST(Money, RefusesWhatIsNotFinite)
{
    EXPECT_EQ(money::toKopecks(std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_EQ(money::toKopecks(-std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_EQ(money::toKopecks(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

TEST(Money, RefusesWhatDoesNotFit)
{
    // 2^63 kopecks are 92233720368547758.08; doubles are 16 apart there.
    EXPECT_EQ(money::toKopecks(92233720368547744.0), 9223372036854774400);
    EXPECT_EQ(money::toKopecks(92233720368547760.0), std::nullopt);
    EXPECT_EQ(money::toKopecks(-92233720368547744.0), -9223372036854774400);
    EXPECT_EQ(money::toKopecks(-92233720368547760.0), std::nullopt);
    EXPECT_EQ(money::toKopecks(1e300), std::nullopt);
    EXPECT_EQ(money::toKopecks(std::numeric_limits<double>::max()), std::nullopt);
}

TEST(Money, GivesTheNearestAmountForKopecks)
{
    EXPECT_EQ(money::fromKopecks(0), 0.0);
    EXPECT_EQ(money::fromKopecks(1), 0.01);
    EXPECT_EQ(money::fromKopecks(-267), -2.67);
    EXPECT_EQ(money::fromKopecks(123450), 1234.5);
    std::mt19937_64 random(20260104);
    std::uniform_int_distribution<qint64> amounts(0, 1LL << 53);
    for (int i = 0; i < 20000; ++i) {
        const qint64 kopecks = amounts(random);
        const QString written =
            QStringLiteral("%1.%2").arg(kopecks / 100).arg(kopecks % 100, 2, 10, QChar(u'0'));
        ASSERT_EQ(money::fromKopecks(kopecks), written.toDouble()) << written.toStdString();
    }
}

TEST(Money, KopecksSurviveTheWayThroughADouble)
{
    std::mt19937_64 random(20260105);
    std::uniform_int_distribution<qint64> amounts(-100'000'000'000'000, 100'000'000'000'000);
    for (int i = 0; i < 20000; ++i) {
        const qint64 kopecks = amounts(random);
        ASSERT_EQ(money::toKopecks(money::fromKopecks(kopecks)), kopecks);
    }
}

} // namespace
