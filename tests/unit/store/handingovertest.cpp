// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Handing over, and each way known in which a store can lose or double what it was given.

#include "tests/unit/store/storefixture.h"

#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using orvastore::HandedCheck;
using orvastore::PostgresStore;
using orvastore::StoreEnd;
using orvastore::Task;
using orvastore::Value;
using storetest::checkOf;
using storetest::settingsFor;

namespace {

class HandingOver : public storetest::StoreTest
{
protected:
    QString counts() const
    {
        return sql(u"SELECT (SELECT count(*) FROM orva.checks), "
                   "(SELECT count(*) FROM orva.messages), (SELECT count(*) FROM orva.lanes), "
                   "(SELECT coalesce(sum(waiting), 0) FROM orva.lanes), "
                   "(SELECT count(*) FROM orva.ready)"_s);
    }
};

/// A primary whose commits wait for a standby, and that standby.
class Pair : public ::testing::Test
{
protected:
    Pair()
    {
        orvastore::Connection owner(settingsFor(primary.connection()), {});
        orvastore::storeschema::migrate(owner);
        standby = primary.makeStandby(u"second"_s);
        primary.set(u"synchronous_standby_names"_s, u"second"_s);
        EXPECT_TRUE(primary.waitFor(
            u"SELECT count(*) FROM pg_stat_replication WHERE sync_state = 'sync'"_s, u"1"_s));
    }

    PostgresCluster primary;
    std::unique_ptr<PostgresCluster> standby;
};

} // namespace

TEST_F(HandingOver, letsNoCheckPassAnotherForARefusalThatPasses)
{
    const QList<std::pair<QString, StoreEnd>> refusals{{u"57P01"_s, StoreEnd::Unknown},
                                                       {u"53100"_s, StoreEnd::Unreachable},
                                                       {u"40001"_s, StoreEnd::Unreachable},
                                                       {u"25006"_s, StoreEnd::Unreachable},
                                                       {u"42501"_s, StoreEnd::Refused}};
    for (const auto& [state, end] : refusals) {
        sql(u"CREATE OR REPLACE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN "
            "IF NEW.identifier = ''a'' THEN RAISE EXCEPTION ''no'' USING ERRCODE = ''%1''; END IF; "
            "RETURN NEW; END'"_s.arg(state));
        sql(u"DROP TRIGGER IF EXISTS refuse ON orva.checks"_s);
        sql(u"CREATE TRIGGER refuse BEFORE INSERT ON orva.checks FOR EACH ROW "
            "EXECUTE FUNCTION refuse()"_s);
        PostgresStore store;
        store.open(settingsFor(connection));
        const auto results = store.handOver({checkOf(u"a"_s, u"card"_s), checkOf(u"b"_s)});
        ASSERT_EQ(results.size(), 2);
        EXPECT_EQ(results.first().end, end) << qPrintable(state);
        EXPECT_EQ(results.last().end,
                  end == StoreEnd::Refused ? StoreEnd::Done : StoreEnd::Unreachable)
            << qPrintable(state);
    }
}

TEST_F(HandingOver, isSafeToRepeat)
{
    PostgresStore store;
    store.open(settingsFor(connection));
    const QList<HandedCheck> checks{checkOf(u"a"_s, u"card"_s), checkOf(u"b"_s)};
    for (int i = 0; i < 3; ++i) {
        const auto results = store.handOver(checks);
        ASSERT_EQ(results.size(), 2);
        EXPECT_EQ(results.at(0).end, StoreEnd::Done) << qPrintable(results.at(0).error.ru());
        EXPECT_EQ(results.at(1).end, StoreEnd::Done);
    }
    EXPECT_EQ(counts(), u"2|2|2|2|2"_s);
}

TEST_F(HandingOver, keepsSeveralMessagesOfACheckInOrderOrNone)
{
    HandedCheck check = checkOf(u"a"_s);
    check.messages.append(check.messages.first());
    check.messages.last().payload = "<check>second</check>";
    orvastore::handOver(owner, check);
    orvastore::handOver(owner, check);
    EXPECT_EQ(counts(), u"1|2|1|2|1"_s);
    const std::optional<Task> one = book.claim();
    ASSERT_EQ(nameOf(one), u"a"_s);
    EXPECT_EQ(nameOf(book.finish(*one, done).task), u"second"_s);

    HandedCheck broken = checkOf(u"b"_s);
    broken.messages.append(broken.messages.first());
    broken.messages.last().queue = u"unwanted"_s;
    sql(u"ALTER TABLE orva.messages ADD CHECK (queue <> 'unwanted')"_s);
    EXPECT_THROW(orvastore::handOver(owner, broken), orvastore::StoreError);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.checks WHERE identifier = 'b'"_s), u"0"_s);
}

TEST_F(HandingOver, twoAtTheSameMomentAreOne)
{
    std::vector<std::thread> tills;
    for (int i = 0; i < 4; ++i) {
        tills.emplace_back([&] {
            PostgresStore store;
            store.open(settingsFor(connection));
            for (int n = 0; n < 25; ++n) {
                EXPECT_EQ(
                    store.handOver({checkOf(u"c%1"_s.arg(n), u"card %1"_s.arg(n % 3))}).first().end,
                    StoreEnd::Done);
            }
        });
    }
    for (std::thread& till : tills) {
        till.join();
    }
    EXPECT_EQ(counts(), u"25|25|3|25|3"_s);
}

/// Numbers are given before commits are seen: without the lane's row locked first, a message that
/// commits late would stand behind what was passed already.
TEST_F(HandingOver, aCommitThatComesLateIsNotPassedOver)
{
    handOver(u"a"_s, u"card"_s);
    orvastore::Connection late(settingsFor(connection), {});
    late.runAll("BEGIN");
    late.run("SELECT orva.add_message((SELECT id FROM orva.lanes), 'shop', 'late', '', 'Orva', '', "
             "'{}', '{\"0\":\"http://h/\"}', '<check>late</check>', '', 1, 0, 0, 0)");
    std::thread between([&] { handOver(u"c"_s, u"card"_s); });
    ASSERT_TRUE(storetest::sharedCluster().waitFor(
        u"SELECT count(*) FROM pg_locks WHERE NOT granted"_s, u"1"_s))
        << "who comes second into the lane waits for the first";
    late.runAll("COMMIT");
    between.join();
    std::optional<Task> task = book.claim();
    QStringList order;
    while (task) {
        order.append(nameOf(task));
        task = book.finish(*task, done).task;
    }
    EXPECT_EQ(order, QStringList({u"a"_s, u"late"_s, u"c"_s}));
}

TEST_F(HandingOver, aLaneThatBecomesReadyBehindTheReadersPlaceIsFoundByTheSweep)
{
    orvastore::Connection late(settingsFor(connection), {});
    late.runAll("BEGIN");
    orvastore::handOver(late, checkOf(u"late"_s)); // has its position, and is not seen yet
    handOver(u"a"_s);
    handOver(u"b"_s);
    const std::optional<Task> a = book.claim();
    ASSERT_EQ(nameOf(a), u"a"_s);
    late.runAll("COMMIT");
    const std::optional<Task> b = book.finish(*a, done).task;
    ASSERT_EQ(nameOf(b), u"b"_s);
    std::optional<Task> task = book.finish(*b, done).task;
    task = task ? task : book.claim();
    EXPECT_EQ(nameOf(task), u"late"_s);
}

/// Handing over and finishing agree by the lane's row who makes the next message ready.
TEST_F(HandingOver, finishingAndHandingOverAtTheSameMomentStrandNothing)
{
    constexpr int rounds = 60;
    handOver(u"0"_s, u"card"_s);
    std::thread till([&] {
        orvastore::Connection own(settingsFor(connection), {});
        for (int n = 1; n < rounds; ++n) {
            orvastore::handOver(own, checkOf(QString::number(n), u"card"_s));
        }
    });
    int delivered = 0;
    const QDeadlineTimer deadline(30'000);
    std::optional<Task> task;
    while (delivered < rounds && !deadline.hasExpired()) {
        task = task ? book.finish(*task, done).task : book.claim();
        delivered += task ? 1 : 0;
    }
    till.join();
    EXPECT_EQ(delivered, rounds);
}

TEST_F(HandingOver, waitsForNoRequestThatIsUnderWayInItsLane)
{
    handOver(u"a"_s, u"card"_s);
    ASSERT_TRUE(book.claim());
    PostgresStore store;
    store.open(settingsFor(connection, 1));
    EXPECT_EQ(store.handOver({checkOf(u"b"_s, u"card"_s)}).first().end, StoreEnd::Done);
    EXPECT_EQ(sql(u"SELECT count(*) FROM pg_stat_activity WHERE state LIKE 'idle in tr%' AND "
                  "datname = current_database()"_s),
              u"0"_s)
        << "no transaction is open while a server is waited for";
}

TEST_F(HandingOver, claimingLocksNoMoreLanesThanItGives)
{
    for (int i = 0; i < 20; ++i) {
        handOver(QString::number(i));
    }
    ASSERT_TRUE(book.claim());
    EXPECT_EQ(sql(u"SELECT count(*) FROM pg_locks WHERE locktype = 'advisory' AND database = "
                  "(SELECT oid FROM pg_database WHERE datname = current_database())"_s),
              u"1"_s);
}

TEST_F(HandingOver, checksWithoutACardGoBesideEachOtherAndTheirLanesGo)
{
    handOver(u"a"_s);
    handOver(u"b"_s);
    const std::optional<Task> a = book.claim();
    const std::optional<Task> b = other.claim();
    ASSERT_TRUE(a && b);
    EXPECT_TRUE(book.finish(*a, done).isWritten);
    EXPECT_TRUE(other.finish(*b, done).isWritten);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.lanes"_s), u"0"_s);
}

TEST_F(HandingOver, keepsOnlyADigestOfTheLanesName)
{
    handOver(u"a"_s, u"2400000012345"_s);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.lanes WHERE position('2400000012345'::bytea IN name) "
                  "> 0"_s),
              u"0"_s);
}

/// The wait for the standby is cut off: the commit stands here, and a promoted standby lacks it.
TEST_F(Pair, aCommitWhoseWaitWasCancelledIsUnknownAndItsRepetitionWaits)
{
    standby->freeze();
    PostgresStore store;
    store.open(settingsFor(primary.connection(), 15));
    orvastore::StoreResult result;
    std::thread till([&] { result = store.handOver({checkOf(u"a"_s)}).first(); });
    ASSERT_TRUE(primary.waitFor(
        u"SELECT count(*) FROM pg_stat_activity WHERE wait_event = 'SyncRep'"_s, u"1"_s));
    primary.sql(u"SELECT pg_cancel_backend(pid) FROM pg_stat_activity WHERE wait_event = "
                "'SyncRep'"_s);
    till.join();
    EXPECT_EQ(result.end, StoreEnd::Unknown) << qPrintable(result.error.ru());
    EXPECT_EQ(primary.sql(u"SELECT count(*) FROM orva.checks"_s), u"1"_s) << "it is here alone";

    PostgresStore impatient;
    impatient.open(settingsFor(primary.connection(), 1));
    EXPECT_EQ(impatient.handOver({checkOf(u"a"_s)}).first().end, StoreEnd::Unknown)
        << "a repetition that finds the check here must wait for the standby as well";
    standby->thaw();
    PostgresStore patient;
    patient.open(settingsFor(primary.connection(), 15));
    EXPECT_EQ(patient.handOver({checkOf(u"a"_s)}).first().end, StoreEnd::Done);
    primary.kill();
    standby->promote();
    EXPECT_EQ(standby->sql(u"SELECT count(*) FROM orva.messages"_s), u"1"_s);
}

TEST_F(Pair, aFormerPrimaryThatComesBackGivesOutNothingAndTakesNothing)
{
    const QString both = primary.connectionBefore(*standby);
    orvastore::Connection till(settingsFor(both, 3), {});
    orvastore::handOver(till, checkOf(u"a"_s));
    primary.freeze();
    standby->promote();
    primary.thaw();
    // it stands first in the string and takes connections, and knows nothing of the other one
    orvastore::Connection connection(settingsFor(both, 2), {});
    orvastore::DeliveryBook book(connection, u"worker"_s, 1);
    EXPECT_THROW(book.claim(), orvastore::StoreError) << "an attempt cannot be committed there";
    const std::optional<Task> task = book.claim();
    ASSERT_TRUE(task) << "the next try finds the other one";
    EXPECT_TRUE(book.finish(*task, storetest::resultOf(poshost::deliverypolicy::Meaning::StepDone))
                    .isWritten);
    EXPECT_EQ(standby->sql(u"SELECT count(*) FROM orva.deliveries"_s), u"1"_s);
}
