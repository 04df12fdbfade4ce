// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/core/mockfactory.h"
#include "host/services/currenttime.h"
#include "host/services/restclient.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/printers.h"

#include <QPointer>

#include <gtest/gtest.h>

namespace {

TEST(MockFactory, MakesANewObjectEachTime)
{
    ASSERT_EQ(MockFactory<RestClient>::mocked, nullptr);
    const auto first = MockFactory<RestClient>::create();
    const auto second = MockFactory<RestClient>::create();
    ASSERT_FALSE(first.isNull());
    ASSERT_FALSE(second.isNull());
    EXPECT_NE(first, second);
}

TEST(MockFactory, TheResultOwnsWhatWasMade)
{
    auto client = MockFactory<RestClient>::create();
    const QPointer<RestClient> watched = client.get();
    ASSERT_FALSE(watched.isNull());
    client.reset();
    EXPECT_TRUE(watched.isNull());
}

TEST(MockFactory, ARegisteredDoubleIsHandedOutAndNeverDeleted)
{
    CurrentTime clock;
    const QPointer<CurrentTime> watched = &clock;
    {
        const tests::Registered<CurrentTime> registration(clock);
        auto first = MockFactory<CurrentTime>::create();
        const auto second = MockFactory<CurrentTime>::create();
        EXPECT_EQ(first.get(), &clock);
        EXPECT_EQ(second.get(), &clock);
        first.reset();
        EXPECT_FALSE(watched.isNull());
    }
    EXPECT_FALSE(watched.isNull());
    EXPECT_NE(MockFactory<CurrentTime>::create().get(), &clock);
}

TEST(CurrentTime, TellsTheMillisecondsOfNowOrOfTheDouble)
{
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const qint64 now = CurrentTime::milliseconds();
    EXPECT_LE(before, now);
    EXPECT_LE(now, QDateTime::currentMSecsSinceEpoch());

    ::testing::StrictMock<tests::MockCurrentTime> clock;
    const tests::Registered<CurrentTime> registration(clock);
    const auto then = QDateTime::fromMSecsSinceEpoch(1'709'622'428'123);
    EXPECT_CALL(clock, currentDateTime()).WillOnce(::testing::Return(then));
    EXPECT_EQ(CurrentTime::milliseconds(), 1'709'622'428'123);
}

TEST(CurrentTime, IsTheLocalTimeOfNow)
{
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime now = MockFactory<CurrentTime>::create()->currentDateTime();
    const QDateTime after = QDateTime::currentDateTime();
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
    EXPECT_EQ(now.timeSpec(), Qt::LocalTime);
}

TEST(CurrentTime, GoesOnFromOneMillisecondToTheNext)
{
    CurrentTime clock;
    for (int turn = 0; turn < 3; ++turn) {
        const qint64 told = clock.currentDateTime().toMSecsSinceEpoch();
        while (QDateTime::currentMSecsSinceEpoch() <= told) {
        }
        EXPECT_GT(clock.currentDateTime().toMSecsSinceEpoch(), told);
    }
}

} // namespace
