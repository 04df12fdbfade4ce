// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/amount.h"

#include "tests/unit/till/printing.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using namespace till::amount;

TEST(MoneyText, hasTwoDecimalsAndAPoint)
{
    EXPECT_EQ(moneyText(0), u"0.00"_s);
    EXPECT_EQ(moneyText(5), u"0.05"_s);
    EXPECT_EQ(moneyText(123450), u"1234.50"_s);
    EXPECT_EQ(moneyText(-5), u"-0.05"_s);
    EXPECT_EQ(moneyText(-100), u"-1.00"_s);
}

TEST(QuantityText, isWholeForPiecesAndHasThreeDecimalsForWeights)
{
    EXPECT_EQ(quantityText(2000, false), u"2"_s);
    EXPECT_EQ(quantityText(2000, true), u"2.000"_s);
    EXPECT_EQ(quantityText(250, true), u"0.250"_s);
    EXPECT_EQ(quantityText(1500, false), u"1.500"_s);
}

TEST(ReadDecimal, scalesByTheDecimals)
{
    EXPECT_EQ(readDecimal(u"12.5", 2), 1250);
    EXPECT_EQ(readDecimal(u"0", 2), 0);
    EXPECT_EQ(readDecimal(u"49.90", 2), 4990);
    EXPECT_EQ(readDecimal(u"0.765", 3), 765);
    EXPECT_EQ(readDecimal(u"007", 3), 7000);
    EXPECT_EQ(readDecimal(u"9999999999999.99", 2), 999999999999999);
}

TEST(ReadDecimal, refusesWhatIsNoSuchNumber)
{
    const QStringList texts{u""_s,      u"."_s,   u".5"_s,    u"5."_s,
                            u"-1"_s,    u"+1"_s,  u"1,5"_s,   u"1e3"_s,
                            u"1 000"_s, u"x"_s,   u"nan"_s,   u"1.2.3"_s,
                            u"٣"_s,     u"inf"_s, u"1.999"_s, u"1234567890123456"_s};
    for (const QString& text : texts) {
        EXPECT_EQ(readDecimal(text, 2), std::nullopt) << text.toStdString();
    }
}

TEST(Proportion, roundsHalvesUpwards)
{
    EXPECT_EQ(proportion(1, 1, 2), 1);
    EXPECT_EQ(proportion(1, 1, 3), 0);
    EXPECT_EQ(proportion(2, 1, 3), 1);
    EXPECT_EQ(proportion(5, 3, 2), 8);
    EXPECT_EQ(proportion(-1, 1, 2), 0);
    EXPECT_EQ(proportion(-3, 1, 2), -1);
    EXPECT_EQ(proportion(-2, 1, 3), -1);
    EXPECT_EQ(proportion(0, 7, 9), 0);
}

TEST(Proportion, doesNotOverflowOnTheLargestAmounts)
{
    EXPECT_EQ(proportion(maximumKopecks, maximumKopecks, maximumKopecks), maximumKopecks);
    EXPECT_EQ(proportion(maximumKopecks, maximumThousandths, maximumThousandths), maximumKopecks);
}

TEST(LineSum, isPriceTimesQuantityRoundedHalfUp)
{
    EXPECT_EQ(lineSum(8990, 765), 6877); // 68.7735
    EXPECT_EQ(lineSum(1, 500), 1);       // 0.005
    EXPECT_EQ(lineSum(1, 499), 0);
    EXPECT_EQ(lineSum(14990, 2000), 29980);
}

TEST(KopecksNotAbove, isTheKopecksThatTheAmountHolds)
{
    EXPECT_EQ(kopecksNotAbove(100.29), 10029);
    EXPECT_EQ(kopecksNotAbove(100.999), 10099);
    EXPECT_EQ(kopecksNotAbove(0.004), 0);
    EXPECT_EQ(kopecksNotAbove(0.006), 0);
    EXPECT_EQ(kopecksNotAbove(-0.006), -1);
    EXPECT_EQ(kopecksNotAbove(std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_EQ(kopecksNotAbove(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_EQ(kopecksNotAbove(1e300), std::nullopt);
}
