// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/queuewatch.h"

#include "host/queue/queuebell.h"
#include "host/services/config.h"
#include "tests/support/notifysocket.h"
#include "tests/unit/till/tilltest.h"

#include <QElapsedTimer>
#include <QFile>

#include <atomic>
#include <csignal>
#include <functional>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::hours never(1);
constexpr int longEnough = 20'000;

/// A loyalty server that takes everything, at once or when it is let go on.
class ObligingClient : public RestClient
{
public:
    void post(const QUrl&, const QByteArray&, const QHash<QString, QString>&) override
    {
        while (standsStill) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
    int getError() override { return 0; }
    int getHttpStatusCode() override { return 200; }

    std::atomic<bool> standsStill = false;
};

/// A queue that is watched by a thread of the test's.
class QueueWatchTest : public tests::TillTest
{
protected:
    QueueWatchTest() { config.load(folder.write(u"orva.toml"_s, u"[Orva]\ntimeout = 1\n"_s)); }
    ~QueueWatchTest() override
    {
        client.standsStill = false;
        if (thread.joinable()) {
            ::pthread_kill(thread.native_handle(), SIGTERM);
            thread.join();
        }
    }

    /// Returns when the first look at the queue is over.
    void watch(std::chrono::milliseconds interval)
    {
        add();
        thread = std::thread(
            [this, interval] { till::QueueWatch(database->fileName(), interval).run(); });
        EXPECT_TRUE(isDelivered());
    }

    /// As a plug-in does it, and tells nobody.
    void add()
    {
        broker.addToQueue(u"orva"_s,
                          {{u"payload"_s, u"a"_s},
                           {u"headers"_s, QVariantMap()},
                           {u"urls"_s, QVariantMap{{u"1"_s, u"http://server.test/"_s}}}},
                          {});
    }
    bool isDelivered()
    {
        return soon([this] { return poshost::OutgoingQueue(*database).counts().waiting == 0; });
    }
    QString bell() const { return database->fileName() + u".delivery-bell"_s; }

    static bool soon(const std::function<bool()>& condition)
    {
        QElapsedTimer clock;
        clock.start();
        while (!condition() && !clock.hasExpired(longEnough)) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return condition();
    }

    Config config;
    tests::InSingleton<Config> configInPlace{&config};
    ObligingClient client;
    tests::Registered<RestClient> registered{client};
    std::thread thread;
};

} // namespace

TEST_F(QueueWatchTest, ARingIsEnough)
{
    watch(never);
    add();
    poshost::QueueBell::ring(database->fileName());
    EXPECT_TRUE(isDelivered());
}

TEST_F(QueueWatchTest, WhatNobodyRangForIsFoundByTheNextLook)
{
    watch(std::chrono::milliseconds(50));
    add();
    EXPECT_TRUE(isDelivered());
}

TEST_F(QueueWatchTest, ABellThatSomebodyRemovedIsPutUpAgain)
{
    watch(never);
    ASSERT_TRUE(QFile::remove(bell()));
    EXPECT_TRUE(soon([this] { return QFile::exists(bell()); }));
    add();
    poshost::QueueBell::ring(database->fileName());
    EXPECT_TRUE(isDelivered());
}

TEST_F(QueueWatchTest, ADeliveryThatStandsStillIsNotCalledAlive)
{
    NotifySocket manager(folder.file(u"notify"_s));
    qputenv("NOTIFY_SOCKET", folder.file(u"notify"_s).toUtf8());
    qputenv("WATCHDOG_USEC", "100000");
    watch(std::chrono::milliseconds(50));
    EXPECT_TRUE(manager.waitFor("WATCHDOG=1", longEnough));
    EXPECT_FALSE(qEnvironmentVariableIsSet("NOTIFY_SOCKET")) << "nobody inherits it";

    client.standsStill = true;
    add();
    poshost::QueueBell::ring(database->fileName());
    EXPECT_TRUE(soon([&] { return !manager.waitFor("WATCHDOG=1", 1000); }));

    client.standsStill = false;
    EXPECT_TRUE(manager.waitFor("WATCHDOG=1", longEnough));
}
