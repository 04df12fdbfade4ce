// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"
#include "host/services/dbqueuebroker.h"
#include "tests/support/configured.h"
#include "tests/support/stoppedclock.h"
#include "watchingserver.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <atomic>
#include <future>
#include <random>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr int beforeTimeout = 3000; ///< milliseconds; a request may take 10 s

/// A queue whose messages go to a server that watches, over four connections.
class Lanes : public ::testing::Test
{
protected:
    /// Queues a message whose lane is its first letter; of "-" it is in no lane.
    qint64 add(const QString& name)
    {
        const QVariantMap urls{{u"1"_s, server.url() + u"step1"_s},
                               {u"2"_s, server.url() + u"step2"_s}};
        broker.addToQueue(u"orva"_s,
                          {{u"payload"_s, name}, {u"headers"_s, QVariantMap()}, {u"urls"_s, urls}},
                          {});
        const qint64 id = queue.lastAddedId();
        if (!name.startsWith(u'-')) {
            queue.putIntoLane(id, name.left(1));
        }
        return id;
    }

    /// Whoever may come beside a request has the time to.
    static std::string takeLong(const QByteArray&)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return RawServer::answer("200 OK");
    }

    qint64 numberFrom(const QString& sql)
    {
        poshost::Statement statement(*database, sql);
        return statement.next() ? statement.value(0).toLongLong() : -1;
    }

    /// What came, of one lane.
    QStringList seenOf(char lane)
    {
        return server.seen().filter(QRegularExpression(u"^"_s + QLatin1Char(lane)));
    }

    TestFolder folder;
    StoppedClock clock;
    Configured connections{"[queue]\nconnections = 4\n"};
    WatchingServer server;
    const QSharedPointer<poshost::Database> database =
        QSharedPointer<poshost::Database>::create(folder.file(u"till.db"_s));
    DBQueueBroker broker{database};
    poshost::OutgoingQueue queue{*database};
    poshost::QueueDelivery delivery{*database, 1};
};

TEST_F(Lanes, OneMessageOfEachIsUnderWayAtOnce)
{
    for (const QString& name : {u"A1"_s, u"A2"_s, u"B1"_s, u"C1"_s, u"D1"_s, u"E1"_s}) {
        add(name);
    }
    server.setScript([this](const QByteArray&) {
        return RawServer::answer(server.waitForCompany(4) ? "200 OK" : "400 Bad Request");
    });
    const poshost::DeliveryReport report = delivery.deliverDue();
    EXPECT_EQ(report.delivered, 6);
    EXPECT_EQ(report.requests, 12);
    EXPECT_EQ(server.mostAtOnce(), 4);
    EXPECT_EQ(server.mostOfOneLane(), 1);
}

TEST_F(Lanes, KeepTheirOrderWhateverTheServerTakesLongFor)
{
    const auto seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    QHash<char, QStringList> expected;
    for (int number = 0; number < 120; ++number) {
        const char lane = "ABCDE"[random() % 5];
        const QString name = QLatin1Char(lane) + QString::number(number);
        add(name);
        expected[lane] += {name + u":1"_s, name + u":2"_s};
    }
    server.setScript([](const QByteArray& body) {
        std::this_thread::sleep_for(std::chrono::microseconds(qHash(body) % 3000));
        return RawServer::answer("200 OK");
    });
    EXPECT_EQ(delivery.deliverDue().delivered, 120);
    EXPECT_GT(server.mostAtOnce(), 1);
    EXPECT_EQ(server.mostOfOneLane(), 1);
    for (const char lane : {'A', 'B', 'C', 'D', 'E'}) {
        EXPECT_EQ(seenOf(lane), expected.value(lane));
    }
}

TEST_F(Lanes, AreNotUsedWithOneConnection)
{
    const Configured strict("[queue]\n");
    for (const QString& name : {u"B1"_s, u"A1"_s, u"B2"_s}) {
        add(name);
    }
    EXPECT_EQ(delivery.deliverDue().delivered, 3);
    EXPECT_EQ(server.mostAtOnce(), 1);
    EXPECT_EQ(server.seen(),
              QStringList({u"B1:1"_s, u"B1:2"_s, u"A1:1"_s, u"A1:2"_s, u"B2:1"_s, u"B2:2"_s}));
}

TEST_F(Lanes, ShareOneWhereNobodyNamesAny)
{
    for (const QString& name : {u"-1"_s, u"-2"_s, u"-3"_s}) {
        add(name);
    }
    server.setScript(takeLong);
    EXPECT_EQ(delivery.deliverDue().delivered, 3);
    EXPECT_EQ(server.mostAtOnce(), 1);
}

TEST_F(Lanes, AreNotHeldUpByAParkedMessageExceptItsReturn)
{
    const qint64 refused = add(u"A1"_s);
    const qint64 giveBack = add(u"A2"_s);
    queue.addDependency(giveBack, refused);
    const qint64 other = add(u"A3"_s);
    server.setScript([](const QByteArray& body) {
        return RawServer::answer(body == "A1" ? "400 Bad Request" : "200 OK");
    });
    const poshost::DeliveryReport report = delivery.deliverDue();
    EXPECT_EQ(report.parked, 1);
    EXPECT_EQ(queue.show(refused)->entry.state, poshost::QueueState::Parked);
    EXPECT_EQ(queue.show(giveBack)->entry.state, poshost::QueueState::Waiting);
    EXPECT_EQ(queue.show(other)->entry.state, poshost::QueueState::Delivered);
}

TEST_F(Lanes, FailTogetherAsOneFailureAndAreTriedAgainByOne)
{
    for (const QString& name : {u"A1"_s, u"B1"_s, u"C1"_s, u"D1"_s, u"E1"_s}) {
        add(name);
    }
    std::atomic<bool> away = true;
    server.setScript([&](const QByteArray&) {
        server.waitForCompany(4);
        return RawServer::answer(away ? "503 Service Unavailable" : "200 OK");
    });
    const poshost::DeliveryReport report = delivery.deliverDue();
    EXPECT_EQ(report.requests, 4);
    EXPECT_EQ(numberFrom(u"SELECT failures FROM queue_holds"_s), 1);

    clock.advanceTo(report.nextAttempt);
    const poshost::DeliveryReport probe = delivery.deliverDue();
    EXPECT_EQ(probe.requests, 1);
    EXPECT_EQ(numberFrom(u"SELECT failures FROM queue_holds"_s), 2);

    clock.advanceTo(probe.nextAttempt);
    away = false;
    EXPECT_EQ(delivery.deliverDue().delivered, 5);
}

TEST_F(Lanes, AreAllBrokenOffByAStop)
{
    for (const QString& name : {u"A1"_s, u"B1"_s, u"C1"_s, u"D1"_s}) {
        add(name);
    }
    std::promise<void> stopped;
    server.setScript([&, wait = stopped.get_future().share()](const QByteArray&) {
        if (server.waitForCompany(4)) {
            delivery.requestStop();
        }
        wait.wait();
        return RawServer::answer("200 OK");
    });
    QElapsedTimer time;
    time.start();
    const poshost::DeliveryReport report = delivery.deliverDue();
    EXPECT_LT(time.elapsed(), beforeTimeout);
    stopped.set_value();
    EXPECT_EQ(report.delivered, 0);
    EXPECT_EQ(numberFrom(u"SELECT count(*) FROM queue_messages WHERE state = 'waiting' "
                         "AND step_attempts = 1 AND steps_done = 0"_s),
              4);
    EXPECT_EQ(numberFrom(u"SELECT count(*) FROM queue_holds"_s), 0);
}

TEST_F(Lanes, AreAllBrokenOffWhenTheFileFails)
{
    for (const QString& name : {u"A1"_s, u"B1"_s, u"C1"_s, u"D1"_s}) {
        add(name);
    }
    database->execute(u"CREATE TRIGGER full BEFORE UPDATE OF steps_done ON queue_messages "
                      "BEGIN SELECT RAISE(ABORT, 'the disk is full'); END"_s);
    std::promise<void> ended;
    server.setScript([&, wait = ended.get_future().share()](const QByteArray& body) {
        server.waitForCompany(4);
        if (body != "A1") {
            wait.wait();
        }
        return RawServer::answer("200 OK");
    });
    QElapsedTimer time;
    time.start();
    EXPECT_THROW(delivery.deliverDue(), BasicException);
    EXPECT_LT(time.elapsed(), beforeTimeout);
    ended.set_value();
    database->execute(u"DROP TRIGGER full"_s);
    EXPECT_EQ(delivery.deliverDue().delivered, 4);
}

TEST_F(Lanes, AreOneWhereTheFileIsDamaged)
{
    for (const QString& name : {u"A1"_s, u"B1"_s, u"C1"_s}) {
        add(name);
    }
    database->execute(u"UPDATE queue_messages SET lane = 'torn'"_s);
    server.setScript(takeLong);
    EXPECT_EQ(delivery.deliverDue().delivered, 3);
    EXPECT_EQ(server.mostAtOnce(), 1);
    EXPECT_EQ(server.seen().size(), 6);
}

TEST_F(Lanes, AreForgottenWithTheDelivery)
{
    const qint64 delivered = add(u"A1"_s);
    EXPECT_NE(numberFrom(u"SELECT lane FROM queue_messages"_s), 0);
    delivery.deliverDue();
    EXPECT_EQ(numberFrom(u"SELECT lane FROM queue_messages"_s), 0);
    queue.putIntoLane(delivered, u"A"_s);
    EXPECT_EQ(numberFrom(u"SELECT lane FROM queue_messages"_s), 0);

    queue.park(add(u"B1"_s));
    queue.settle(queue.lastAddedId());
    EXPECT_EQ(numberFrom(u"SELECT sum(lane) FROM queue_messages"_s), 0);
}

} // namespace
