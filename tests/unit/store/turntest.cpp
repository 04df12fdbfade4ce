// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// When the hands of a worker may send, and when one works ahead of the other.

#include "store/worker/turn.h"

#include <QElapsedTimer>

#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <thread>

using namespace std::chrono_literals;
using orvastore::Turn;

namespace {

constexpr bool first = false;
constexpr bool ahead = true;

class TurnTest : public ::testing::Test
{
protected:
    /// Whoever waits, on a thread of its own.
    std::future<bool> entering(int failuresBefore)
    {
        return std::async(std::launch::async,
                          [this, failuresBefore] { return turn.enter(failuresBefore); });
    }

    std::atomic<bool> isOver = false;
    Turn turn{[this] { return isOver.load(); }};
};

} // namespace

TEST_F(TurnTest, atRestTheFirstHandAloneLooksForWork)
{
    EXPECT_TRUE(turn.hasChance(first));
    EXPECT_FALSE(turn.hasChance(ahead));
}

TEST_F(TurnTest, theOtherHandWorksAheadOfShortRequests)
{
    ASSERT_TRUE(turn.enter(0));
    EXPECT_TRUE(turn.hasChance(first));
    EXPECT_TRUE(turn.hasChance(ahead));
    std::this_thread::sleep_for(Turn::shortRequest + 10ms);
    EXPECT_FALSE(turn.hasChance(ahead)) << "this one is not short";
    turn.leave(false, Turn::shortRequest);
    EXPECT_FALSE(turn.hasChance(ahead));
    ASSERT_TRUE(turn.enter(0));
    EXPECT_FALSE(turn.hasChance(first)) << "nor was the one before";
    turn.leave(false, 1ms);
    ASSERT_TRUE(turn.enter(0));
    EXPECT_TRUE(turn.hasChance(ahead));
}

TEST_F(TurnTest, isOneHandsAndThenTheOthers)
{
    ASSERT_TRUE(turn.enter(0));
    std::future<bool> second = entering(0);
    EXPECT_EQ(second.wait_for(50ms), std::future_status::timeout);
    turn.leave(false, 1ms);
    EXPECT_TRUE(second.get());
}

TEST_F(TurnTest, isGivenUpAfterSomePatience)
{
    ASSERT_TRUE(turn.enter(0));
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(turn.enter(0));
    EXPECT_GE(timer.elapsed(), Turn::patience.count());
}

TEST_F(TurnTest, isNotTakenBehindAFailure)
{
    ASSERT_TRUE(turn.enter(0));
    std::future<bool> second = entering(turn.failures());
    turn.leave(true, 1ms);
    EXPECT_FALSE(second.get());
    EXPECT_EQ(turn.failures(), 1);
    EXPECT_FALSE(turn.enter(0));
    EXPECT_TRUE(turn.enter(1));
}

TEST_F(TurnTest, nobodyWaitsBeyondTheEnd)
{
    std::future<bool> waiting =
        std::async(std::launch::async, [this] { return turn.awaitChance(ahead); });
    EXPECT_EQ(waiting.wait_for(50ms), std::future_status::timeout);
    isOver = true;
    EXPECT_FALSE(waiting.get());
}
