// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "tests/support/logcapture.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/steps.h"

#include <cmath>

using namespace Qt::StringLiterals;
using ::testing::Return;
using ::testing::StrictMock;
using tests::debugLine;
using tests::LogLine;

namespace {

using Lines = QList<QPair<QString, QString>>;

/// What an impact says of itself and what is recorded for its position.
struct Spent
{
    int position = 0;
    double sum = 0;
    double recorded = 0;

    bool operator==(const Spent&) const = default;
};

void PrintTo(const Spent& spent, std::ostream* out)
{
    *out << spent.position << ": sum " << QByteArray::number(spent.sum, 'g', 17).toStdString()
         << ", recorded " << QByteArray::number(spent.recorded, 'g', 17).toStdString();
}

class Spending : public ::testing::Test
{
protected:
    /// Stores an answer whose lines have these ids and allowances.
    void answer(const Lines& lines)
    {
        QString xml = u"<a><items>"_s;
        for (const auto& [id, allowance] : lines) {
            xml += u"<RawItem><id>"_s + id +
                   u"</id><awards><RawItemAwards><allowBonusInCurrency>"_s + allowance +
                   u"</allowBonusInCurrency></RawItemAwards></awards></RawItem>"_s;
        }
        client.setLastResponse(tests::parse(xml + u"</items></a>"_s));
    }
    QList<Spent> spend(double amount, double maximum)
    {
        QList<Spent> result;
        for (const auto& impact : client.generateBonusImpacts(record, amount, maximum)) {
            const auto totals = impact->getTotals();
            const auto sums = impact->getPositionSums();
            EXPECT_EQ(sums.keys(), QList<int>{totals->getPosition()});
            EXPECT_EQ(totals->getDiscountRate(), QVariant(totals->getDiscountSum()));
            result.append({totals->getPosition(), totals->getDiscountSum(), sums.first()});
        }
        return result;
    }

    QSharedPointer<DocumentCardRecord> record = tests::cardRecord(u"77"_s, 15, 4);
    tests::OpenInterface client;
};

} // namespace

TEST_F(Spending, fillsEveryFieldOfTheImpact)
{
    answer({{u"7"_s, u"20.00"_s}});
    const QDateTime now(QDate(2024, 3, 5), QTime(14, 20, 31));
    StrictMock<tests::MockCurrentTime> clock;
    const tests::Registered<CurrentTime> registration(clock);
    EXPECT_CALL(clock, currentDateTime()).WillOnce(Return(now));
    const QList<QSharedPointer<BonusImpact>> impacts = client.generateBonusImpacts(record, 5, 20);
    ASSERT_EQ(impacts.size(), 1);
    const auto detail = impacts.first()->getTotals();
    EXPECT_EQ(detail->getCardRecord(), record);
    EXPECT_EQ(detail->getCardIndex(), QVariant(4));
    EXPECT_EQ(detail->getCardIndex().typeId(), QMetaType::Int);
    EXPECT_EQ(detail->getDateTime(), now);
    EXPECT_EQ(static_cast<int>(detail->getDiscountType()), 5);
    EXPECT_EQ(static_cast<int>(detail->getDiscountMode()), 2);
    EXPECT_EQ(detail->getDiscountName(), u"Баллы Orva"_s);
    EXPECT_EQ(static_cast<int>(detail->getDiscountObject()), 1);
    EXPECT_EQ(detail->getPosition(), 7);
    EXPECT_EQ(detail->getDiscountRate(), QVariant(5.0));
    EXPECT_EQ(detail->getDiscountRate().typeId(), QMetaType::Double);
    EXPECT_EQ(detail->getDiscountSum(), 5);
    EXPECT_EQ(static_cast<int>(detail->getImpactSource()), 2);
    EXPECT_TRUE(detail->isMinPriceIgnored());
    EXPECT_EQ(impacts.first()->getPositionSums(), (QMap<int, double>{{7, 5.0}}));
}

TEST_F(Spending, takesTheTimeAnewForEveryLineThatTakesPart)
{
    answer({{u"1"_s, u"5"_s}, {u"2"_s, u"0.004"_s}, {u"3"_s, u"5"_s}, {u"4"_s, u"5"_s}});
    const QDateTime now(QDate(2024, 3, 5), QTime(14, 20, 31));
    StrictMock<tests::MockCurrentTime> clock;
    const tests::Registered<CurrentTime> registration(clock);
    EXPECT_CALL(clock, currentDateTime()).WillOnce(Return(now)).WillOnce(Return(now.addSecs(1)));
    const auto impacts = client.generateBonusImpacts(record, 10, 10);
    ASSERT_EQ(impacts.size(), 2);
    EXPECT_EQ(impacts.at(0)->getTotals()->getDateTime(), now);
    EXPECT_EQ(impacts.at(1)->getTotals()->getDateTime(), now.addSecs(1));
}

TEST_F(Spending, logsTheAmountWithTwoDecimalsEvenWhenNothingIsSpent)
{
    const tests::LogCapture log;
    client.generateBonusImpacts(record, 10, 30);
    client.generateBonusImpacts(record, 2.675, 30);
    client.generateBonusImpacts(record, 0.004, 30);
    client.generateBonusImpacts(record, -1234567.5, 30);
    EXPECT_EQ(log.lines(),
              (QList<LogLine>{debugLine(u"Создание бонусных списаний на сумму 10.00"_s),
                              debugLine(u"Создание бонусных списаний на сумму 2.67"_s),
                              debugLine(u"Создание бонусных списаний на сумму 0.00"_s),
                              debugLine(u"Создание бонусных списаний на сумму -1234567.50"_s)}));
}

TEST_F(Spending, spreadsTheAmountInProportionToTheAllowances)
{
    answer({{u"3"_s, u"10.00"_s}, {u"1"_s, u"20.00"_s}});
    EXPECT_EQ(spend(10, 30), (QList<Spent>{{1, 6.67, 6.67}, {3, 3.33, 3.33}}));
}

TEST_F(Spending, putsTheRestOnTheLowestPosition)
{
    answer({{u"1"_s, u"1.00"_s}, {u"2"_s, u"1.00"_s}, {u"3"_s, u"1.00"_s}});
    EXPECT_EQ(
        spend(1, 3),
        (QList<Spent>{{1, 0.33, 0.33 + 0.009999999999999898}, {2, 0.33, 0.33}, {3, 0.33, 0.33}}));
}

TEST_F(Spending, findsTheLowestPositionWhereverItStands)
{
    answer({{u"3"_s, u"1.00"_s}, {u"2"_s, u"1.00"_s}, {u"1"_s, u"1.00"_s}});
    EXPECT_EQ(
        spend(1, 3),
        (QList<Spent>{{1, 0.33, 0.33 + 0.009999999999999898}, {2, 0.33, 0.33}, {3, 0.33, 0.33}}));
    answer({{u"-5"_s, u"1.00"_s}, {u"10"_s, u"1.00"_s}, {u"9"_s, u"1.00"_s}});
    EXPECT_EQ(
        spend(1, 3),
        (QList<Spent>{{-5, 0.33, 0.33 + 0.009999999999999898}, {9, 0.33, 0.33}, {10, 0.33, 0.33}}));
}

TEST_F(Spending, goesOnWithTheRestInAscendingOrderUntilNothingIsLeft)
{
    answer({{u"2"_s, u"6.00"_s}, {u"1"_s, u"3.00"_s}, {u"3"_s, u"8.00"_s}});
    // shares 0.60, 0.30 and 0.80; of the 8.30 left, 2.70 fit on 1, 5.40 on 2 and 0.20 go to 3
    const QList<Spent> spent = spend(10, 100);
    ASSERT_EQ(spent.size(), 3);
    EXPECT_EQ(spent.at(0).sum, 0.3);
    EXPECT_DOUBLE_EQ(spent.at(0).recorded, 3);
    EXPECT_EQ(spent.at(1).sum, 0.6);
    EXPECT_DOUBLE_EQ(spent.at(1).recorded, 6);
    EXPECT_EQ(spent.at(2).sum, 0.8);
    EXPECT_NEAR(spent.at(2).recorded, 1, 1e-12);
}

TEST_F(Spending, leavesUnplacedWhatTheAllowancesDoNotCover)
{
    answer({{u"2"_s, u"6.00"_s}, {u"1"_s, u"3.00"_s}});
    const QList<Spent> spent = spend(10, 100);
    ASSERT_EQ(spent.size(), 2);
    EXPECT_DOUBLE_EQ(spent.at(0).recorded, 3);
    EXPECT_DOUBLE_EQ(spent.at(1).recorded, 6);
}

TEST_F(Spending, givesWholeAllowancesUntilTheAmountRunsOut)
{
    answer({{u"1"_s, u"10"_s}, {u"2"_s, u"10"_s}, {u"3"_s, u"10"_s}, {u"4"_s, u"10"_s}});
    const QList<Spent> expected{{1, 10, 10}, {2, 10, 10}, {3, 5, 5}};
    EXPECT_EQ(spend(25, 25), expected);
    EXPECT_EQ(spend(25, 20), expected);
    // nothing guards against a maximum of 0
    EXPECT_EQ(spend(25, 0), expected);
}

TEST_F(Spending, givesTheWholeAllowanceToALineWhoseShareRoundsToNothing)
{
    answer({{u"1"_s, u"0.30"_s}, {u"2"_s, u"999.70"_s}});
    EXPECT_EQ(spend(10, 1000), (QList<Spent>{{1, 0.3, 0.3}, {2, 10 - 0.3, 10 - 0.3}}));
}

TEST_F(Spending, givesWhatIsLeftToALineWhoseShareRoundsToNothing)
{
    answer({{u"1"_s, u"0.40"_s}});
    EXPECT_EQ(spend(0.25, 100), (QList<Spent>{{1, 0.25, 0.25}}));
}

TEST_F(Spending, givesNoWholeAllowanceForAnAmountOfHalfAKopeck)
{
    answer({{u"1"_s, u"1"_s}, {u"2"_s, u"1"_s}});
    // the shares round to nothing; the half kopeck is placed as the rest
    EXPECT_EQ(spend(0.005, 10), (QList<Spent>{{1, 0, 0.005}, {2, 0, 0}}));
    EXPECT_EQ(spend(0.005, 1), (QList<Spent>{{1, 0.005, 0.005}}));
}

TEST_F(Spending, roundsHalvesAwayFromZero)
{
    for (const auto& [allowance, share] : QList<QPair<QString, double>>{
             {u"0.125"_s, 0.13}, {u"-0.125"_s, -0.13}, {u"0.375"_s, 0.38}, {u"2.5"_s, 2.5}}) {
        answer({{u"1"_s, allowance}});
        ASSERT_EQ(spend(10, 10).size(), 1) << qPrintable(allowance);
        EXPECT_EQ(spend(10, 10).constFirst().sum, share) << qPrintable(allowance);
    }
}

TEST_F(Spending, roundsALittleMoreThanHalvesAwayFromZero)
{
    for (const auto& [allowance, share] : QList<QPair<QString, double>>{{u"0.12495"_s, 0.12},
                                                                        {u"0.124995"_s, 0.13},
                                                                        {u"-0.12495"_s, -0.12},
                                                                        {u"-0.124995"_s, -0.13}}) {
        answer({{u"1"_s, allowance}});
        ASSERT_EQ(spend(10, 10).size(), 1) << qPrintable(allowance);
        EXPECT_EQ(spend(10, 10).constFirst().sum, share) << qPrintable(allowance);
    }
}

TEST_F(Spending, spendsNothingOfAnAmountBelowHalfAKopeck)
{
    for (const Lines& lines :
         {Lines{{u"1"_s, u"10"_s}}, Lines{{u"1"_s, u"0.01"_s}, {u"2"_s, u"-5"_s}}, Lines{}}) {
        answer(lines);
        for (const double amount : {0.004, -0.004, 0.0, 0.00499999}) {
            EXPECT_EQ(spend(amount, 30), QList<Spent>()) << amount;
        }
    }
}

TEST_F(Spending, spendsNothingWithoutLines)
{
    EXPECT_EQ(spend(10, 30), QList<Spent>());
    for (const QString& xml : {u"<a/>"_s, u"<a><items/></a>"_s}) {
        client.setLastResponse(tests::parse(xml));
        EXPECT_EQ(spend(10, 30), QList<Spent>());
    }
}

TEST_F(Spending, skipsLinesThatAllowLessThanHalfAKopeck)
{
    for (const QString& allowance :
         {u"0.004"_s, u"0.00499"_s, u"-0.004"_s, u"0"_s, u""_s, u"1,5"_s, u"много"_s}) {
        answer({{u"1"_s, allowance}, {u"2"_s, u"10"_s}});
        EXPECT_EQ(spend(5, 5), (QList<Spent>{{2, 5, 5}})) << qPrintable(allowance);
        answer({{u"1"_s, allowance}});
        EXPECT_EQ(spend(5, 5), QList<Spent>()) << qPrintable(allowance);
    }
    client.setLastResponse(tests::parse(u"<a><items><RawItem><id>1</id></RawItem></items></a>"_s));
    EXPECT_EQ(spend(5, 5), QList<Spent>());
}

TEST_F(Spending, testsForTheEndAfterASkippedLineToo)
{
    // a share of nothing is not below an amount that is negative: nothing is left to place
    answer({{u"1"_s, u"0.001"_s}, {u"2"_s, u"10"_s}});
    EXPECT_EQ(spend(-5, 5), QList<Spent>());
}

TEST_F(Spending, keepsTheLaterOfTwoLinesWithOnePosition)
{
    answer({{u"1"_s, u"10"_s}, {u"1"_s, u"10"_s}});
    // what the first line took is gone
    EXPECT_EQ(spend(10, 20), (QList<Spent>{{1, 5, 5}}));
    answer({{u"1"_s, u"4"_s}, {u"2"_s, u"4"_s}, {u"1"_s, u"2"_s}});
    EXPECT_EQ(spend(5, 10), (QList<Spent>{{1, 1, 1}, {2, 2, 2}}));
    answer({{u"1"_s, u"4"_s}, {u"1"_s, u"0.001"_s}});
    EXPECT_EQ(spend(4, 4), (QList<Spent>{{1, 4, 4}}));
}

TEST_F(Spending, takesTheRoomLeftOnTheLaterOfTwoLinesWithOnePosition)
{
    answer({{u"1"_s, u"100"_s}, {u"1"_s, u"3"_s}});
    // shares 10.00 and 0.30; of the 89.70 left, 2.70 fit
    const QList<Spent> spent = spend(100, 1000);
    ASSERT_EQ(spent.size(), 1);
    EXPECT_EQ(spent.first().sum, 0.3);
    EXPECT_DOUBLE_EQ(spent.first().recorded, 3);
}

TEST_F(Spending, usesPositionZeroForLinesWithoutAReadableId)
{
    for (const QString& id : {u"x"_s, u""_s, u"2147483648"_s, u"99999999999999999999"_s}) {
        answer({{id, u"10"_s}});
        EXPECT_EQ(spend(5, 5), (QList<Spent>{{0, 5, 5}})) << qPrintable(id);
    }
    client.setLastResponse(
        tests::parse(u"<a><items><RawItem><awards><RawItemAwards><allowBonusInCurrency>10"
                     "</allowBonusInCurrency></RawItemAwards></awards></RawItem></items></a>"_s));
    EXPECT_EQ(spend(5, 5), (QList<Spent>{{0, 5, 5}}));
}

TEST_F(Spending, readsTheFirstAwardsOfALineOnly)
{
    client.setLastResponse(
        tests::parse(u"<a><items><RawItem><id>1</id><awards><RawItemAwards><allowBonusInCurrency>3"
                     "</allowBonusInCurrency></RawItemAwards><RawItemAwards><allowBonusInCurrency>9"
                     "</allowBonusInCurrency></RawItemAwards></awards></RawItem></items></a>"_s));
    EXPECT_EQ(spend(5, 5), (QList<Spent>{{1, 3, 3}}));
}

TEST_F(Spending, saturatesSharesBeyond64Bits)
{
    answer({{u"1"_s, u"1e300"_s}});
    const QList<Spent> spent = spend(1e300, 1e300);
    ASSERT_EQ(spent.size(), 1);
    EXPECT_EQ(spent.first().sum, 9223372036854775808.0 / 100.0);
    EXPECT_EQ(spent.first().recorded, 1e300);
    answer({{u"1"_s, u"-1e300"_s}});
    ASSERT_EQ(spend(10, 10).size(), 1);
    EXPECT_EQ(spend(10, 10).constFirst().sum, -9223372036854775808.0 / 100.0);
}

TEST_F(Spending, givesTheSameTwiceAndLeavesTheAnswerAlone)
{
    answer({{u"3"_s, u"10.00"_s}, {u"1"_s, u"20.00"_s}});
    const QString before = tests::written(client.lastResponse);
    const QList<Spent> first = spend(10, 30);
    EXPECT_EQ(spend(10, 30), first);
    EXPECT_EQ(tests::written(client.lastResponse), before);
}

TEST_F(Spending, readsTheStoredAnswerAndSendsNothing)
{
    StrictMock<tests::MockRestClient> transport;
    const tests::Registered<RestClient> registration(transport);
    StrictMock<tests::Steps> steps;
    EXPECT_CALL(steps, generateBonusImpacts(record, 5, 5));
    steps.setLastResponse(
        tests::parse(u"<a><items><RawItem><id>1</id><awards><RawItemAwards><allowBonusInCurrency>3"
                     "</allowBonusInCurrency></RawItemAwards></awards></RawItem></items></a>"_s));
    EXPECT_EQ(steps.generateBonusImpacts(record, 5, 5).size(), 1);
}
