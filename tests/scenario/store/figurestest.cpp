// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the store costs, as ratios of two measurements beside each other.

#include "host/database/database.h"
#include "host/database/statement.h"
#include "tests/scenario/store/filledstore.h"
#include "tests/scenario/store/proofsize.h"
#include "tests/support/testfolder.h"
#include "tests/unit/store/storefixture.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <barrier>
#include <functional>
#include <thread>

using namespace Qt::StringLiterals;
using orvastore::Connection;
using orvastore::DeliveryBook;
using orvastore::Task;
using orvastore::Value;
using storetest::settingsFor;
using namespace filledstore;

namespace {

constexpr int checkBytes = 6144;

/// A worker that gets a good answer at once.
class Hand
{
public:
    explicit Hand(const QString& database)
        : connection(settingsFor(connectionTo(database), 60), {.byIndexes = true}),
          book(connection, u"hand"_s, 1)
    {}

    /// Claims and finishes so often. @return microseconds each
    double turn(int times)
    {
        const poshost::DeliveryResult done =
            storetest::resultOf(poshost::deliverypolicy::Meaning::StepDone);
        if (!task) {
            task = book.claim();
        }
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < times; ++i) {
            EXPECT_TRUE(task);
            task = book.finish(*task, done).task;
        }
        return static_cast<double>(timer.nsecsElapsed()) / 1000 / times;
    }

    Connection connection;
    DeliveryBook book;
    std::optional<Task> task;
};

/// What the next claim reads, and how.
struct Reading
{
    int buffers = 0;
    bool sorts = false;
    bool usesTheList = false;
};

Reading readingOf(Hand& hand)
{
    const auto place = [&](int part) {
        return hand.connection
            .run("SELECT max(position) * " + QByteArray::number(part) + " / 4 FROM orva.ready")
            .text(0, 0)
            .toLatin1();
    };
    // counted without the log of plans, which reads the catalogue for each
    const int buffers = storetest::buffersOf(
        hand.connection.run("EXPLAIN (ANALYZE, BUFFERS, FORMAT JSON) SELECT * FROM orva.claim(" +
                            place(2) + ", 'reader')"));
    hand.connection.runAll("LOAD 'auto_explain'; SET auto_explain.log_min_duration = 0; "
                           "SET auto_explain.log_nested_statements = on");
    const qsizetype before = storetest::sharedCluster().log().size();
    hand.connection.run("SELECT next FROM orva.claim(" + place(3) + ", 'reader')");
    const QString log = storetest::sharedCluster().log().mid(before);
    return {buffers, log.contains(u"Sort"_s), log.contains(u"ready_pkey"_s)};
}

/// What is handed over.
struct Written
{
    QByteArray check;
    QByteArray message;
};

/// A check and its message as a till of 1.0.0 has written them.
Written writtenByATill()
{
    const TestFolder folder;
    const QString file = folder.file(u"till.sqlite"_s);
    EXPECT_TRUE(QFile::copy(QStringLiteral(ORVA_FIXTURES "/1.0.0/visit/till.sqlite"), file));
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    poshost::Database database(file);
    poshost::Statement largest(database,
                               u"SELECT c.data, b.payload FROM checks c JOIN queue_bodies b ON "
                               "b.message_id = c.message_id ORDER BY length(b.payload) DESC"_s);
    if (!largest.next()) {
        ADD_FAILURE() << "the till has written nothing";
        return {};
    }
    return {largest.value(0).toByteArray(), largest.value(1).toByteArray()};
}

/// What a commit costs is measured with the upkeep of a server at work.
class StoreFigures : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        storetest::sharedCluster().set(u"autovacuum_naptime"_s, u"1min"_s);
        ASSERT_TRUE(storetest::sharedCluster().waitFor(u"SHOW autovacuum_naptime"_s, u"1min"_s));
    }
};

} // namespace

// first, while the server has no million messages of another test to write out
TEST_F(StoreFigures, handingOverIsNearABareLoop)
{
    const QString database = storetest::freshStore();
    Connection owner(settingsFor(connectionTo(database)), {});
    owner.runAll("CREATE TABLE bare (id text PRIMARY KEY, content bytea, payload bytea)");
    constexpr int connections = 8;
    constexpr int warming = 10;
    const int each = sized(400, 40);
    std::atomic<int> number = 0;
    const auto bytes = [](int count) {
        QByteArray random(count, Qt::Uninitialized);
        QRandomGenerator::global()->fillRange(reinterpret_cast<quint32*>(random.data()), count / 4);
        return random;
    };
    // a till connects once and hands over for days: what a session costs at first does not count
    const auto measured = [&](const std::function<void(Connection&, const QString&)>& insert) {
        std::vector<std::thread> threads;
        std::barrier warm(connections + 1);
        for (int i = 0; i < connections; ++i) {
            threads.emplace_back([&] {
                Connection own(settingsFor(connectionTo(database), 60), {.byIndexes = true});
                for (int n = 0; n < warming; ++n) {
                    insert(own, QString::number(++number));
                }
                warm.arrive_and_wait();
                for (int n = 0; n < each; ++n) {
                    insert(own, QString::number(++number));
                }
            });
        }
        warm.arrive_and_wait();
        QElapsedTimer timer;
        timer.start();
        for (std::thread& thread : threads) {
            thread.join();
        }
        return connections * each * 1000.0 / static_cast<double>(timer.elapsed());
    };
    const auto ratioOf = [&](const Written& written) {
        QList<double> ratios;
        for (int i = 0; i < 5; ++i) {
            const double bare = measured([&](Connection& own, const QString& id) {
                own.run("INSERT INTO bare VALUES ($1, $2, $3)",
                        {Value::text(id), Value::binary(written.check),
                         Value::binary(written.message)});
            });
            const double store = measured([&](Connection& own, const QString& id) {
                orvastore::HandedCheck check = storetest::checkOf(id, u"card "_s + id);
                check.number = id.toInt();
                check.content = written.check;
                check.messages.first().payload = written.message;
                orvastore::handOver(own, check);
            });
            ratios.append(store / bare);
        }
        return middle(ratios);
    };
    const double ratio = ratioOf(writtenByATill());
    const double ofChance = ratioOf({bytes(checkBytes), bytes(messageBytes)});
    printFigure(
        u"hand-over with 8 connections against a bare loop: %1 (at least 0.7), of bytes that "
        "nothing compresses %2"_s.arg(rounded(ratio), rounded(ofChance)));
    // in the short form connecting counts as much as handing over
    EXPECT_TRUE(ratio >= 0.7 || isShortProof());
}

TEST_F(StoreFigures, claimingIsAsFastFromAMillionAsFromAThousand)
{
    const int many = sized(1'000'000, 20'000);
    const QString large = filled(many, many / 10);
    const QString small = filled(1000, 100);
    Hand fromLarge(large);
    Hand fromSmall(small);
    fromLarge.turn(20);
    fromSmall.turn(20);
    QList<double> inLarge;
    QList<double> inSmall;
    for (int i = 0; i < 19; ++i) {
        inLarge.append(fromLarge.turn(40));
        inSmall.append(fromSmall.turn(40));
    }
    const double ratio = middle(inLarge) / middle(inSmall);
    const Reading reading = readingOf(fromLarge);
    printFigure(
        u"claim and finish: %1 us with %2 waiting, %3 us with 1,000: ratio %4 (at most 1.5); "
        "%5 buffers a claim (30 to reach), sorted: %6 (no)"_s.arg(rounded(middle(inLarge)))
            .arg(many)
            .arg(rounded(middle(inSmall)), rounded(ratio))
            .arg(reading.buffers)
            .arg(reading.sorts ? u"yes"_s : u"no"_s));
    EXPECT_LE(ratio, 1.5);
    EXPECT_GT(reading.buffers, 0);
    EXPECT_LE(reading.buffers, 30);
    EXPECT_FALSE(reading.sorts);
    EXPECT_TRUE(reading.usesTheList) << "the plans were not seen";
}

TEST_F(StoreFigures, anOldSnapshotCostsNextToNothing)
{
    const int finishes = sized(60'000, 3000);
    const QString database = filled(2 * finishes, finishes / 10);
    Connection old(settingsFor(connectionTo(database)), {});
    old.runAll("BEGIN ISOLATION LEVEL REPEATABLE READ; SELECT count(*) FROM orva.ready");
    Hand hand(database);
    hand.turn(200);
    const double before = hand.turn(300);
    hand.turn(finishes);
    const double after = hand.turn(300);
    printFigure(u"claim and finish after %1 finishes under an old snapshot: %2 us, before %3 us: "
                "ratio %4 (at most 1.5)"_s.arg(finishes)
                    .arg(rounded(after), rounded(before), rounded(after / before)));
    EXPECT_LE(after / before, 1.5);
}
