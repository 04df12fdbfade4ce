// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "contract/slotorder.h"

#include "client/interface.h"

#include <gtest/gtest.h>

using contract::consecutiveSlots;
using contract::slotOf;
using contract::slotsOf;
using orva::Interface;

namespace {

struct Sample
{
    virtual ~Sample() = default;
    virtual void second() {}
    virtual int third(int value) const { return value; }
    void plain() {}
};

} // namespace

TEST(SlotOrder, countsFromTheTwoEntriesOfTheDestructor)
{
    EXPECT_EQ(slotOf(&Sample::second), 2U);
    EXPECT_EQ(slotOf(&Sample::third), 3U);
}

TEST(SlotOrder, findsNoSlotForAnOperationThatIsNotVirtual)
{
    EXPECT_EQ(slotOf(&Sample::plain), std::nullopt);
}

TEST(InterfaceSlots, standInTheOrderOfTheContract)
{
    const auto found = slotsOf(
        &Interface::precheck, &Interface::getBackBySaleRequest, &Interface::getSaleRequest,
        &Interface::setUrl, &Interface::setCashData, &Interface::setTimeout,
        &Interface::setAuthData, &Interface::getLastResponse, &Interface::generateBonusImpacts,
        &Interface::sendRequest, &Interface::getRequestPayload, &Interface::getClient,
        &Interface::getBalance, &Interface::getPointsForSpend, &Interface::getPointsForEarn,
        &Interface::getDiscountImpacts, &Interface::insertUsedImpacts, &Interface::insertPayments,
        &Interface::getRequestItems, &Interface::getMessages, &Interface::getBonusRecords,
        &Interface::getUrl, &Interface::createOfflineRequestMessage);
    EXPECT_EQ(found, consecutiveSlots(2, 23));
}

TEST(InterfaceSlots, settingTheLastResponseAndThrowingForAFieldHaveNone)
{
    static_assert(std::is_same_v<decltype(&Interface::throwIfNoField), void (*)(const QString&)>);
    EXPECT_EQ(slotOf(&Interface::setLastResponse), std::nullopt);
}
