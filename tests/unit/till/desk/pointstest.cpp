// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/tilltest.h"

#include <limits>
#include <stdexcept>

using namespace Qt::StringLiterals;
using till::Check;
using till::LoyaltyState;
using till::PointsChoice;

using PointsTest = tests::TillTest;
using tests::refusalOf;

TEST_F(PointsTest, theSumReallyPlacedIsWhatIsSpent)
{
    loyalty->spendable = 100;
    loyalty->awards = {{1, 20.0}};
    loyalty->placed = {{1, 30.0}, {2, 5.0}};
    openReady();
    EXPECT_EQ(desk->choosePoints(PointsChoice::sum(40'00)), 35'00);
    EXPECT_EQ(loyalty->calls.mid(2),
              (QStringList{u"set 40.00"_s, u"spend of 230.00"_s, u"set 35.00"_s,
                           u"recalculate to 195.00 of 230.00"_s}));
    const Check& check = desk->current();
    EXPECT_EQ(check.spentKopecks(), 35'00);
    EXPECT_EQ(check.moneyKopecks(), 195'00);
    EXPECT_EQ(check.line(1)->earnedKopecks, 16'96); // 20 * 195 / 230 = 16.9565
    EXPECT_EQ(check.systemEarnKopecks, 16'96);
    EXPECT_EQ(desk->takeNotices(),
              QStringList{u"Of the 40.00 points 35.00 found a place on the lines."_s});
}

TEST_F(PointsTest, discountsStayAlthoughTheSystemDropsThem)
{
    loyalty->discounts = {{1, 30.0}};
    loyalty->spendable = 100;
    openReady();
    desk->choosePoints(PointsChoice::sum(10'00));
    EXPECT_TRUE(loyalty->getDiscountImpacts().isEmpty());
    EXPECT_EQ(desk->current().discountKopecks(), 30'00);
    EXPECT_EQ(desk->current().document->getImpacts().size(), 2);
}

TEST_F(PointsTest, allMeansAsManyAsCanBeSpent)
{
    loyalty->spendable = 100.999;
    openReady();
    EXPECT_EQ(desk->choosePoints(PointsChoice::all()), 100'99);
}

TEST_F(PointsTest, neverMoreThanTheSumIsToPay)
{
    loyalty->spendable = 1000;
    loyalty->placed = {{1, 200.0}, {2, 30.0}};
    openReady();
    EXPECT_EQ(desk->availablePoints(), 230'00);
    EXPECT_EQ(desk->choosePoints(PointsChoice::all()), 230'00);
    EXPECT_EQ(desk->close().moneyKopecks(), 0);
}

TEST_F(PointsTest, moreThanCanBeSpentIsCutAndTold)
{
    loyalty->spendable = 20;
    openReady();
    EXPECT_EQ(desk->choosePoints(PointsChoice::sum(50'00)), 20'00);
    EXPECT_EQ(desk->takeNotices(), QStringList{u"Of the 50.00 points only 20.00 can be spent."_s});
}

TEST_F(PointsTest, aSecondChoiceBeginsWithANewRequest)
{
    loyalty->spendable = 100;
    openReady();
    desk->choosePoints(PointsChoice::sum(50'00));
    loyalty->calls.clear();
    EXPECT_EQ(desk->choosePoints(PointsChoice::sum(10'00)), 10'00);
    EXPECT_EQ(loyalty->calls, (QStringList{u"request"_s, u"set 10.00"_s, u"spend of 230.00"_s,
                                           u"set 10.00"_s, u"recalculate to 220.00 of 230.00"_s}));
    EXPECT_EQ(desk->current().document->getImpacts().size(), 1);
}

TEST_F(PointsTest, noPointsAfterAllTakesThemOffAndAsksAgain)
{
    loyalty->spendable = 100;
    loyalty->awards = {{1, 10.0}};
    openReady();
    desk->choosePoints(PointsChoice::sum(50'00));
    loyalty->calls.clear();
    EXPECT_EQ(desk->choosePoints(PointsChoice()), 0);
    EXPECT_EQ(loyalty->calls, QStringList{u"request"_s});
    EXPECT_EQ(desk->current().moneyKopecks(), 230'00);
    EXPECT_EQ(desk->current().earnedKopecks(), 10'00);
}

TEST_F(PointsTest, choosingNoneAtFirstCallsNobody)
{
    openReady();
    loyalty->calls.clear();
    EXPECT_EQ(desk->choosePoints(PointsChoice()), 0);
    EXPECT_EQ(loyalty->calls, QStringList());
}

TEST_F(PointsTest, aChangeOfMindWithTheServerAwayGoesOnWithoutLoyalty)
{
    loyalty->discounts = {{1, 30.0}};
    loyalty->spendable = 100;
    openReady();
    desk->choosePoints(PointsChoice::sum(50'00));
    loyalty->answers = false;
    EXPECT_EQ(desk->choosePoints(PointsChoice::sum(10'00)), 0);
    EXPECT_EQ(desk->current().loyalty, LoyaltyState::Refused);
    EXPECT_EQ(desk->current().moneyKopecks(), 230'00);
    EXPECT_FALSE(desk->close().confirmed);
    EXPECT_EQ(messages(), 0);
}

TEST_F(PointsTest, withoutLoyaltyThereAreNone)
{
    desk->openSale(twoLines());
    EXPECT_EQ(refusalOf([&] { desk->choosePoints(PointsChoice::all()); }),
              u"There are no points to pay with: the sale goes without the loyalty system."_s);
    EXPECT_EQ(desk->availablePoints(), 0);
}

TEST_F(PointsTest, withNothingToSpendNobodyIsCalled)
{
    openReady();
    loyalty->calls.clear();
    EXPECT_EQ(desk->choosePoints(PointsChoice::all()), 0);
    EXPECT_EQ(loyalty->calls, QStringList());
}

TEST_F(PointsTest, noPlaceAtAllMeansNoRecalculation)
{
    loyalty->spendable = 100;
    loyalty->placed = {{9, 10.0}};
    openReady();
    EXPECT_EQ(desk->choosePoints(PointsChoice::all()), 0);
    EXPECT_EQ(loyalty->calls.mid(2),
              (QStringList{u"set 100.00"_s, u"spend of 230.00"_s, u"set 0.00"_s}));
    EXPECT_TRUE(desk->close().confirmed);
}

TEST_F(PointsTest, anAmountToSpendThatIsNoNumberIsNoAmount)
{
    loyalty->spendable = -std::numeric_limits<double>::infinity();
    openReady();
    EXPECT_EQ(desk->availablePoints(), 0);
    EXPECT_EQ(desk->takeNotices(), QStringList{u"The loyalty system gives no usable number of "
                                               "points to spend; none can be spent."_s});
    EXPECT_EQ(desk->choosePoints(PointsChoice::all()), 0);
}

TEST_F(PointsTest, aNegativeAmountToSpendIsNone)
{
    loyalty->spendable = -5;
    openReady();
    EXPECT_EQ(desk->availablePoints(), 0);
}

TEST_F(PointsTest, whenSpendingFailsTheCheckIsAskedAboutAgain)
{
    loyalty->discounts = {{1, 30.0}};
    loyalty->spendable = 100;
    openReady();
    loyalty->onSpend = [] { throw std::runtime_error("no memory"); };
    EXPECT_EQ(desk->choosePoints(PointsChoice::all()), 0);
    EXPECT_EQ(desk->current().loyalty, LoyaltyState::Unasked);
    EXPECT_TRUE(desk->current().document->getImpacts().isEmpty());
    loyalty->calls.clear();
    const Check closed = desk->close();
    EXPECT_EQ(loyalty->calls, (QStringList{u"request"_s, u"commit"_s, u"clear"_s}));
    EXPECT_EQ(closed.discountKopecks(), 30'00);
    EXPECT_EQ(closed.spentKopecks(), 0);
}

TEST_F(PointsTest, cashTenderedBeforeDoesNotLessenThePoints)
{
    loyalty->spendable = 100;
    openReady();
    desk->tender(200'00);
    EXPECT_EQ(desk->choosePoints(PointsChoice::all()), 100'00);
    EXPECT_EQ(till::CashDesk::changeKopecks(desk->close()), 70'00);
}
