// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/plugin/orvatest.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

class SpendingTest : public OrvaTest
{
protected:
    bool spend(double points, const Successive<double>& sumToPay)
    {
        orva.pointsForSpend = points;
        base->sumToPay = sumToPay;
        return orva.spendPoints();
    }

    /// What a spending leaves in the journal.
    static QStringList calls(const QString& logged, const QString& sum, const QString& available)
    {
        return QStringList{
                   u"base.getSumToPay()"_s,
                   u"info: Списание бонусных баллов на сумму %1 будет выполнено после закрытия"
                   " чека"_s.arg(logged),
                   u"base.getCardRecord(15)"_s,
                   u"interface.generateBonusImpacts(card 77, %1, %2)"_s.arg(sum, available)} +
               writingOfState();
    }
};

TEST_F(SpendingTest, SpreadsTheSmallerOfPointsAndSumToPay)
{
    EXPECT_TRUE(spend(150.5, 100));
    EXPECT_EQ(journal.taken(), calls(u"100.00"_s, u"100"_s, u"150.5"_s));
    EXPECT_TRUE(spend(80.25, 100));
    EXPECT_EQ(journal.taken(), calls(u"80.25"_s, u"80.25"_s, u"80.25"_s));
}

TEST_F(SpendingTest, TakesTheSumToPayOnATieAndWithoutANumber)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // Only the sign of zero tells the two apart on a tie.
    EXPECT_TRUE(spend(0.0, -0.0));
    EXPECT_TRUE(std::signbit(interface->sumToSpread));
    EXPECT_TRUE(spend(-0.0, 0.0));
    EXPECT_FALSE(std::signbit(interface->sumToSpread));
    journal.clear();
    EXPECT_TRUE(spend(nan, 100));
    EXPECT_EQ(journal.taken(), calls(u"100.00"_s, u"100"_s, u"nan"_s));
    EXPECT_TRUE(spend(100, nan));
    EXPECT_EQ(journal.taken(), calls(u"nan"_s, u"nan"_s, u"100"_s));
}

TEST_F(SpendingTest, NeitherBoundsNorRoundsTheSum)
{
    EXPECT_TRUE(spend(12.345678, 1000));
    EXPECT_EQ(journal.taken(), calls(u"12.35"_s, QString::number(12.345678, 'g', 17),
                                     QString::number(12.345678, 'g', 17)));
    EXPECT_TRUE(spend(10, -2.5));
    EXPECT_EQ(journal.taken(), calls(u"-2.50"_s, u"-2.5"_s, u"10"_s));
}

TEST_F(SpendingTest, KeepsTheImpactsAndDropsTheOldOnes)
{
    fillState();
    interface->bonusImpacts = {bonusImpact(), bonusImpact()};
    EXPECT_TRUE(spend(10, 100));
    EXPECT_EQ(orva.bonusImpactsForSpend, interface->bonusImpacts);
    EXPECT_EQ(orva.getBonusImpactsForSpend(), interface->bonusImpacts);
}

TEST_F(SpendingTest, EmptiesTheDiscountsBeforeTheImpactsAreMade)
{
    fillState();
    qsizetype discountsThen = -1;
    QList<QSharedPointer<BonusImpact>> bonusImpactsThen;
    interface->onCall = [&](const QString& call) {
        if (call.startsWith(u"generateBonusImpacts")) {
            discountsThen = orva.discountImpacts.size();
            bonusImpactsThen = orva.bonusImpactsForSpend;
        }
    };
    const auto former = orva.bonusImpactsForSpend;
    EXPECT_TRUE(spend(10, 100));
    EXPECT_EQ(discountsThen, 0);
    EXPECT_EQ(bonusImpactsThen, former) << "the old impacts go when the new ones have come";
    EXPECT_TRUE(orva.discountImpacts.isEmpty());
}

TEST_F(SpendingTest, EmptiesTheDiscountsBeforeTheCardRecordIsAskedFor)
{
    fillState();
    qsizetype discountsAtSumToPay = -1;
    qsizetype discountsAtCardRecord = -1;
    base->onCall = [&](const QString& call) {
        if (call == u"getSumToPay()") {
            discountsAtSumToPay = orva.discountImpacts.size();
        } else if (call == u"getCardRecord(15)") {
            discountsAtCardRecord = orva.discountImpacts.size();
        }
    };
    EXPECT_TRUE(spend(10, 100));
    EXPECT_EQ(discountsAtSumToPay, 1);
    EXPECT_EQ(discountsAtCardRecord, 0);
}

TEST_F(SpendingTest, WithoutImpactsStillEmptiesAndWrites)
{
    fillState();
    EXPECT_TRUE(spend(10, 100));
    EXPECT_TRUE(orva.discountImpacts.isEmpty());
    EXPECT_TRUE(orva.bonusImpactsForSpend.isEmpty());
    EXPECT_EQ(open->pluginData.value(u"Orva"_s).size(), 2);
}

TEST_F(SpendingTest, LeavesPointsRecordsAndMessages)
{
    fillState();
    State expected(orva);
    expected.pointsForSpend = 10;
    expected.discountImpacts.clear();
    expected.bonusImpacts.clear();
    EXPECT_TRUE(spend(10, 100));
    EXPECT_EQ(State(orva), expected);
    EXPECT_EQ(orva.getLastErrorString(), oldError);
}

TEST_F(SpendingTest, AFailureOfTheSpreadingComesAfterTheDiscountsWent)
{
    fillState();
    const auto former = orva.bonusImpactsForSpend;
    interface->onCall = [](const QString&) {
        throw orva::Exception(tr::Tr(u"code"_s, u"текст"_s), u"x"_s);
    };
    EXPECT_THROW(spend(10, 100), orva::Exception);
    EXPECT_TRUE(orva.discountImpacts.isEmpty());
    EXPECT_EQ(orva.bonusImpactsForSpend, former);
    EXPECT_TRUE(open->pluginData.isEmpty());
    EXPECT_EQ(orva.getLastErrorString(), oldError);
    EXPECT_EQ(journal.entries(), calls(u"10.00"_s, u"10"_s, u"10"_s).mid(0, 4));
}

TEST_F(SpendingTest, AFailureOfTheDocumentLeavesTheDiscounts)
{
    fillState();
    base->onCall = [](const QString&) { throw std::runtime_error("document"); };
    EXPECT_THROW(spend(10, 100), std::runtime_error);
    EXPECT_EQ(orva.discountImpacts.size(), 1);
    EXPECT_EQ(journal.entries(), QStringList{u"base.getSumToPay()"_s});
}

TEST_F(SpendingTest, AFailureOfTheWritingComesAfterTheImpacts)
{
    fillState();
    interface->bonusImpacts = {bonusImpact()};
    open->onCall = [](const QString&) {
        throw orva::Exception(tr::Tr(u"code"_s, u"текст"_s), u"x"_s);
    };
    EXPECT_THROW(spend(10, 100), orva::Exception) << "only two operations catch";
    EXPECT_EQ(orva.bonusImpactsForSpend, interface->bonusImpacts);
    EXPECT_EQ(orva.getLastErrorString(), oldError);
}

} // namespace
