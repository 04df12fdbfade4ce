// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Versions, days, rights, and what is wrong with a store.

#include "tests/unit/store/storefixture.h"

#include <QElapsedTimer>

#include <thread>

using namespace Qt::StringLiterals;
using orvastore::Connection;
using orvastore::PostgresStore;
using orvastore::StoreEnd;
using orvastore::StoreError;
using orvastore::Task;
using orvastore::Value;
using storetest::checkOf;
using storetest::settingsFor;

namespace {

class Upkeep : public storetest::StoreTest
{
protected:
    /// What a login is told when it runs this; empty when it is allowed.
    QString refusalOf(const QString& user, const QByteArray& command) const
    {
        Connection till(settingsFor(storetest::sharedCluster().connection(user, database)), {});
        try {
            till.run(command);
            return {};
        } catch (const StoreError& error) {
            return QString::fromLatin1(error.state());
        }
    }

    void makeTill(const QString& role, const QString& shop)
    {
        storetest::sharedCluster().sql(u"DROP ROLE IF EXISTS %1; CREATE ROLE %1 LOGIN"_s.arg(role));
        orvastore::storeschema::admitTill(owner, role, shop);
    }

    StoreEnd endOf(const orvastore::StoreSettings& settings, QString* words = nullptr) const
    {
        PostgresStore store;
        store.open(settings);
        const auto result = store.handOver({checkOf(u"z"_s)}).first();
        if (words != nullptr) {
            *words = result.error.in(poshost::Language::English);
        }
        return result.end;
    }
};

} // namespace

TEST_F(Upkeep, aTillAddsAndReadsItsShopsOwnAndNothingElse)
{
    makeTill(u"till_a"_s, u"shop"_s);
    makeTill(u"till_b"_s, u"other"_s);
    handOver(u"owner's"_s);
    const auto settings = settingsFor(storetest::sharedCluster().connection(u"till_a"_s, database));
    QString words;
    EXPECT_EQ(endOf(settings, &words), StoreEnd::Done) << qPrintable(words);
    EXPECT_EQ(
        endOf(settingsFor(storetest::sharedCluster().connection(u"till_b"_s, database)), &words),
        StoreEnd::Refused)
        << "the check is of another shop";

    const auto seenBy = [&](const QString& role, const QByteArray& table) {
        Connection till(settingsFor(storetest::sharedCluster().connection(role, database)), {});
        return till.run("SELECT count(*) FROM orva." + table).number(0, 0);
    };
    for (const QByteArray& table : {QByteArray("checks"), QByteArray("messages")}) {
        EXPECT_EQ(seenBy(u"till_a"_s, table), 2) << table.constData();
        EXPECT_EQ(seenBy(u"till_b"_s, table), 0) << table.constData();
    }
    const QString today = sql(u"SELECT to_char(current_date, 'YYYYMMDD')"_s);
    const QList<QByteArray> forbidden{
        "UPDATE orva.checks SET content = ''",
        "DELETE FROM orva.messages",
        "INSERT INTO orva.deliveries (day, message, shop, status) VALUES (now(), 1, 'shop', 200)",
        "SELECT credentials FROM orva.accounts",
        "SELECT * FROM orva.lanes",
        "SELECT * FROM orva.messages_" + today.toLatin1(),
        "SELECT * FROM orva.undelivered",
        "SELECT * FROM orva.claim(0, 'till')",
        "SELECT orva.settle(1)",
        "SELECT orva.add_message(1, 'shop', '', '', '', '', '', '', '', '', 1, 0, 0, 0)",
        "SELECT orva.hand_over_more('shop', 'z', '', 'Orva', '', '{}', '{}', '', '', 1, 0, 0, 0)",
        "INSERT INTO orva.tills (role, shop) VALUES ('till_a', 'other')"};
    for (const QByteArray& command : forbidden) {
        EXPECT_EQ(refusalOf(u"till_a"_s, command), u"42501"_s) << command.constData();
    }
}

TEST_F(Upkeep, aDayIsDroppedWhenAllOfItIsDeliveredAndOldAndNotBefore)
{
    sql(u"DO $$ DECLARE t text; BEGIN FOREACH t IN ARRAY ARRAY['checks','messages','attempts',"
        "'outcomes','deliveries'] LOOP EXECUTE format('CREATE TABLE orva.%s_20200101 PARTITION OF "
        "orva.%s FOR VALUES FROM (''2020-01-01'') TO (''2020-01-02'')', t, t); END LOOP; END $$"_s);
    handOver(u"old"_s, u"card"_s);
    sql(u"UPDATE orva.messages SET day = '2020-01-01'; UPDATE orva.lanes SET head_day = "
        "'2020-01-01'"_s);
    const auto drop = [&] { return owner.run("SELECT orva.drop_days(30)").number(0, 0); };
    EXPECT_EQ(drop(), 0) << "it waits to be delivered";
    const std::optional<Task> task = book.claim();
    ASSERT_EQ(nameOf(task), u"old"_s);
    EXPECT_EQ(drop(), 0);
    EXPECT_TRUE(book.finish(*task, done).isWritten);
    EXPECT_EQ(drop(), 1);
    EXPECT_EQ(drop(), 0);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.messages"_s), u"0"_s);
    handOver(u"new"_s, u"card"_s);
    EXPECT_EQ(nameOf(book.claim()), u"new"_s);
}

TEST_F(Upkeep, whetherADayIsDoneIsSeenFromWhatWaitsAndNotFromTheDay)
{
    constexpr int delivered = 3000;
    handOver(u"waits"_s, u"card"_s);
    sql(u"INSERT INTO orva.messages (day, lane, number, id, shop, identifier, sale, account, "
        u"queue, "
        "extra, headers, urls, payload, steps, steps_done, attempts, step_attempts) SELECT "
        "current_date - 90, 1000 + n, 1, 1000 + n, 'shop', 'c' || n, '', 1, 'Orva', '', '', '', "
        "'', "
        "1, 0, 0, 0 FROM generate_series(1, %1) n; INSERT INTO orva.deliveries (day, message, "
        "shop, "
        "status) SELECT day, id, shop, 200 FROM orva.messages WHERE id > 1000"_s.arg(delivered));
    Connection asWorker(settingsFor(connection), {.byIndexes = true});
    // the first call reads the catalogue as well
    EXPECT_TRUE(asWorker.run("SELECT orva.is_day_done(current_date - 90)").isTrue(0, 0));
    const orvastore::Result plan = asWorker.run(
        "EXPLAIN (ANALYZE, BUFFERS, FORMAT JSON) SELECT orva.is_day_done(current_date - 90)");
    const int buffers = storetest::buffersOf(plan);
    EXPECT_GT(buffers, 0);
    EXPECT_LT(buffers, 200);
    EXPECT_FALSE(asWorker.run("SELECT orva.is_day_done(current_date)").isTrue(0, 0));
}

TEST_F(Upkeep, aDayWithAMessageThatIsParkedOrCameBackIsNotDone)
{
    handOver(u"a"_s, u"card"_s);
    const auto isDone = [&] {
        return owner.run("SELECT orva.is_day_done(current_date)").isTrue(0, 0);
    };
    const std::optional<Task> task = book.claim();
    ASSERT_TRUE(task);
    EXPECT_TRUE(
        book.finish(*task, storetest::resultOf(poshost::deliverypolicy::Meaning::Refused, 400))
            .isWritten);
    EXPECT_FALSE(isDone());
    EXPECT_TRUE(
        owner.run("SELECT orva.retry($1::bigint)", {Value::number(task->message)}).isTrue(0, 0));
    EXPECT_FALSE(isDone());
    const std::optional<Task> again = book.claim();
    ASSERT_EQ(nameOf(again), u"a"_s);
    EXPECT_TRUE(book.finish(*again, done).isWritten);
    EXPECT_TRUE(isDone());
}

TEST_F(Upkeep, aDayThatNobodyHasPreparedIsTakenAndDelivered)
{
    orvastore::HandedCheck ahead = checkOf(u"a"_s);
    ahead.closedAt = ahead.closedAt.addDays(400); // a clock that is wrong
    orvastore::handOver(owner, ahead);
    orvastore::handOver(owner, ahead);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.checks_other"_s), u"1"_s);
    EXPECT_EQ(nameOf(book.claim()), u"a"_s);
}

TEST_F(Upkeep, tillsHandOverWhileTheTablesAreMigrated)
{
    const QString older = storetest::freshDatabase();
    const auto settings = settingsFor(storetest::sharedCluster().connection(u"postgres"_s, older));
    Connection admin(settings, {});
    EXPECT_EQ(orvastore::storeschema::migrate(admin, 1), 0);
    std::atomic<bool> ending = false;
    std::atomic<int> handed = 0;
    std::thread till([&] {
        PostgresStore store;
        store.open(settings);
        for (int n = 0; !ending; ++n) {
            const auto result = store.handOver({checkOf(QString::number(n), u"card"_s)}).first();
            EXPECT_EQ(result.end, StoreEnd::Done) << qPrintable(result.error.ru());
            ++handed;
        }
    });
    while (handed < 5) {
        std::this_thread::yield();
    }
    EXPECT_EQ(orvastore::storeschema::migrate(admin), 1);
    const int before = handed;
    while (handed < before + 5) {
        std::this_thread::yield();
    }
    ending = true;
    till.join();
    EXPECT_EQ(orvastore::storeschema::versionOf(admin), orvastore::storeschema::newest);
    EXPECT_EQ(storetest::sharedCluster().sql(u"SELECT count(*) FROM orva.messages"_s, older),
              QString::number(handed));
    EXPECT_EQ(orvastore::storeschema::migrate(admin), orvastore::storeschema::newest)
        << "there is nothing left to do";
}

TEST_F(Upkeep, anOlderDatabaseGetsTheFunctionsThatCameWithoutTables)
{
    const QString older = storetest::freshDatabase();
    Connection admin(settingsFor(storetest::sharedCluster().connection(u"postgres"_s, older)), {});
    for (const int from : {3, 4}) {
        orvastore::storeschema::migrate(admin, from);
        admin.runAll("DROP FUNCTION orva.figures(int), orva.failures(int), orva.note_till;"
                     "DROP TABLE orva.handed_last");
        EXPECT_EQ(orvastore::storeschema::migrate(admin), from);
        EXPECT_EQ(admin.run("SELECT * FROM orva.figures(300)").rows(), 1);
        EXPECT_EQ(admin.run("SELECT * FROM orva.tills_heard_of(30)").rows(), 0);
        admin.runAll("DROP SCHEMA orva CASCADE");
    }
}

TEST_F(Upkeep, aStoreWithoutTheFunctionForNewChecksTakesThemAsBefore)
{
    sql(u"DROP FUNCTION orva.hand_over_new"_s);
    sql(u"CREATE OR REPLACE FUNCTION orva.hand_over("
        "of_shop text, with_identifier text, of_till text, with_number bigint, closed_millis "
        "bigint, with_lane bytea, with_sale text, with_content bytea, of_queue text, with_extra "
        "text, with_headers text, with_urls text, with_payload bytea, with_credentials text, "
        "with_steps int, with_steps_done int, with_attempts int, with_step_attempts int) "
        "RETURNS bigint LANGUAGE sql AS $$INSERT INTO orva.erasures (shop, identifier, role) "
        "VALUES (of_shop, with_identifier, 'x') RETURNING 1$$"_s);
    EXPECT_EQ(endOf(settingsFor(connection)), StoreEnd::Done);
    EXPECT_EQ(sql(u"SELECT identifier FROM orva.erasures"_s), u"z"_s);
}

TEST_F(Upkeep, aNewerDatabaseIsUsedAsLongAsItSaysThatItCanBe)
{
    sql(u"INSERT INTO orva.versions (version, usable_from) VALUES (98, 2)"_s);
    EXPECT_EQ(endOf(settingsFor(connection)), StoreEnd::Done);
    sql(u"INSERT INTO orva.versions (version, usable_from) VALUES (99, 99)"_s);
    QString words;
    EXPECT_EQ(endOf(settingsFor(connection), &words), StoreEnd::Unreachable);
    EXPECT_TRUE(words.contains(u"newer program"_s)) << qPrintable(words);
    sql(u"DROP SCHEMA orva CASCADE"_s);
    EXPECT_EQ(endOf(settingsFor(connection), &words), StoreEnd::Unreachable);
    EXPECT_TRUE(words.contains(u"no tables of a store"_s)) << qPrintable(words);
}

TEST_F(Upkeep, aStoreThatTakesNothingLetsNoCheckPassAnother)
{
    const QList<orvastore::HandedCheck> checks{checkOf(u"a"_s, u"card"_s), checkOf(u"b"_s)};
    const auto expectAllWait = [&](PostgresStore& store) {
        const auto results = store.handOver(checks);
        ASSERT_EQ(results.size(), checks.size());
        for (const auto& result : results) {
            EXPECT_EQ(result.end, StoreEnd::Unreachable) << qPrintable(result.error.ru());
        }
    };
    PostgresStore connected;
    connected.open(settingsFor(connection));
    ASSERT_EQ(connected.reach().end, StoreEnd::Done);
    sql(u"INSERT INTO orva.versions (version, usable_from) VALUES (99, 99)"_s);
    PostgresStore store;
    store.open(settingsFor(connection));
    EXPECT_EQ(store.reach().end, StoreEnd::Unreachable);
    expectAllWait(store);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.checks"_s), u"0"_s);
    sql(u"DROP SCHEMA orva CASCADE"_s); // under a session that has found it usable
    expectAllWait(connected);
}

TEST_F(Upkeep, nobodyThereAndSilenceAreSaidInTimeAndNothingCountsAsSent)
{
    QString words;
    const PortReserve nobody;
    EXPECT_EQ(endOf(settingsFor(u"host=127.0.0.1 port=%1 user=x dbname=x"_s.arg(nobody.port()), 1),
                    &words),
              StoreEnd::Unreachable);
    EXPECT_TRUE(words.contains(u"cannot be reached"_s)) << qPrintable(words);
    EXPECT_EQ(endOf(settingsFor(u"host=127.0.0.1 password=geheim nonsense=1"_s), &words),
              StoreEnd::Unreachable);
    EXPECT_FALSE(words.contains(u"geheim"_s));

    PostgresCluster alone;
    alone.freeze();
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(endOf(settingsFor(alone.connection(), 1), &words), StoreEnd::Unreachable);
    EXPECT_LT(timer.elapsed(), 2500);
    EXPECT_TRUE(words.contains(u"says nothing"_s)) << qPrintable(words);
    alone.thaw();
}

TEST_F(Upkeep, aWrongPasswordAndAStandbyAreSentences)
{
    PostgresCluster primary;
    primary.sql(u"CREATE ROLE guest LOGIN PASSWORD 'right'"_s);
    const std::unique_ptr<PostgresCluster> standby = primary.makeStandby(u"second"_s);
    QString words;
    EXPECT_EQ(endOf(settingsFor(standby->connection()), &words), StoreEnd::Unreachable);
    EXPECT_TRUE(words.contains(u"standby"_s)) << qPrintable(words);

    QFile rules(primary.dataFolder() + u"/pg_hba.conf"_s);
    ASSERT_TRUE(rules.open(QIODevice::WriteOnly));
    rules.write("host all guest 127.0.0.1/32 scram-sha-256\nhost all all 127.0.0.1/32 trust\n");
    rules.close();
    primary.sql(u"SELECT pg_reload_conf()"_s);
    EXPECT_EQ(endOf(settingsFor(primary.connection(u"guest"_s) + u" password=wrong"_s), &words),
              StoreEnd::Unreachable);
    EXPECT_TRUE(words.contains(u"does not accept the login"_s)) << qPrintable(words);
    EXPECT_FALSE(words.contains(u"wrong "_s)) << qPrintable(words);
}

TEST_F(Upkeep, interruptingEndsAWaitAtOnce)
{
    PostgresCluster alone;
    alone.freeze();
    PostgresStore store;
    store.open(settingsFor(alone.connection(), 30));
    QElapsedTimer timer;
    timer.start();
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        store.interrupt();
    });
    EXPECT_NE(store.handOver({checkOf(u"a"_s)}).first().end, StoreEnd::Done);
    other.join();
    EXPECT_LT(timer.elapsed(), 5000);
    alone.thaw();
}
