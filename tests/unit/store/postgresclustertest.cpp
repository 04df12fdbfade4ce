// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the tests of the store stand on.

#include "tests/support/postgrescluster.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Every segment of shared memory that the machine has, as the kernel lists them.
QByteArray segments()
{
    QFile file(u"/proc/sysvipc/shm"_s);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll().simplified();
}

} // namespace

TEST(PostgresCluster, syncsWhatItCommitsAndKeepsItOverAKill)
{
    PostgresCluster cluster;
    EXPECT_EQ(cluster.sql(u"SHOW fsync"_s), u"on"_s);
    cluster.sql(u"CREATE TABLE kept(v int); INSERT INTO kept VALUES (7)"_s);
    cluster.kill();
    cluster.start();
    EXPECT_EQ(cluster.sql(u"SELECT v FROM kept"_s), u"7"_s);
}

TEST(PostgresCluster, aStandbyFollowsAndTakesOver)
{
    PostgresCluster primary;
    const std::unique_ptr<PostgresCluster> standby = primary.makeStandby(u"second"_s);
    primary.set(u"synchronous_standby_names"_s, u"second"_s);
    ASSERT_TRUE(primary.waitFor(
        u"SELECT count(*) FROM pg_stat_replication WHERE sync_state = 'sync'"_s, u"1"_s));
    primary.sql(u"CREATE TABLE kept(v int); INSERT INTO kept VALUES (7)"_s);
    primary.kill();
    standby->promote();
    EXPECT_EQ(standby->sql(u"SELECT v FROM kept"_s), u"7"_s);
}

TEST(PostgresCluster, leavesNothingInSharedMemory)
{
    QByteArray segment;
    {
        const PostgresCluster cluster;
        EXPECT_EQ(cluster.sql(u"SHOW dynamic_shared_memory_type"_s), u"mmap"_s);
        QFile file(cluster.dataFolder() + u"/postmaster.pid"_s);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        segment = ' ' + file.readAll().split('\n').value(6).simplified() + ' ';
        ASSERT_TRUE(segments().contains(segment)) << segment.constData();
    }
    EXPECT_FALSE(segments().contains(segment)) << segment.constData();
}
