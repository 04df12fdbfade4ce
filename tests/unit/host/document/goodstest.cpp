// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/card.h"
#include "host/document/documentcardrecord.h"
#include "host/document/goodsitem.h"
#include "tests/unit/client/printers.h"

#include <QPointer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(GoodsItem, GivesBackWhatWasSet)
{
    GoodsItem item;
    item.setPosnum(3);
    item.setCode(u"0042"_s);
    item.setName(u"Молоко"_s);
    item.setQuantity(1.234);
    item.setPrice(99.9);
    item.setMinPrice(80);
    item.setSumb(123.28);
    item.setBonusImpactSum(20.5);
    EXPECT_EQ(item.getPosnum(), 3);
    EXPECT_EQ(item.getCode(), u"0042"_s);
    EXPECT_EQ(item.getName(), u"Молоко"_s);
    EXPECT_EQ(item.getQuantity(), 1.234);
    EXPECT_EQ(item.getPrice(), 99.9);
    EXPECT_EQ(item.getMinPrice(), 80.0);
    EXPECT_EQ(item.getSumb(), 123.28);
    EXPECT_EQ(item.getBonusImpactSum(), 20.5);
}

TEST(GoodsItem, ReturnedQuantityIsNullUntilItIsSet)
{
    GoodsItem item;
    EXPECT_TRUE(item.getQuantBack().isNull());
    item.setQuantBack(0.0);
    EXPECT_FALSE(item.getQuantBack().isNull());
    item.setQuantBack(1.5);
    EXPECT_EQ(item.getQuantBack(), QVariant(1.5));
}

TEST(GoodsItem, OwnsAUnitFromTheBeginning)
{
    GoodsItem item;
    ASSERT_NE(item.getTmcUnit(), nullptr);
    EXPECT_FALSE(item.getTmcUnit()->isFractional());
    TmcUnit* const unit = item.getTmcUnit();
    item.setTmcUnit(TmcUnit(u"кг"_s, true));
    EXPECT_EQ(item.getTmcUnit(), unit) << "the unit is the line's own, whatever it is set to";
    EXPECT_TRUE(unit->isFractional());
    EXPECT_EQ(unit->getName(), u"кг"_s);
}

TEST(DocumentCardRecord, NumberIsTheCardsNumber)
{
    const auto card = QSharedPointer<Card>::create(u"7700001"_s);
    const DocumentCardRecord record(card, 15, 9);
    EXPECT_EQ(record.getCard(), card);
    EXPECT_EQ(record.getNumber(), QVariant(u"7700001"_s));
    EXPECT_EQ(record.getLoyaltySystemType(), 15);
    EXPECT_EQ(record.getCodeInternal(), 9);
}

TEST(DocumentCardRecord, WithoutACardTheNumberIsNull)
{
    const DocumentCardRecord record;
    EXPECT_TRUE(record.getCard().isNull());
    EXPECT_FALSE(record.getNumber().isValid());
    EXPECT_EQ(record.getNumber().toString(), QString());
}

TEST(DocumentCardRecord, PointsAreEmptyUntilAPreCheckSetsThem)
{
    DocumentCardRecord record;
    EXPECT_EQ(record.getPointsForSpend(), 0.0);
    EXPECT_TRUE(record.getPointsForEarn().isNull());
    EXPECT_TRUE(record.getBonusBalance().isNull());
    record.setPointsForSpend(12.345);
    record.setPointsForEarn(6.5);
    record.setBonusBalance(1000.25);
    EXPECT_EQ(record.getPointsForSpend(), 12.345);
    EXPECT_EQ(record.getPointsForEarn(), QVariant(6.5));
    EXPECT_EQ(record.getBonusBalance(), QVariant(1000.25));
    EXPECT_EQ(record.getPointsForEarn().typeId(), QMetaType::Double);
}

TEST(DocumentCardRecord, KeepsPointsToEarnThatAreNoNumber)
{
    DocumentCardRecord record;
    record.setPointsForEarn(u"много"_s);
    EXPECT_EQ(record.getPointsForEarn(), QVariant(u"много"_s));
}

TEST(Card, HoldsTheClientThatItIsGiven)
{
    Card card(u"77"_s);
    EXPECT_EQ(card.getNumber(), u"77"_s);
    EXPECT_TRUE(card.getClient().isNull());
    auto client = QSharedPointer<Client>::create();
    client->setName(u" Анна  "_s);
    const QPointer<Client> watched = client.get();
    card.setClient(client);
    client.reset();
    ASSERT_FALSE(card.getClient().isNull());
    EXPECT_EQ(card.getClient()->getName(), u" Анна  "_s) << "the name is stored as it is";
    card.setClient({});
    EXPECT_TRUE(watched.isNull()) << "the card held the last reference";
}

TEST(TmcUnit, IsForPiecesUnlessSaidOtherwise)
{
    EXPECT_FALSE(TmcUnit().isFractional());
    EXPECT_FALSE(TmcUnit(u"шт"_s).isFractional());
    EXPECT_TRUE(TmcUnit(u"кг"_s, true).isFractional());
}

} // namespace
