// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/samples.h"
#include "contract/subject.h"

#include "host/document/discountimpact.h"
#include "host/loyalty/basicloyaltysystem.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

void contract::addLoyaltyPromises() {}

namespace contract {
namespace {

/// A loyalty system that adds nothing to the host's base, with its state in reach.
class PlainSystem : public BasicLoyaltySystem
{
public:
    explicit PlainSystem(int code) { loyaltySystemType = code; }

    void fill()
    {
        pointsForSpend = 10;
        pointsForEarn = 5;
        discountImpacts = {QSharedPointer<DiscountImpact>::create(detail(1, 1))};
        bonusImpactsForSpend = {QSharedPointer<BonusImpact>::create(detail(1, 2))};
        bonusRecords = {DocumentBonusRecord()};
        messagesToCashier = {u"кассиру"_s};
        messagesToClient = {u"клиенту"_s};
        lastError = tr::Tr(u"code"_s, u"текст"_s);
    }
};

TEST(LoyaltySystemContract, ItsGettersAnswerFromItsState)
{
    PlainSystem system(systemCode);
    system.fill();
    EXPECT_EQ(system.getDiscountImpacts().size(), 1);
    EXPECT_EQ(system.getBonusImpactsForSpend().size(), 1);
    EXPECT_EQ(system.getBonusRecords().size(), 1);
    EXPECT_EQ(system.getMessagesToCashier(), QStringList{u"кассиру"_s});
    EXPECT_EQ(system.getMessagesToClient(), QStringList{u"клиенту"_s});
    EXPECT_EQ(system.getLastErrorString().id(), u"code"_s);
    EXPECT_EQ(system.getPointsForEarn(), 5.0);
}

TEST(LoyaltySystemContract, ClearingForgetsPointsImpactsRecordsMessagesAndError)
{
    PlainSystem system(systemCode);
    system.fill();
    system.clearLoyaltyData();
    EXPECT_TRUE(system.getDiscountImpacts().isEmpty());
    EXPECT_TRUE(system.getBonusImpactsForSpend().isEmpty());
    EXPECT_TRUE(system.getBonusRecords().isEmpty());
    EXPECT_TRUE(system.getMessagesToCashier().isEmpty());
    EXPECT_TRUE(system.getMessagesToClient().isEmpty());
    EXPECT_TRUE(system.getLastErrorString().isEmpty());
    EXPECT_EQ(system.getPointsForEarn(), 0.0);
}

TEST(LoyaltySystemContract, AnOptionIsOnOnceItWasSwitchedOn)
{
    PlainSystem system(systemCode);
    constexpr auto option = LoyaltySystemOption::ConfirmThroughQueue;
    EXPECT_EQ(int(option), 16);
    EXPECT_FALSE(system.checkOption(option));
    system.setOption(option, true);
    EXPECT_TRUE(system.checkOption(option));
}

TEST(LoyaltySystemContract, TwoSystemsWithOneCodeCannotBothRegister)
{
    PlainSystem first(4711);
    PlainSystem second(4711);
    EXPECT_TRUE(first.registerLoyaltySystem());
    EXPECT_TRUE(first.registerLoyaltySystem()) << "once more is no error";
    EXPECT_FALSE(second.registerLoyaltySystem());
    EXPECT_TRUE(first.deregisterLoyaltySystem());
    EXPECT_TRUE(second.registerLoyaltySystem());
    EXPECT_TRUE(second.deregisterLoyaltySystem());
}

TEST(LoyaltySystemContract, ASystemThatIsDestroyedIsNotRegisteredAnyMore)
{
    {
        PlainSystem gone(4711);
        EXPECT_TRUE(gone.registerLoyaltySystem());
    }
    PlainSystem next(4711);
    EXPECT_TRUE(next.registerLoyaltySystem());
}

TEST(LoyaltySystemContract, ItsCardAndDataAreThoseOfTheDocumentItWasGiven)
{
    DocumentData data;
    data.cardRecords = {cardRecord(u"77"_s)};
    const auto document = subject().makeDocument(data);
    PlainSystem system(systemCode);
    EXPECT_FALSE(system.hasCard());
    system.setDocument(document);
    ASSERT_TRUE(system.hasCard());
    EXPECT_EQ(system.getCard()->getNumber(), u"77"_s);
    system.setPluginData(u"key"_s, 2);
    EXPECT_EQ(system.getPluginData(u"key"_s), QVariant(2));
    EXPECT_EQ(document->getPluginValue(system.getStoreDataKey(), u"key"_s, 0), QVariant(2));
    system.setDocument({});
    EXPECT_FALSE(system.hasCard());
}

TEST(PlugInContract, AFeatureMatchesOnceItWasSet)
{
    PlainSystem system(systemCode);
    EXPECT_FALSE(system.isFeatureMatched(u"queue"_s));
    system.setFeature(u"queue"_s);
    EXPECT_TRUE(system.isFeatureMatched(u"queue"_s));
}

TEST(PlugInContract, TheBaseStartsAndStopsWithoutFail)
{
    PlainSystem system(4711);
    EXPECT_TRUE(system.init());
    EXPECT_TRUE(system.deinit());
}

} // namespace
} // namespace contract
