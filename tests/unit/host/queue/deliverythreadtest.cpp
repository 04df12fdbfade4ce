// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/deliverythread.h"
#include "contract/rawserver.h"
#include "host/database/database.h"
#include "host/queue/outgoingqueue.h"
#include "host/services/dbqueuebroker.h"
#include "queued.h"
#include "tests/support/fakeserver.h"
#include "tests/support/testfolder.h"

#include <QElapsedTimer>
#include <condition_variable>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

constexpr auto never = std::chrono::hours(1);
constexpr auto soon = std::chrono::milliseconds(10);
constexpr qint64 promptly = 2000;

class Thread : public ::testing::Test
{
protected:
    void SetUp() override
    {
        server.setScript([this](const FakeServer::Request&) {
            const std::lock_guard lock(mutex);
            ++posts;
            changed.notify_all();
            return reply;
        });
    }

    void add(const QString& payload) { broker.addToQueue(u"orva"_s, queuedMessage(payload), {}); }

    /// Waits until that many requests have been made in all.
    bool waitForPosts(int count)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(20), [&] { return posts >= count; });
    }

    static qint64 millisecondsToStop(poshost::DeliveryThread& thread)
    {
        QElapsedTimer clock;
        clock.start();
        thread.stop();
        return clock.elapsed();
    }

    TestFolder folder;
    const QSharedPointer<poshost::Database> database =
        QSharedPointer<poshost::Database>::create(folder.file(u"till.db"_s));
    DBQueueBroker broker{database};
    poshost::OutgoingQueue queue{*database};
    std::mutex mutex;
    std::condition_variable changed;
    int posts = 0;
    FakeServer::Reply reply;
    FakeServer server;
};

TEST_F(Thread, DeliversWhatIsThereWhenItStarts)
{
    add(u"a"_s);
    poshost::DeliveryThread thread(database->fileName(), never);
    thread.start();
    thread.start(); // once more does nothing
    EXPECT_TRUE(waitForPosts(2));
    thread.stop();
    EXPECT_EQ(server.log(), QStringList({u"a -> /step1"_s, u"a -> /step2"_s}));
    EXPECT_EQ(queue.counts().delivered, 1);
}

TEST_F(Thread, IsWokenByNotify)
{
    poshost::DeliveryThread thread(database->fileName(), never);
    thread.start();
    for (int i = 1; i <= 3; ++i) {
        add(u"a"_s);
        thread.notify();
        EXPECT_TRUE(waitForPosts(2 * i));
    }
    thread.stop();
    EXPECT_EQ(queue.counts().delivered, 3);
}

TEST_F(Thread, FindsWhatCameWithoutNotify)
{
    poshost::DeliveryThread thread(database->fileName(), soon);
    thread.start();
    add(u"a"_s);
    EXPECT_TRUE(waitForPosts(2));
}

TEST_F(Thread, TriesAgainWhenTheBackOffEnds)
{
    reply.status = 0;
    add(u"a"_s);
    poshost::DeliveryThread thread(database->fileName(), never);
    thread.start();
    EXPECT_TRUE(waitForPosts(2)) << "after about a second, without notify";
    EXPECT_LE(millisecondsToStop(thread), promptly) << "in the back-off";
    EXPECT_EQ(queue.counts().waiting, 1);
}

TEST_F(Thread, StopsPromptlyWhenIdleAndStartsAgain)
{
    poshost::DeliveryThread thread(database->fileName(), never);
    for (int i = 1; i <= 3; ++i) {
        thread.start();
        add(u"a"_s);
        thread.notify();
        EXPECT_TRUE(waitForPosts(2 * i));
        EXPECT_LE(millisecondsToStop(thread), promptly);
        EXPECT_LE(millisecondsToStop(thread), promptly) << "twice does nothing";
    }
    EXPECT_EQ(queue.counts().delivered, 3);
}

TEST_F(Thread, StopBreaksOffARequestThatHangs)
{
    MockFactory<RestClient>::mocked = nullptr; // the real transport
    RawServer hanging([this](RawServer::Connection& connection) {
        connection.readRequest();
        {
            const std::lock_guard lock(mutex);
            ++posts;
            changed.notify_all();
        }
        connection.hang();
    });
    QVariantMap message = queuedMessage(u"a"_s);
    message[u"urls"_s] = QVariantMap{{u"1"_s, hanging.url().toString()}};
    broker.addToQueue(u"orva"_s, message, {});
    poshost::DeliveryThread thread(database->fileName(), never);
    thread.start();
    EXPECT_TRUE(waitForPosts(1));
    EXPECT_LE(millisecondsToStop(thread), promptly);
    const poshost::QueueEntry entry = queue.list().first();
    EXPECT_EQ(entry.state, poshost::QueueState::Waiting);
    EXPECT_EQ(entry.attempts, 1);
}

/// Counts the lines of Qt's log while it lives.
class LogCounter
{
public:
    LogCounter()
    {
        current = this;
        former =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& line) {
                const std::lock_guard lock(current->mutex);
                current->lines.append(line);
                current->changed.notify_all();
            });
    }
    ~LogCounter() { qInstallMessageHandler(former); }
    LogCounter(const LogCounter&) = delete;
    LogCounter& operator=(const LogCounter&) = delete;

    bool waitForALine()
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(20),
                                [this] { return !lines.isEmpty(); });
    }

    QStringList lines;

private:
    static inline LogCounter* current = nullptr;
    QtMessageHandler former = nullptr;
    std::mutex mutex;
    std::condition_variable changed;
};

TEST_F(Thread, ADatabaseThatCannotBeOpenedIsTriedAgainAndReportedOnce)
{
    const QString subfolder = folder.file(u"later"_s);
    const QString file = subfolder + u"/till.db"_s;
    LogCounter log;
    poshost::DeliveryThread thread(file, std::chrono::milliseconds(1));
    thread.start();
    ASSERT_TRUE(log.waitForALine());
    ASSERT_TRUE(QDir().mkdir(subfolder));
    {
        DBQueueBroker later(QSharedPointer<poshost::Database>::create(file));
        later.addToQueue(u"orva"_s, queuedMessage(u"a"_s), {});
    }
    EXPECT_TRUE(waitForPosts(2));
    thread.stop();
    ASSERT_EQ(log.lines.size(), 1) << log.lines.join(u'\n').toStdString();
    EXPECT_THAT(log.lines.first().toStdString(), HasSubstr("later/till.db"));
}

TEST_F(Thread, TwoOnOneFileSendEveryMessageOnce)
{
    for (int i = 0; i < 50; ++i) {
        add(QString::number(i));
    }
    poshost::DeliveryThread one(database->fileName(), soon);
    poshost::DeliveryThread two(database->fileName(), soon);
    one.start();
    two.start();
    EXPECT_TRUE(waitForPosts(100));
    one.stop();
    two.stop();
    QStringList wanted;
    for (int i = 0; i < 50; ++i) {
        wanted << u"%1 -> /step1"_s.arg(i) << u"%1 -> /step2"_s.arg(i);
    }
    EXPECT_EQ(server.log(), wanted);
    EXPECT_EQ(queue.counts().delivered, 50);
}

} // namespace
