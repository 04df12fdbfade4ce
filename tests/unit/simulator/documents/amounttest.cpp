// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/amount.h"

#include "tests/unit/simulator/testchecks.h"

#include <gmock/gmock.h>
#include <limits>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

TEST(Amount, readsPlainDecimalsExactly)
{
    EXPECT_EQ(readKopecks(u"12.50"), 1250);
    EXPECT_EQ(readKopecks(u"12.5"), 1250);
    EXPECT_EQ(readKopecks(u"12"), 1200);
    EXPECT_EQ(readKopecks(u"0.01"), 1);
    EXPECT_EQ(readKopecks(u"-0.01"), -1);
    EXPECT_EQ(readKopecks(u"-0.00"), 0);
    EXPECT_EQ(readKopecks(u"+3.10"), 310);
    EXPECT_EQ(readKopecks(u" 7.00\n"), 700);
    EXPECT_EQ(readKopecks(u"1.2300"), 123);
    EXPECT_EQ(readKopecks(u"90071992547409.93"), std::nullopt);
    EXPECT_EQ(readKopecks(u"900719925474.93"), 90'071'992'547'493);
    EXPECT_EQ(readKopecks(u"1000000000000.00"), 100'000'000'000'000);
    EXPECT_EQ(readThousandths(u"0.250"), 250);
    EXPECT_EQ(readThousandths(u"2"), 2000);
}

TEST(Amount, refusesWhatIsNoWholeNumberOfKopecks)
{
    for (const char16_t* text :
         {u"", u" ", u"-", u".", u".5", u"5.", u"1,50", u"1.005", u"1e2", u"0x10", u"1 000", u"--1",
          u"1.2.3", u"nan", u"inf", u"1000000000000.01", u"99999999999999999999999999", u"١"}) {
        EXPECT_EQ(readKopecks(text), std::nullopt) << QStringView(text).toString().toStdString();
    }
    EXPECT_EQ(readThousandths(u"0.0001"), std::nullopt);
}

TEST(Amount, isWrittenWithTwoDecimals)
{
    EXPECT_EQ(writeKopecks(0), u"0.00"_s);
    EXPECT_EQ(writeKopecks(5), u"0.05"_s);
    EXPECT_EQ(writeKopecks(-5), u"-0.05"_s);
    EXPECT_EQ(writeKopecks(123456), u"1234.56"_s);
    EXPECT_EQ(writeKopecks(-100), u"-1.00"_s);
    EXPECT_EQ(writeKopecks(std::numeric_limits<qint64>::min()), u"-92233720368547758.08"_s);
}

TEST(Amount, thatIsWrittenIsReadBack)
{
    for (Kopecks amount = -100'000; amount <= 100'000; amount += 7) {
        EXPECT_EQ(readKopecks(writeKopecks(amount)), amount);
    }
}

TEST(RoundedShare, roundsHalvesUp)
{
    EXPECT_EQ(roundedShare(1, 1, 2), 1);
    EXPECT_EQ(roundedShare(1, 1, 3), 0);
    EXPECT_EQ(roundedShare(2, 1, 3), 1);
    EXPECT_EQ(roundedShare(333, 500, 10'000), 17); // 16.65
    EXPECT_EQ(roundedShare(330, 500, 10'000), 17); // 16.5
    EXPECT_EQ(roundedShare(329, 500, 10'000), 16); // 16.45
    EXPECT_EQ(roundedShare(0, 5, 7), 0);
    EXPECT_EQ(roundedShare(5, 7, 7), 5);
    EXPECT_EQ(roundedShare(-1, 1, 2), 0);
    EXPECT_EQ(roundedShare(-2, 1, 3), -1);
    EXPECT_EQ(roundedShare(-3, 1, 2), -1); // -1.5
    EXPECT_EQ(roundedShare(-5, 7, 7), -5);
}

TEST(RoundedShare, doesNotOverflowOnTheWay)
{
    const qint64 most = std::numeric_limits<qint64>::max();
    EXPECT_EQ(roundedShare(most, most - 1, most), most - 1);
    const auto isRefused = [](const auto& computed, const char* reason) {
        EXPECT_THAT(computed, ::testing::ThrowsMessage<std::exception>(::testing::StrEq(reason)));
    };
    for (const qint64 amount : {most, -most}) {
        isRefused([&] { roundedShare(amount, 3, 2); }, "a share does not fit 64 bits");
    }
    const char* const noPart = "a share is a part of something, and not a negative one";
    isRefused([] { roundedShare(1, -1, 1); }, noPart);
    isRefused([] { roundedShare(1, 1, 0); }, noPart);
    isRefused([&] { checkedSum(most, 1); }, "a sum of amounts does not fit 64 bits");
    EXPECT_EQ(checkedSum(most, -1), most - 1);
}

} // namespace
} // namespace simulator
