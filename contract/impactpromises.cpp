// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/samples.h"
#include "contract/subject.h"

#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

void contract::addImpactPromises() {}

namespace contract {
namespace {

template <typename Impact>
void expectMadeOfItsDetail()
{
    const auto made = detail(3, 12.5);
    EXPECT_EQ(Impact(made).getTotals(), made);
}

template <typename Impact>
void expectAmountsToAddUp()
{
    Impact impact(detail(3, 12.5));
    impact.addDetailForPosition(3, 2.5);
    impact.addDetailForPosition(4, 1);
    impact.addDetailForPosition(3, 0.5);
    EXPECT_EQ(impact.getPositionSums(), (QMap<int, double>{{3, 3.0}, {4, 1.0}}));
    EXPECT_EQ(impact.getTotals()->getDiscountSum(), 12.5);
}

TEST(ImpactContract, IsMadeOfItsDetail)
{
    expectMadeOfItsDetail<DiscountImpact>();
    expectMadeOfItsDetail<BonusImpact>();
}

TEST(ImpactContract, AmountsForAPositionAddUpAndLeaveTheTotalsAlone)
{
    expectAmountsToAddUp<DiscountImpact>();
    expectAmountsToAddUp<BonusImpact>();
}

TEST(ImpactDetailContract, TheCardTypeIsTheRecordsSystem)
{
    EXPECT_TRUE(detail(1, 1)->getCardType().isNull()) << "no card record";
    const QVariant type = detail(1, 1, cardRecord(u"77"_s))->getCardType();
    EXPECT_EQ(type.toInt(), systemCode);
}

TEST(ImpactDetailContract, KeepsWhatALoyaltySystemWrites)
{
    DocumentImpactDetail written;
    const QDateTime time(QDate(2026, 3, 1), QTime(18, 45));
    written.setCardIndex(7);
    written.setDateTime(time);
    written.setDiscountType(EDiscountType::BonusPayment);
    written.setDiscountMode(EDiscountMode::Sum);
    written.setDiscountName(u"Баллы"_s);
    written.setDiscountObject(EDiscountObject::Position);
    written.setDiscountRate(QVariant());
    written.setImpactSource(EImpactSource::LoyaltySystem);
    written.setMinPriceIgnored(true);
    EXPECT_EQ(written.getCardIndex().toInt(), 7);
    EXPECT_EQ(written.getDateTime(), time);
    EXPECT_EQ(written.getDiscountType(), EDiscountType::BonusPayment);
    EXPECT_EQ(written.getDiscountMode(), EDiscountMode::Sum);
    EXPECT_EQ(written.getDiscountName(), u"Баллы"_s);
    EXPECT_EQ(written.getDiscountObject(), EDiscountObject::Position);
    EXPECT_TRUE(written.getDiscountRate().isNull());
    EXPECT_EQ(written.getImpactSource(), EImpactSource::LoyaltySystem);
    EXPECT_TRUE(written.isMinPriceIgnored());
}

TEST(ImpactDetailContract, TheNumbersOfTheKindsAreThoseThatPlugInsRelyOn)
{
    EXPECT_EQ(int(EDiscountType::LoyaltyDiscount), 2);
    EXPECT_EQ(int(EDiscountType::BonusPayment), 5);
    EXPECT_EQ(int(EDiscountMode::Sum), 2);
    EXPECT_EQ(int(EDiscountObject::Position), 1);
    EXPECT_EQ(int(EImpactSource::LoyaltySystem), 2);
}

} // namespace
} // namespace contract
