// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/slotorder.h"
#include "plugin/orva.h"
#include "tests/unit/client/printers.h"

#include <cstring>
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

/// The table of virtual operations of an object's part of that class; the part stands at its start.
template <typename Part>
const void* const* tableOf(const Part& part)
{
    const void* const* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(&part), sizeof(table));
    return table;
}

/// The slots of a part's table, from the first behind its destructor to the last one, that hold
/// something else in Orva than in a loyalty system that is nothing but the host's base.
template <typename Part>
std::vector<std::optional<std::size_t>> ownSlots(std::optional<std::size_t> last)
{
    constexpr std::size_t firstOperation = 2;
    const BasicLoyaltySystem base;
    const Orva orva;
    const void* const* const theirs = tableOf<Part>(base);
    const void* const* const ours = tableOf<Part>(orva);
    std::vector<std::optional<std::size_t>> own;
    for (std::size_t slot = firstOperation; slot <= last.value_or(0); ++slot) {
        if (theirs[slot] != ours[slot]) {
            own.emplace_back(slot);
        }
    }
    return own;
}

TEST(SlotOrder, EveryOtherOperationIsTheHosts)
{
    using Base = BasicLoyaltySystem;
    const auto last = contract::slotOf(&Base::clearLoyaltyData);
    ASSERT_EQ(last, 67U) << "of the 66 operations";
    EXPECT_EQ(ownSlots<Base>(last),
              contract::slotsOf(
                  &Base::identifyByCard, &Base::request, &Base::commit, &Base::rollback,
                  &Base::spendPoints, &Base::recalculatePointsForEarn, &Base::getPointsForSpend,
                  &Base::restoreLoyaltySystem, &Base::setPointsForSpend, &Base::init));
    const auto lastOfPlugins = contract::slotOf(&BasicPlugin::enableTriggers);
    ASSERT_EQ(lastOfPlugins, 9U) << "of the 8 operations";
    EXPECT_EQ(ownSlots<BasicPlugin>(lastOfPlugins), contract::slotsOf(&BasicPlugin::init));
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
