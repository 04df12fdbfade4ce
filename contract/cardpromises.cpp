// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/samples.h"
#include "contract/subject.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

void contract::addCardPromises() {}

namespace contract {
namespace {

TEST(CardContract, KeepsItsNumberAndTheOwnerOnceNamed)
{
    Card card(u"2200000000017"_s);
    EXPECT_EQ(card.getNumber(), u"2200000000017"_s);
    EXPECT_TRUE(card.getClient().isNull());
    const auto client = QSharedPointer<Client>::create();
    client->setName(u"Анна Иванова"_s);
    card.setClient(client);
    EXPECT_EQ(card.getClient(), client);
    EXPECT_EQ(card.getClient()->getName(), u"Анна Иванова"_s);
}

TEST(CardContract, ARecordKnowsItsCardItsSystemAndItsCode)
{
    const auto card = QSharedPointer<Card>::create(u"77"_s);
    const DocumentCardRecord record(card, systemCode, 7);
    EXPECT_EQ(record.getCard(), card);
    EXPECT_EQ(record.getNumber().toString(), u"77"_s);
    EXPECT_EQ(record.getLoyaltySystemType(), systemCode);
    EXPECT_EQ(record.getCodeInternal(), 7);
}

TEST(CardContract, ARecordWithoutACardHasNoNumber)
{
    EXPECT_TRUE(DocumentCardRecord().getNumber().isNull());
    EXPECT_TRUE(DocumentCardRecord().getCard().isNull());
}

TEST(CardContract, PointsAndBalanceAreNullBeforeAPreCheckSetsThem)
{
    DocumentCardRecord record;
    EXPECT_EQ(record.getPointsForSpend(), 0.0);
    EXPECT_TRUE(record.getPointsForEarn().isNull());
    EXPECT_TRUE(record.getBonusBalance().isNull());
    record.setPointsForSpend(100.5);
    record.setPointsForEarn(3.25);
    record.setBonusBalance(250.0);
    EXPECT_EQ(record.getPointsForSpend(), 100.5);
    EXPECT_EQ(record.getPointsForEarn(), QVariant(3.25));
    EXPECT_EQ(record.getBonusBalance(), QVariant(250.0));
}

} // namespace
} // namespace contract
