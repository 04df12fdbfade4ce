// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// How the store stands: figures that are right, that a worker may read, and that stay cheap.

#include "store/books/storestatus.h"
#include "tests/unit/store/storefixture.h"

using namespace Qt::StringLiterals;
using orvastore::Connection;
using orvastore::StoreError;
using orvastore::StoreStatus;
using orvastore::Task;
using poshost::deliverypolicy::Meaning;
using storetest::checkOf;
using storetest::resultOf;
using storetest::settingsFor;

namespace {

class Status : public storetest::StoreTest
{
protected:
    StoreStatus status() { return StoreStatus::of(owner); }

    void handOverOf(const QString& till, const QString& identifier)
    {
        orvastore::HandedCheck check = checkOf(identifier);
        check.till = till;
        orvastore::handOver(owner, check);
        orvastore::noteTill(owner, check.shop, till);
    }
};

} // namespace

TEST_F(Status, anEmptyStoreHasNothing)
{
    const StoreStatus found = status();
    EXPECT_EQ(found.lanes + found.messages + found.parked + found.recentAttempts, 0);
    EXPECT_TRUE(found.tills.isEmpty());
}

TEST_F(Status, countsWhatWaitsAndWhatWasDone)
{
    handOver(u"a"_s, u"card"_s);
    handOver(u"b"_s, u"card"_s);
    handOver(u"c"_s);
    EXPECT_EQ(status().lanes, 2);
    EXPECT_EQ(status().messages, 3);
    EXPECT_FALSE(status().isEstimated);
    std::optional<Task> task = book.claim();
    ASSERT_TRUE(task);
    ASSERT_TRUE(book.finish(*task, done, false).isWritten);
    task = book.claim();
    ASSERT_TRUE(task);
    ASSERT_TRUE(book.finish(*task, resultOf(Meaning::Refused, 400), false).isWritten);
    const StoreStatus found = status();
    EXPECT_EQ(found.messages, 1);
    EXPECT_EQ(found.parked, 1);
    EXPECT_EQ(found.recentAttempts, 2);
    EXPECT_EQ(found.recentDeliveries, 1);
    ASSERT_EQ(found.recentFailures.size(), 1);
    EXPECT_EQ(found.recentFailures.first().meaning, u"Refused"_s);
    EXPECT_EQ(found.recentFailures.first().count, 1);
}

TEST_F(Status, theOldestIsTheFirstOfTheLaneThatHasWaitedForTheLongestTime)
{
    handOver(u"a"_s, u"card"_s);
    handOver(u"b"_s, u"card"_s);
    handOver(u"c"_s);
    sql(u"UPDATE orva.messages SET handed_at = clock_timestamp() - interval '90 s' "
        "WHERE identifier = 'b'"_s);
    EXPECT_LT(status().oldestSeconds, 60) << "b is behind a";
    sql(u"UPDATE orva.messages SET handed_at = clock_timestamp() - interval '100 s' "
        "WHERE identifier = 'a'"_s);
    EXPECT_NEAR(double(status().oldestSeconds), 100, 5);
    const std::optional<Task> task = book.claim();
    ASSERT_EQ(nameOf(task), u"a"_s);
    ASSERT_TRUE(book.finish(*task, done, false).isWritten);
    EXPECT_NEAR(double(status().oldestSeconds), 90, 5) << "a is delivered";
}

TEST_F(Status, whatIsOlderThanItsTimeIsNotRecent)
{
    handOver(u"a"_s);
    const std::optional<Task> task = book.claim();
    ASSERT_TRUE(book.finish(*task, done, false).isWritten);
    sql(u"UPDATE orva.deliveries SET at = clock_timestamp() - interval '301 s'"_s);
    EXPECT_EQ(status().recentDeliveries, 0);
    EXPECT_EQ(status().recentAttempts, 1);
}

TEST_F(Status, knowsWhenEachTillHandedOverLastAndForgetsThoseThatAreGone)
{
    handOverOf(u"one"_s, u"a"_s);
    handOverOf(u"two"_s, u"b"_s);
    handOverOf(u"gone"_s, u"c"_s);
    sql(u"UPDATE orva.handed_last SET at = clock_timestamp() - interval '1 hour' "
        "WHERE till = 'two'"_s);
    sql(u"UPDATE orva.handed_last SET at = clock_timestamp() - interval '31 days' "
        "WHERE till = 'gone'"_s);
    QList<StoreStatus::Till> tills = status().tills;
    ASSERT_EQ(tills.size(), 2);
    EXPECT_EQ(tills.first().name, u"two"_s) << "the longest silent first";
    EXPECT_NEAR(double(tills.first().silentSeconds), 3600, 60);
    EXPECT_LT(tills.last().silentSeconds, 60);
    handOverOf(u"two"_s, u"d"_s);
    tills = status().tills;
    EXPECT_LT(tills.first().silentSeconds + tills.last().silentSeconds, 120);
}

TEST_F(Status, aWorkerMayReadItAndNoCheckAndATillMayNot)
{
    storetest::sharedCluster().sql(
        u"DROP ROLE IF EXISTS eyes; DROP ROLE IF EXISTS blind; CREATE ROLE eyes LOGIN IN ROLE "
        "orva_worker; CREATE ROLE blind LOGIN IN ROLE orva_till"_s);
    handOverOf(u"one"_s, u"a"_s);
    Connection worker(settingsFor(storetest::sharedCluster().connection(u"eyes"_s, database)), {});
    EXPECT_EQ(StoreStatus::of(worker).messages, 1);
    EXPECT_EQ(StoreStatus::of(worker).tills.size(), 1);
    for (const QByteArray& table :
         {QByteArray("checks"), QByteArray("messages"), QByteArray("handed_last")}) {
        EXPECT_THROW(worker.run("SELECT * FROM orva." + table), StoreError) << table.constData();
    }
    EXPECT_THROW(worker.run("SELECT * FROM orva.added_since('attempts', now())"), StoreError);
    Connection till(settingsFor(storetest::sharedCluster().connection(u"blind"_s, database)), {});
    EXPECT_THROW(StoreStatus::of(till), StoreError);
}

/// Lines of different lengths, of which a sample tells enough.
TEST_F(Status, takesTheLinesOfManyLanesFromASample)
{
    sql(u"INSERT INTO orva.lanes (shop, waiting, handed, last_day, head_day) SELECT 'shop', "
        "2 + n % 2, 2 + n % 2, current_date, current_date FROM generate_series(1, 10000) n; "
        "INSERT INTO orva.ready (lane, account, queue) SELECT id, 1, 'Orva' FROM orva.lanes"_s);
    EXPECT_FALSE(status().isEstimated);
    EXPECT_EQ(status().messages, 25'000);
    sql(u"INSERT INTO orva.lanes (shop, waiting, handed, last_day, head_day) SELECT 'shop', "
        "2 + n % 2, 2 + n % 2, current_date, current_date FROM generate_series(1, 30000) n; "
        "INSERT INTO orva.ready (lane, account, queue) SELECT id, 1, 'Orva' FROM orva.lanes "
        "WHERE id > 10000"_s);
    const StoreStatus found = status();
    EXPECT_EQ(found.lanes, 40'000);
    EXPECT_TRUE(found.isEstimated);
    EXPECT_NEAR(double(found.messages), 100'000, 5'000);
}
