// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/loyaltysystems.h"
#include "host/loyalty/basicloyaltysystem.h"
#include "tests/unit/client/printers.h"

#include <gtest/gtest.h>

namespace {

class CodedSystem : public BasicLoyaltySystem
{
public:
    explicit CodedSystem(int type) { loyaltySystemType = type; }
};

TEST(LoyaltySystems, FindsARegisteredSystemByItsCode)
{
    CodedSystem third(3);
    CodedSystem fifteenth(15);
    EXPECT_EQ(LoyaltySystems::find(3), nullptr);
    EXPECT_TRUE(third.registerLoyaltySystem());
    EXPECT_TRUE(fifteenth.registerLoyaltySystem());
    EXPECT_EQ(LoyaltySystems::find(3), &third);
    EXPECT_EQ(LoyaltySystems::find(15), &fifteenth);
    EXPECT_EQ(LoyaltySystems::find(4), nullptr);
}

TEST(LoyaltySystems, RefusesASecondSystemOfOneCode)
{
    CodedSystem first(15);
    CodedSystem second(15);
    EXPECT_TRUE(first.registerLoyaltySystem());
    EXPECT_FALSE(second.registerLoyaltySystem());
    EXPECT_EQ(LoyaltySystems::find(15), &first);
}

TEST(LoyaltySystems, TakesTheSameSystemAgainWithoutKeepingItTwice)
{
    CodedSystem system(15);
    EXPECT_TRUE(LoyaltySystems::add(&system));
    EXPECT_TRUE(LoyaltySystems::add(&system));
    EXPECT_TRUE(LoyaltySystems::remove(&system));
    EXPECT_EQ(LoyaltySystems::find(15), nullptr);
    EXPECT_FALSE(LoyaltySystems::remove(&system));
}

TEST(LoyaltySystems, TheCodeIsFreeAfterDeregistration)
{
    CodedSystem first(15);
    CodedSystem second(15);
    EXPECT_FALSE(first.deregisterLoyaltySystem()) << "it was never registered";
    EXPECT_TRUE(first.registerLoyaltySystem());
    EXPECT_TRUE(first.deregisterLoyaltySystem());
    EXPECT_TRUE(second.registerLoyaltySystem());
    EXPECT_EQ(LoyaltySystems::find(15), &second);
}

TEST(LoyaltySystems, AnObjectThatGoesAwayTakesItselfOut)
{
    {
        CodedSystem system(15);
        EXPECT_TRUE(system.registerLoyaltySystem());
    }
    EXPECT_EQ(LoyaltySystems::find(15), nullptr);
}

TEST(LoyaltySystems, ASystemThatWasRefusedLeavesTheOtherRegistered)
{
    CodedSystem first(15);
    EXPECT_TRUE(first.registerLoyaltySystem());
    {
        CodedSystem second(15);
        EXPECT_FALSE(second.registerLoyaltySystem());
    }
    EXPECT_EQ(LoyaltySystems::find(15), &first);
}

TEST(BasicLoyaltySystem, InitRegistersAndDeinitTakesOut)
{
    CodedSystem system(15);
    CodedSystem other(15);
    EXPECT_TRUE(system.init());
    EXPECT_EQ(LoyaltySystems::find(15), &system);
    EXPECT_FALSE(other.init());
    EXPECT_TRUE(system.deinit());
    EXPECT_EQ(LoyaltySystems::find(15), nullptr);
    EXPECT_FALSE(system.deinit());
}

} // namespace
