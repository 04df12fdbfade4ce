// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/queuebell.h"

#include "host/database/database.h"
#include "host/queue/deliverythread.h"
#include "tests/support/testfolder.h"

#include <QFile>
#include <poll.h>

using namespace Qt::StringLiterals;

namespace {

class QueueBellTest : public ::testing::Test
{
protected:
    /// What the kernel has to tell, it tells at once.
    static bool isRung(const poshost::QueueBell& bell)
    {
        pollfd awaited{bell.descriptor(), POLLIN, 0};
        return ::poll(&awaited, 1, 0) == 1;
    }

    TestFolder folder;
    const QString database = folder.file(u"till.db"_s);
    const QString file = database + u".delivery-bell"_s;
};

} // namespace

TEST_F(QueueBellTest, IsHeardByAllWhoListen)
{
    poshost::QueueBell first(database);
    poshost::QueueBell second(database);
    EXPECT_FALSE(isRung(first));

    poshost::QueueBell::ring(database);
    poshost::QueueBell::ring(database);

    EXPECT_TRUE(isRung(first));
    first.clear();
    EXPECT_FALSE(isRung(first));
    EXPECT_TRUE(isRung(second));
    poshost::QueueBell::ring(database);
    EXPECT_TRUE(isRung(first));
}

TEST_F(QueueBellTest, KnowsWhetherSomebodyListens)
{
    EXPECT_FALSE(poshost::QueueBell::isHeard(database));
    EXPECT_FALSE(QFile::exists(file)) << "asking has made it";
    {
        const poshost::QueueBell first(database);
        EXPECT_TRUE(poshost::QueueBell::isHeard(database));
        {
            const poshost::QueueBell second(database);
        }
        EXPECT_TRUE(poshost::QueueBell::isHeard(database)) << "the first one still does";
    }
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_FALSE(poshost::QueueBell::isHeard(database));
}

TEST_F(QueueBellTest, LeavesNothingWhereNobodyHasListened)
{
    poshost::QueueBell::ring(database);
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(QueueBellTest, IsPutUpAgainWhenItWasRemoved)
{
    poshost::QueueBell bell(database);
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_TRUE(isRung(bell));
    bell.clear();
    EXPECT_FALSE(isRung(bell));

    poshost::QueueBell::ring(database);

    EXPECT_TRUE(isRung(bell));
}

TEST_F(QueueBellTest, IsRungByADeliveryThatEnds)
{
    const poshost::Database opened(database);
    poshost::DeliveryThread thread(database);
    poshost::QueueBell bell(database);
    thread.start();
    EXPECT_FALSE(isRung(bell));

    thread.stop();

    EXPECT_TRUE(isRung(bell));
}
