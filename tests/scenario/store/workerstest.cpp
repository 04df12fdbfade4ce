// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A worker that is gone, in each way known, and one that is only waiting.

#include "tests/scenario/store/ledgerserver.h"
#include "tests/scenario/store/proofsize.h"
#include "tests/scenario/store/road.h"
#include "tests/scenario/store/workerprocess.h"
#include "tests/unit/store/storefixture.h"

#include <QElapsedTimer>
#include <QThread>

using namespace Qt::StringLiterals;
using storetest::settingsFor;

namespace {

constexpr int laneTimeoutSeconds = 3;

class Workers : public storetest::StoreTest
{
protected:
    Workers() { server.setDelay(20'000); }

    /// A message that a worker is sending, to a server that does not answer for long.
    void beginRequest(const QString& way)
    {
        orvastore::HandedCheck check = storetest::checkOf(u"a"_s, u"card"_s);
        check.messages.first().urls = R"({"0":")" + server.address().toUtf8() + R"("})";
        orvastore::handOver(owner, check);
        worker = std::make_unique<WorkerProcess>(folder, u"w1"_s, way, laneTimeoutSeconds);
        ASSERT_TRUE(waitFor("SELECT count(*) FROM orva.attempts"));
        lane = sql(u"SELECT id FROM orva.lanes"_s).toLongLong();
        ASSERT_FALSE(isFree()) << "the worker has it";
    }

    bool waitFor(const QByteArray& query)
    {
        const QDeadlineTimer deadline(20'000);
        while (!deadline.hasExpired()) {
            if (owner.run(query).number(0, 0) > 0) {
                return true;
            }
            QThread::msleep(10);
        }
        return false;
    }

    bool isFree()
    {
        const bool mine =
            second.run("SELECT pg_try_advisory_lock($1::bigint)", {orvastore::Value::number(lane)})
                .isTrue(0, 0);
        if (mine) {
            second.run("SELECT pg_advisory_unlock($1::bigint)", {orvastore::Value::number(lane)});
        }
        return mine;
    }

    qint64 millisecondsUntilFree()
    {
        QElapsedTimer timer;
        timer.start();
        while (!isFree() && timer.elapsed() < 30'000) {
            QThread::usleep(500);
        }
        return timer.elapsed();
    }

    TestFolder folder;
    LedgerServer server;
    std::unique_ptr<WorkerProcess> worker;
    qint64 lane = 0;
};

} // namespace

TEST_F(Workers, theLaneOfAKilledOneIsFreeAtOnce)
{
    beginRequest(connection);
    worker->kill();
    const qint64 taken = millisecondsUntilFree();
    printFigure(u"worker killed: its lane is free after %1 ms (50 ms to reach)"_s.arg(taken));
    EXPECT_LE(taken, 50);
}

TEST_F(Workers, theLaneOfAFrozenOneIsFreeWithinItsTimeOutAndItRecordsNothingLate)
{
    beginRequest(connection);
    worker->freeze();
    const qint64 taken = millisecondsUntilFree();
    printFigure(
        u"worker frozen: its lane is free after %1 ms (time-out %2 s + 1 s to reach)"_s.arg(taken)
            .arg(laneTimeoutSeconds));
    EXPECT_LE(taken, (laneTimeoutSeconds + 1) * 1000);
    EXPECT_GT(taken, 1000) << "the test would not tell a frozen worker from a dead one";
    server.setDelay(0);
    const std::optional<orvastore::Task> task = other.claim();
    ASSERT_TRUE(task);
    worker->thaw();
    ASSERT_TRUE(waitFor("SELECT count(*) FROM pg_stat_activity WHERE application_name = "
                        "'orva-store' AND datname = current_database()"))
        << "it is back";
    QThread::sleep(2);
    EXPECT_EQ(sql(u"SELECT (SELECT count(*) FROM orva.outcomes) + "
                  "(SELECT count(*) FROM orva.deliveries)"_s),
              u"0"_s);
    EXPECT_TRUE(other.finish(*task, done).isWritten);
}

TEST_F(Workers, theLaneOfOneWhoseNetworkIsSilentIsFreeWithinItsTimeOut)
{
    Road road(storetest::sharedCluster().port());
    beginRequest(
        u"host=127.0.0.1 port=%1 user=postgres dbname=%2"_s.arg(road.port()).arg(database));
    road.fallSilent();
    const qint64 taken = millisecondsUntilFree();
    printFigure(
        u"network silent: the lane is free after %1 ms (time-out %2 s + 1 s to reach)"_s.arg(taken)
            .arg(laneTimeoutSeconds));
    EXPECT_LE(taken, (laneTimeoutSeconds + 1) * 1000);
}

TEST_F(Workers, aHealthyOneThatWaitsForASlowServerKeepsItsLane)
{
    server.setDelay(3 * laneTimeoutSeconds * 1000);
    beginRequest(connection);
    const QDeadlineTimer end(2 * laneTimeoutSeconds * 1000);
    while (!end.hasExpired()) {
        ASSERT_FALSE(isFree());
        QThread::msleep(100);
    }
    ASSERT_TRUE(waitFor("SELECT count(*) FROM orva.deliveries"));
    EXPECT_EQ(server.requests(), 1);
}

TEST_F(Workers, whoWaitsForASlowServerKeepsNoFurtherMessageFromTheOthers)
{
    server.setDelay(20);
    const auto handOverTo = [&](const QString& name) {
        orvastore::HandedCheck check = storetest::checkOf(name);
        check.messages.first().urls = R"({"0":")" + server.address().toUtf8() + R"("})";
        orvastore::handOver(owner, check);
    };
    handOverTo(u"short"_s);
    worker = std::make_unique<WorkerProcess>(folder, u"w1"_s, connection, laneTimeoutSeconds);
    ASSERT_TRUE(waitFor("SELECT count(*) FROM orva.deliveries")); // requests are short, it thinks
    server.setDelay(20'000);
    owner.runAll("BEGIN"); // it sees both or none
    handOverTo(u"long"_s);
    handOverTo(u"further"_s);
    owner.runAll("COMMIT");
    // as long as it thinks so it has both; where the machine is very busy it may not come to it
    const QDeadlineTimer soon(3000);
    while (owner.run("SELECT count(*) FROM orva.attempts").number(0, 0) < 3 && !soon.hasExpired()) {
        QThread::msleep(1);
    }
    QElapsedTimer timer;
    timer.start();
    std::optional<orvastore::Task> task = other.claim();
    while (!task && timer.elapsed() < 10'000) {
        QThread::msleep(5);
        task = other.claim();
    }
    ASSERT_EQ(nameOf(task), u"further"_s);
    EXPECT_FALSE(task->attemptedBefore) << "nobody has sent it";
    EXPECT_LT(timer.elapsed(), 2000);
}
