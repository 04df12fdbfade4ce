// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the tests of the store stand on.

#include "tests/support/postgrescluster.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

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
