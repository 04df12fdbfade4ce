// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/slotorder.h"
#include "contract/subject.h"

#include "host/loyalty/basicloyaltysystem.h"

#include <gtest/gtest.h>

void contract::addSlotPromises() {}

namespace contract {
namespace {

// Plug-ins call these operations by their places in the tables, which a plug-in has built into it.

/// Reaches the last virtual operation that every QObject has.
class ObjectSlots : public QObject
{
public:
    static auto last() { return slotOf(&ObjectSlots::disconnectNotify); }
};

// A destructor takes the first two slots of a class that has no virtual base operation before it.
constexpr std::size_t destructorSlots = 2;

TEST(SlotOrderContract, BasicPluginsOperationsStandInTheOrderOfTheContract)
{
    const auto slots =
        slotsOf(&BasicPlugin::init, &BasicPlugin::deinit, &BasicPlugin::isFeatureMatched,
                &BasicPlugin::setFeature, &BasicPlugin::addHandler, &BasicPlugin::addTrigger,
                &BasicPlugin::disableTriggers, &BasicPlugin::enableTriggers);
    EXPECT_EQ(slots, consecutiveSlots(destructorSlots, 8));
}

TEST(SlotOrderContract, BasicLoyaltySystemsOperationsStandInTheOrderOfTheContract)
{
    using Base = BasicLoyaltySystem;
    using DocumentPointer = QSharedPointer<AbstractDocument>;
    const auto slots = slotsOf(
        &Base::identifyByCard, &Base::request, &Base::requestCommit, &Base::commit, &Base::rollback,
        &Base::cancel, &Base::spendPoints, &Base::recalculatePointsForEarn,
        &Base::calculatePointsForEarnByQualifier, &Base::removeEarnByValutCode,
        &Base::removeEarnAfterClose, &Base::recalculateAllPoints, &Base::hasPointsForSpend,
        &Base::getPointsForSpend, &Base::hasPointsForEarn, &Base::getPointsForEarn,
        &Base::hasBonusImpacts, &Base::getDiscountImpacts, &Base::getBonusImpactsForSpend,
        &Base::getBonusRecords, &Base::getMessagesToCashier, &Base::getMessagesToClient,
        &Base::getMessagesToClientDisplay, &Base::getLastErrorString, &Base::clearLastErrorString,
        &Base::takeForCustomer, &Base::getCardInfo, &Base::restoreLoyaltySystem,
        &Base::isAllowPartialPointsSpend, &Base::setPointsForSpend,
        &Base::getRoundPrecisionForSpend, &Base::setRoundPrecisionForSpend,
        &Base::isAllowInternalDiscount, &Base::useDiscOnChangeWithBonusPayment,
        &Base::fillCardOwnerInfo, &Base::getCardNumber, &Base::getCardMode, &Base::getSlips,
        &Base::cardReplace, &Base::getCardNumberTypeToAddCardInSubtotal, &Base::checkOption,
        &Base::requestInputPointsForSpendByLoyalty, &Base::registerCheck,
        &Base::couponBelongsToSystem, &Base::clearAfterClose, &Base::payCheck,
        &Base::recalculatePointsForSpend, &Base::beforePutoutCheck, &Base::afterPutoutCheck,
        &Base::revealCheck, &Base::init, &Base::deinit, &Base::distributeBonusRecord,
        &Base::getBonusImpactsLimits, &Base::getCard, &Base::hasCard, &Base::registerLoyaltySystem,
        &Base::deregisterLoyaltySystem, &Base::setOption, &Base::getStoreDataKey,
        qOverload<const QString&, const QVariant&>(&Base::setPluginData),
        qOverload<const DocumentPointer&, const QString&, const QVariant&>(&Base::setPluginData),
        qOverload<const QString&>(&Base::getPluginData),
        qOverload<const DocumentPointer&, const QString&>(&Base::getPluginData), &Base::clearData,
        &Base::clearLoyaltyData);
    EXPECT_EQ(slots, consecutiveSlots(destructorSlots, 66));
}

TEST(SlotOrderContract, RestClientsOperationsFollowThoseOfEveryObject)
{
    ASSERT_TRUE(ObjectSlots::last().has_value());
    const auto slots =
        slotsOf(&RestClient::post, &RestClient::getError, &RestClient::getHttpStatusCode,
                &RestClient::getErrorText, &RestClient::getResponse, &RestClient::setTimeout);
    EXPECT_EQ(slots, consecutiveSlots(*ObjectSlots::last() + 1, 6));
}

TEST(SlotOrderContract, RestClientsOwnAdditionsComeAfterTheContract)
{
    ASSERT_TRUE(slotOf(&RestClient::getResponseHeader).has_value());
    EXPECT_GT(*slotOf(&RestClient::getResponseHeader), *slotOf(&RestClient::setTimeout));
}

} // namespace
} // namespace contract
