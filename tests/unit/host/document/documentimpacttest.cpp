// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"
#include "tests/unit/client/printers.h"

#include <gtest/gtest.h>

namespace {

using Sums = QMap<int, double>;

QSharedPointer<DocumentImpactDetail> detailOf(double sum)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setDiscountSum(sum);
    return detail;
}

TEST(DocumentImpact, TotalsAreTheDetailItWasMadeFrom)
{
    const auto detail = detailOf(15.5);
    const DiscountImpact discount(detail);
    const BonusImpact bonus(detail);
    const DocumentImpact plain(detail);
    EXPECT_EQ(discount.getTotals(), detail);
    EXPECT_EQ(bonus.getTotals(), detail);
    EXPECT_EQ(plain.getTotals(), detail);
}

TEST(DocumentImpact, HoldsNoPositionsAtFirst)
{
    const BonusImpact impact(detailOf(1));
    EXPECT_EQ(impact.getPositionSums(), Sums());
}

TEST(DocumentImpact, RecordsAnAmountForEachPosition)
{
    BonusImpact impact(detailOf(0));
    impact.addDetailForPosition(3, 12.5);
    impact.addDetailForPosition(1, 0);
    impact.addDetailForPosition(-2, -7.25);
    EXPECT_EQ(impact.getPositionSums(), (Sums{{-2, -7.25}, {1, 0}, {3, 12.5}}));
}

TEST(DocumentImpact, AddsUpAmountsOfTheSamePosition)
{
    BonusImpact impact(detailOf(0));
    impact.addDetailForPosition(1, 10.25);
    impact.addDetailForPosition(2, 1);
    impact.addDetailForPosition(1, 0.5);
    EXPECT_EQ(impact.getPositionSums(), (Sums{{1, 10.75}, {2, 1}}));
}

TEST(DocumentImpact, PositionSumsDoNotChangeTheTotals)
{
    const auto detail = detailOf(15.5);
    BonusImpact impact(detail);
    impact.addDetailForPosition(1, 100);
    EXPECT_EQ(impact.getTotals(), detail);
    EXPECT_EQ(detail->getDiscountSum(), 15.5);
}

TEST(DocumentImpact, PositionSumsReadEarlierStayAsTheyWere)
{
    BonusImpact impact(detailOf(0));
    impact.addDetailForPosition(1, 1);
    const Sums before = impact.getPositionSums();
    impact.addDetailForPosition(1, 1);
    EXPECT_EQ(before, (Sums{{1, 1}}));
}

TEST(DocumentImpactDetail, IsEmptyAtFirst)
{
    const DocumentImpactDetail detail;
    EXPECT_TRUE(detail.getCardRecord().isNull());
    EXPECT_FALSE(detail.getCardType().isValid());
    EXPECT_FALSE(detail.getCardIndex().isValid());
    EXPECT_FALSE(detail.getDateTime().isValid());
    EXPECT_TRUE(detail.getDiscountName().isEmpty());
    EXPECT_FALSE(detail.getDiscountRate().isValid());
    EXPECT_EQ(detail.getPosition(), 0);
    EXPECT_EQ(detail.getDiscountSum(), 0.0);
    EXPECT_FALSE(detail.isMinPriceIgnored());
}

TEST(DocumentImpactDetail, GivesBackWhatWasSet)
{
    DocumentImpactDetail detail;
    const QDateTime time(QDate(2024, 3, 5), QTime(7, 8, 9));
    detail.setCardIndex(7);
    detail.setDateTime(time);
    detail.setDiscountType(EDiscountType::BonusPayment);
    detail.setDiscountMode(EDiscountMode::Sum);
    detail.setDiscountName(QStringLiteral("Скидка"));
    detail.setDiscountObject(EDiscountObject::Position);
    detail.setPosition(4);
    detail.setDiscountRate(12.5);
    detail.setDiscountSum(-3.125);
    detail.setImpactSource(EImpactSource::LoyaltySystem);
    detail.setMinPriceIgnored(true);

    EXPECT_EQ(detail.getCardIndex(), QVariant(7));
    EXPECT_EQ(detail.getDateTime(), time);
    EXPECT_EQ(detail.getDiscountType(), EDiscountType::BonusPayment);
    EXPECT_EQ(detail.getDiscountMode(), EDiscountMode::Sum);
    EXPECT_EQ(detail.getDiscountName(), QStringLiteral("Скидка"));
    EXPECT_EQ(detail.getDiscountObject(), EDiscountObject::Position);
    EXPECT_EQ(detail.getPosition(), 4);
    EXPECT_EQ(detail.getDiscountRate(), QVariant(12.5));
    EXPECT_EQ(detail.getDiscountSum(), -3.125);
    EXPECT_EQ(detail.getImpactSource(), EImpactSource::LoyaltySystem);
    EXPECT_TRUE(detail.isMinPriceIgnored());
}

TEST(DocumentImpactDetail, CardTypeIsTheCodeOfTheRecordsLoyaltySystem)
{
    DocumentImpactDetail detail;
    const auto record = QSharedPointer<DocumentCardRecord>::create(
        QSharedPointer<Card>::create(QStringLiteral("77")), 15, 9);
    detail.setCardRecord(record);
    EXPECT_EQ(detail.getCardRecord(), record);
    EXPECT_EQ(detail.getCardType(), QVariant(15));
    EXPECT_EQ(detail.getCardType().typeId(), QMetaType::Int);

    detail.setCardRecord(QSharedPointer<DocumentCardRecord>::create(QSharedPointer<Card>(), 3));
    EXPECT_EQ(detail.getCardType(), QVariant(3));
    detail.setCardRecord({});
    EXPECT_FALSE(detail.getCardType().isValid());
}

TEST(ImpactEnumerations, CarryTheValuesThatPluginsRelyOn)
{
    EXPECT_EQ(static_cast<int>(EDiscountType::LoyaltyDiscount), 2);
    EXPECT_EQ(static_cast<int>(EDiscountType::BonusPayment), 5);
    EXPECT_EQ(static_cast<int>(EDiscountMode::Sum), 2);
    EXPECT_EQ(static_cast<int>(EDiscountObject::Position), 1);
    EXPECT_EQ(static_cast<int>(EImpactSource::LoyaltySystem), 2);
}

} // namespace
