// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/slotorder.h"
#include "plugin/orva.h"
#include "tests/client/printers.h"

#include <gtest/gtest.h>
#include <type_traits>

namespace {

/// Reaches the last virtual operation that every QObject has.
class ObjectSlots : public QObject
{
public:
    static auto last() { return contract::slotOf(&ObjectSlots::disconnectNotify); }
};

TEST(SlotOrder, OrvasOperationsFollowThoseOfEveryObject)
{
    ASSERT_TRUE(ObjectSlots::last().has_value());
    const auto slots = contract::slotsOf(
        &Orva::init, &Orva::identifyByCard, &Orva::request, &Orva::commit, &Orva::rollback,
        &Orva::getPointsForSpend, &Orva::setPointsForSpend, &Orva::spendPoints,
        &Orva::restoreLoyaltySystem, &Orva::recalculatePointsForEarn, &Orva::updatePluginData);
    EXPECT_EQ(slots, contract::consecutiveSlots(*ObjectSlots::last() + 1, 11));
}

/// Whether the operation, looked up in Orva, is one that Orva itself declares.
template <typename Result, typename... Arguments>
constexpr bool isOwn(Result (Orva::*)(Arguments...))
{
    return true;
}
template <typename Result, typename... Arguments>
constexpr bool isOwn(Result (Orva::*)(Arguments...) const)
{
    return true;
}
template <typename Other>
constexpr bool isOwn(Other)
{
    return false;
}

TEST(SlotOrder, EveryOtherOperationIsTheHosts)
{
    EXPECT_TRUE(isOwn(&Orva::init));
    EXPECT_TRUE(isOwn(&Orva::updatePluginData));
    EXPECT_FALSE(isOwn(&Orva::requestCommit));
    EXPECT_FALSE(isOwn(&Orva::cancel));
    EXPECT_FALSE(isOwn(&Orva::calculatePointsForEarnByQualifier));
    EXPECT_FALSE(isOwn(&Orva::removeEarnByValutCode));
    EXPECT_FALSE(isOwn(&Orva::removeEarnAfterClose));
    EXPECT_FALSE(isOwn(&Orva::recalculateAllPoints));
    EXPECT_FALSE(isOwn(&Orva::hasPointsForSpend));
    EXPECT_FALSE(isOwn(&Orva::hasPointsForEarn));
    EXPECT_FALSE(isOwn(&Orva::getPointsForEarn));
    EXPECT_FALSE(isOwn(&Orva::hasBonusImpacts));
    EXPECT_FALSE(isOwn(&Orva::getDiscountImpacts));
    EXPECT_FALSE(isOwn(&Orva::getBonusImpactsForSpend));
    EXPECT_FALSE(isOwn(&Orva::getBonusRecords));
    EXPECT_FALSE(isOwn(&Orva::getMessagesToCashier));
    EXPECT_FALSE(isOwn(&Orva::getMessagesToClient));
    EXPECT_FALSE(isOwn(&Orva::getMessagesToClientDisplay));
    EXPECT_FALSE(isOwn(&Orva::getLastErrorString));
    EXPECT_FALSE(isOwn(&Orva::clearLastErrorString));
    EXPECT_FALSE(isOwn(&Orva::recalculatePointsForSpend));
    EXPECT_FALSE(isOwn(&Orva::isAllowPartialPointsSpend));
    EXPECT_FALSE(isOwn(&Orva::clearAfterClose));
    EXPECT_FALSE(isOwn(&Orva::clearLoyaltyData));
    EXPECT_FALSE(isOwn(&Orva::clearData));
    EXPECT_FALSE(isOwn(&Orva::registerLoyaltySystem));
    EXPECT_FALSE(isOwn(&Orva::setOption));
    EXPECT_FALSE(isOwn(&Orva::getStoreDataKey));
    EXPECT_FALSE(isOwn(&Orva::deinit));
}

TEST(SlotOrder, TheBasesAreThoseOfTheContract)
{
    EXPECT_TRUE((std::is_base_of_v<QObject, Orva>));
    EXPECT_TRUE((std::is_base_of_v<BasicLoyaltySystem, Orva>));
    EXPECT_TRUE((std::is_base_of_v<DocumentWatcher, BasicLoyaltySystem>));
    Orva orva;
    EXPECT_EQ(static_cast<void*>(static_cast<QObject*>(&orva)), static_cast<void*>(&orva))
        << "QObject is the primary base";
}

} // namespace
