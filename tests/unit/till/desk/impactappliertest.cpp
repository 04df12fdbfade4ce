// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/impactapplier.h"

#include "host/document/money.h"
#include "tests/unit/till/tilltest.h"

#include <limits>

using namespace Qt::StringLiterals;
using tests::FakeLoyalty;
using till::Check;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

/// A check of 2 pieces at 100.00 (minimum 90.00) and 0.500 kg at 60.00, with a card.
class ImpactApplierTest : public ::testing::Test
{
protected:
    ImpactApplierTest()
    {
        till::Line tea;
        tea.position = 1;
        tea.priceKopecks = 100'00;
        tea.minPriceKopecks = 90'00;
        tea.thousandths = 2000;
        tea.sumKopecks = 200'00;
        till::Line apples;
        apples.position = 2;
        apples.fractional = true;
        apples.priceKopecks = 60'00;
        apples.thousandths = 500;
        apples.sumKopecks = 30'00;
        check = Check::create(EDocumentType::Sale, 1, {tea, apples});
        record = Check::newCardRecord(u"2200"_s, 15);
        check.document->addCardRecord(record);
    }

    static DocumentBonusRecord award(int position, double points, bool accrual = true)
    {
        DocumentBonusRecord result;
        result.position = position;
        result.bonusAmount = points;
        result.accrual = accrual;
        return result;
    }

    QSharedPointer<DocumentImpact> discount(int position, double sum, bool minIgnored = true)
    {
        return FakeLoyalty::discount(record, position, sum, minIgnored);
    }
    QSharedPointer<BonusImpact> points(int position, double first, double second = 0)
    {
        return FakeLoyalty::points(record, position, first, second);
    }

    Check check;
    QSharedPointer<DocumentCardRecord> record;
    QStringList notices;
    till::ImpactApplier applier{check, 15, notices};
};

class RefusedAmountTest : public ImpactApplierTest, public ::testing::WithParamInterface<double>
{};

} // namespace

TEST_F(ImpactApplierTest, ofManyThatAreLeftOutTheFirstHaveASentenceAndTheOthersANumber)
{
    QList<QSharedPointer<DocumentImpact>> impacts;
    for (int position = 3; position < 28; ++position) {
        impacts.append(discount(position, 1));
    }
    impacts.append(discount(1, 5));
    till::ImpactApplier(check, 15, notices).applyDiscounts(impacts);
    ASSERT_EQ(notices.size(), 11);
    EXPECT_TRUE(notices.at(9).contains(u"12"_s)) << notices.at(9).toStdString();
    EXPECT_TRUE(notices.at(10).contains(u"15"_s)) << notices.at(10).toStdString();
    EXPECT_EQ(check.lines.at(0).discountKopecks, 5'00);
}

TEST_F(ImpactApplierTest, discountsCountOnTheirLinesAndInTheDocument)
{
    applier.applyDiscounts({discount(1, 20.0), discount(2, 3.004), discount(1, 0.35)});
    EXPECT_EQ(check.line(1)->discountKopecks, 20'35);
    EXPECT_EQ(check.line(2)->discountKopecks, 3'00);
    EXPECT_EQ(check.document->getImpacts().size(), 3);
    EXPECT_EQ(check.document->getCheckSumKopecks(), 230'00 - 23'35);
    EXPECT_EQ(check.moneyKopecks(), check.document->getCheckSumKopecks());
    EXPECT_EQ(notices, QStringList());
}

TEST_F(ImpactApplierTest, aDiscountMayTakeTheWholeLine)
{
    applier.applyDiscounts({discount(1, 200.0)});
    EXPECT_EQ(check.line(1)->discountKopecks, 200'00);
}

TEST_P(RefusedAmountTest, aDiscountIsRefusedWithANoticeAndTheOthersAreApplied)
{
    applier.applyDiscounts({discount(1, GetParam()), discount(2, 1.0)});
    EXPECT_EQ(check.line(1)->discountKopecks, 0);
    EXPECT_EQ(check.line(2)->discountKopecks, 1'00);
    EXPECT_EQ(check.document->getImpacts().size(), 1);
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices.first().contains(u"for line 1"_s)) << notices.first().toStdString();
}

TEST_P(RefusedAmountTest, pointsAreRefusedWithANoticeAndTheOthersAreApplied)
{
    EXPECT_EQ(applier.applyPoints({points(1, GetParam()), points(2, 1.0)}), 1'00);
    EXPECT_EQ(check.line(1)->spentKopecks, 0);
    EXPECT_EQ(check.line(2)->spentKopecks, 1'00);
    EXPECT_EQ(notices.size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Amounts, RefusedAmountTest,
                         ::testing::Values(notANumber, infinite, -infinite, 1e300, -0.01, 200.01));

TEST_F(ImpactApplierTest, discountsTogetherNeverTakeMoreThanTheLine)
{
    applier.applyDiscounts({discount(2, 20.0), discount(2, 20.0), discount(2, 10.0)});
    EXPECT_EQ(check.line(2)->discountKopecks, 30'00);
    EXPECT_EQ(notices.size(), 1);
}

TEST_F(ImpactApplierTest, aDiscountStopsAtTheMinimumPrice)
{
    const auto impact = discount(1, 50.0, false);
    applier.applyDiscounts({impact, discount(1, 1.0, false)});
    EXPECT_EQ(check.line(1)->discountKopecks, 20'00);
    EXPECT_DOUBLE_EQ(impact->getTotals()->getDiscountSum(), 20.0);
    EXPECT_EQ(check.document->getImpacts().size(), 1);
    EXPECT_EQ(check.document->getCheckSumKopecks(), 210'00);
}

TEST_F(ImpactApplierTest, aDiscountThatIgnoresTheMinimumPriceGoesBelowIt)
{
    applier.applyDiscounts({discount(1, 50.0, true)});
    EXPECT_EQ(check.line(1)->discountKopecks, 50'00);
}

TEST_F(ImpactApplierTest, impactsOfOthersAndOnUnknownLinesAreRefused)
{
    const auto foreign = FakeLoyalty::discount(Check::newCardRecord(u"1"_s, 14), 1, 1.0);
    applier.applyDiscounts({foreign, FakeLoyalty::discount({}, 1, 1.0), discount(9, 1.0),
                            QSharedPointer<DocumentImpact>()});
    EXPECT_TRUE(check.document->getImpacts().isEmpty());
    const QString notOwn =
        u"The loyalty system sent an impact that is not its own; it is left out."_s;
    EXPECT_EQ(notices, (QStringList{notOwn, notOwn,
                                    u"The loyalty system sent \"Скидка\" for line 9, which the "
                                    "check does not have; it is left out."_s,
                                    notOwn}));
}

TEST_F(ImpactApplierTest, totalsOfPointsAreSetToTheSumOfTheirPosition)
{
    const auto impact = points(1, 33.33, 0.009999999999999898);
    EXPECT_EQ(applier.applyPoints({impact}), 33'34);
    EXPECT_EQ(QString::number(impact->getTotals()->getDiscountSum(), 'f', 2), u"33.34"_s);
    EXPECT_DOUBLE_EQ(impact->getTotals()->getDiscountRate().toDouble(), 33.33);
    EXPECT_EQ(check.line(1)->spentKopecks, 33'34);
    EXPECT_EQ(check.document->getCheckSumKopecks(), 230'00 - 33'34);
    EXPECT_DOUBLE_EQ(check.document->getGoodsItems().first()->getBonusImpactSum(), 33.34);
}

TEST_F(ImpactApplierTest, pointsTakeAtMostWhatTheDiscountsLeft)
{
    applier.applyDiscounts({discount(2, 20.0)});
    EXPECT_EQ(applier.applyPoints({points(2, 10.01)}), 0);
    EXPECT_EQ(applier.applyPoints({points(2, 10.0)}), 10'00);
    EXPECT_EQ(notices.size(), 1);
}

TEST_F(ImpactApplierTest, accrualsAreScaledByWhatIsPaidInMoney)
{
    applier.applyDiscounts({discount(1, 30.0)});
    applier.noteAccruals({award(1, 8.5), award(2, 1.55), award(2, 99, false)});
    EXPECT_EQ(check.line(1)->earnedKopecks, 8'50);
    EXPECT_EQ(check.line(2)->earnedKopecks, 1'55);

    applier.applyPoints({points(1, 50.0)}); // (200 - 50) / 200
    applier.countEarned();
    EXPECT_EQ(check.line(1)->earnedKopecks, 6'38); // 6.375
    EXPECT_EQ(check.line(2)->earnedKopecks, 1'16); // 1.1625
    EXPECT_EQ(check.line(1)->awardedKopecks, 8'50);
}

TEST_F(ImpactApplierTest, awardsOnALineAreNoMoreTogetherThanTheLine)
{
    applier.noteAccruals({award(1, 150.0), award(1, 100.0), award(1, -50.0), award(2, -30.01)});
    EXPECT_EQ(check.line(1)->awardedKopecks, 100'00);
    EXPECT_EQ(check.line(2)->awardedKopecks, 0);
    EXPECT_EQ(notices, QStringList({u"The loyalty system awards 100.00 points on line 1, which "
                                    "cannot be; they are left out."_s,
                                    u"The loyalty system awards -30.01 points on line 2, which "
                                    "cannot be; they are left out."_s}));
}

TEST_F(ImpactApplierTest, aCheckPaidWithPointsAloneEarnsNothing)
{
    applier.noteAccruals({award(1, 10.0)});
    applier.applyPoints({points(1, 200.0), points(2, 30.0)});
    applier.countEarned();
    EXPECT_EQ(check.earnedKopecks(), 0);
    EXPECT_EQ(check.moneyKopecks(), 0);
}

TEST_F(ImpactApplierTest, accrualsThatCannotBeAreRefused)
{
    applier.noteAccruals({award(1, notANumber), award(1, infinite), award(2, 30.01), award(9, 1.0),
                          award(2, 30.0), award(1, -2.0)});
    EXPECT_EQ(check.line(1)->earnedKopecks, -2'00);
    EXPECT_EQ(check.line(2)->earnedKopecks, 30'00);
    EXPECT_EQ(notices.size(), 4);
}

TEST_F(ImpactApplierTest, takingOffLeavesTheBareCheck)
{
    applier.applyDiscounts({discount(1, 30.0)});
    applier.noteAccruals({award(1, 8.5)});
    applier.applyPoints({points(1, 50.0)});
    check.cashierMessages = QStringList{u"x"_s};
    applier.takeOff();
    EXPECT_TRUE(check.document->getImpacts().isEmpty());
    EXPECT_EQ(check.moneyKopecks(), 230'00);
    EXPECT_EQ(check.earnedKopecks(), 0);
    EXPECT_EQ(check.cashierMessages, QStringList());
    EXPECT_EQ(check.document->getCheckSumKopecks(), 230'00);
}
