// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/samples.h"
#include "contract/subject.h"

#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

void contract::addDocumentPromises() {}

namespace contract {
namespace {

constexpr double tenthOfAKopeck = 0.001;

TEST(DocumentContract, AnswersWhatItWasMadeOf)
{
    DocumentData data;
    data.documentId = u"till-1.117"_s;
    data.checkNumber = 117;
    data.documentType = 25;
    data.saleDocumentId = u"till-1.116"_s;
    const auto document = subject().makeDocument(data);
    ASSERT_FALSE(document.isNull());
    EXPECT_EQ(document->getDocumentId(), u"till-1.117"_s);
    EXPECT_EQ(document->getCheckNumber(), 117);
    EXPECT_EQ(document->getDocumentType(), 25);
    EXPECT_EQ(document->getSaleDocumentId(), u"till-1.116"_s);
}

TEST(DocumentContract, ASaleNamesNoSaleThatItReturns)
{
    EXPECT_TRUE(subject().makeDocument({})->getSaleDocumentId().isEmpty());
}

TEST(DocumentContract, HasATimeOnlyWhereItHasOneOfItsOwn)
{
    EXPECT_FALSE(subject().makeDocument({})->hasDateTime());
    DocumentData data;
    data.dateTime = QDateTime(QDate(2026, 3, 1), QTime(18, 45, 12, 345));
    const auto document = subject().makeDocument(data);
    EXPECT_TRUE(document->hasDateTime());
    EXPECT_EQ(document->getDateTime(), data.dateTime);
}

TEST(DocumentContract, GivesTheGoodsLinesInDocumentOrder)
{
    DocumentData data;
    data.goodsItems = {goodsLine(3, 10), goodsLine(1, 20), goodsLine(2, 30)};
    const auto lines = subject().makeDocument(data)->getGoodsItems();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines.at(0)->getPosnum(), 3);
    EXPECT_EQ(lines.at(1)->getPosnum(), 1);
    EXPECT_EQ(lines.at(2)->getPosnum(), 2);
}

TEST(DocumentContract, GivesTheImpactsInTheOrderOfApplication)
{
    DocumentData data;
    data.goodsItems = {goodsLine(1, 100), goodsLine(2, 100)};
    data.impacts = {QSharedPointer<BonusImpact>::create(detail(2, 5)),
                    QSharedPointer<DiscountImpact>::create(detail(1, 7))};
    const auto impacts = subject().makeDocument(data)->getImpacts();
    ASSERT_EQ(impacts.size(), 2);
    EXPECT_EQ(impacts.at(0)->getTotals()->getPosition(), 2);
    EXPECT_EQ(impacts.at(1)->getTotals()->getPosition(), 1);
}

TEST(DocumentContract, FindsTheCardRecordOfALoyaltySystem)
{
    DocumentData data;
    data.cardRecords = {cardRecord(u"1"_s, 3), cardRecord(u"2"_s, systemCode)};
    const auto document = subject().makeDocument(data);
    const auto found = document->getCardRecord(systemCode);
    ASSERT_FALSE(found.isNull());
    EXPECT_EQ(found->getNumber().toString(), u"2"_s);
    EXPECT_TRUE(document->getCardRecord(4).isNull()) << "no card of that system";
}

TEST(DocumentContract, WhatIsWrittenIntoTheCardRecordStaysInTheDocument)
{
    DocumentData data;
    data.cardRecords = {cardRecord(u"1"_s)};
    const auto document = subject().makeDocument(data);
    document->getCardRecord(systemCode)->setPointsForSpend(12.5);
    EXPECT_EQ(document->getCardRecord(systemCode)->getPointsForSpend(), 12.5);
}

TEST(DocumentContract, TheCheckSumIsTheGoodsLessDiscountsAndPoints)
{
    DocumentData data;
    data.goodsItems = {goodsLine(1, 100.10), goodsLine(2, 0.20)};
    data.impacts = {QSharedPointer<DiscountImpact>::create(detail(1, 10.05)),
                    QSharedPointer<BonusImpact>::create(detail(1, 20.15))};
    EXPECT_NEAR(subject().makeDocument(data)->getCheckSum(), 70.10, tenthOfAKopeck);
}

TEST(DocumentContract, TheSumToPayIsTheCheckSumLessWhatWasTendered)
{
    DocumentData data;
    data.goodsItems = {goodsLine(1, 100)};
    data.impacts = {QSharedPointer<DiscountImpact>::create(detail(1, 10))};
    data.paymentKopecks = 2550;
    const auto document = subject().makeDocument(data);
    EXPECT_NEAR(document->getSumToPay(), 64.50, tenthOfAKopeck);
    EXPECT_NEAR(document->getCheckSum(), 90.00, tenthOfAKopeck);
}

TEST(DocumentContract, ThePaymentIsMoneyWithoutPoints)
{
    DocumentData data;
    data.goodsItems = {goodsLine(1, 100)};
    data.impacts = {QSharedPointer<BonusImpact>::create(detail(1, 40))};
    data.paymentKopecks = 6000;
    EXPECT_NEAR(subject().makeDocument(data)->getPaymentSum(), 60.00, tenthOfAKopeck);
}

TEST(DocumentContract, ARefreshLeavesItAsItIs)
{
    DocumentData data;
    data.goodsItems = {goodsLine(1, 100)};
    const auto document = subject().makeDocument(data);
    document->setPluginValue(u"Orva"_s, u"key"_s, 1);
    document->refreshLoyaltyData();
    EXPECT_EQ(document->getGoodsItems().size(), 1);
    EXPECT_NEAR(document->getCheckSum(), 100.00, tenthOfAKopeck);
    EXPECT_EQ(document->getPluginValue(u"Orva"_s, u"key"_s, 0), QVariant(1));
}

} // namespace
} // namespace contract
