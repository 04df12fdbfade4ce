// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/subject.h"

#include <gtest/gtest.h>

void contract::addFactoryPromises() {}

namespace contract {
namespace {

/// Counts how often a double is deleted.
class CountingClock : public CurrentTime
{
public:
    explicit CountingClock(int& counter) : deleted(counter) {}
    ~CountingClock() override { ++deleted; }

private:
    int& deleted;
};

TEST(FactoryContract, MakesANewObjectAtEveryCall)
{
    ASSERT_EQ(MockFactory<RestClient>::mocked, nullptr);
    const auto one = MockFactory<RestClient>::create();
    const auto two = MockFactory<RestClient>::create();
    ASSERT_FALSE(one.isNull());
    ASSERT_FALSE(two.isNull());
    EXPECT_NE(one, two);
}

TEST(FactoryContract, HandsOutTheRegisteredDoubleAndNeverDeletesIt)
{
    CurrentTime* const before = MockFactory<CurrentTime>::mocked;
    int deleted = 0;
    {
        CountingClock clock(deleted);
        MockFactory<CurrentTime>::mocked = &clock;
        EXPECT_EQ(MockFactory<CurrentTime>::create().data(), &clock);
        MockFactory<CurrentTime>::create().clear();
        EXPECT_EQ(deleted, 0);
        MockFactory<CurrentTime>::mocked = before;
    }
    EXPECT_EQ(deleted, 1);
}

TEST(FactoryContract, APlugInMaySetAServiceThatNobodyHasMadeYet)
{
    Session* const before = Singleton<Session>::instance;
    Session session;
    Singleton<Session>::instance = &session;
    EXPECT_EQ(Singleton<Session>::instance, &session);
    Singleton<Session>::instance = before;
}

} // namespace
} // namespace contract
