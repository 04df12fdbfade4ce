// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The delivery as the packages' service: what the unit file starts, with a service manager's socket
// of the test's own.

#include "host/queue/queuebell.h"
#include "tests/support/gate.h"
#include "tests/support/notifysocket.h"
#include "tests/support/shop.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <future>
#include <poll.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 withinASecond = 1000;
constexpr int longEnough = 30'000;

/// Lets one endpoint's requests wait until it is opened.
class Barrier
{
public:
    void waitAt(const QString& endpoint)
    {
        if (endpoint == u"checkconfirm"_s) {
            reached.set_value();
            opened.get_future().wait();
        }
    }
    bool isReached()
    {
        return reached.get_future().wait_for(std::chrono::seconds(30)) == std::future_status::ready;
    }
    void open() { opened.set_value(); }

private:
    std::promise<void> reached;
    std::promise<void> opened;
};

class ServiceTest : public Shop
{
protected:
    /// The line of the unit file, with this build's program and the shop's settings in it.
    QStringList execStart(const QString& config = u"orva.toml"_s) const
    {
        QFile unit(QStringLiteral(ORVA_UNIT_FILE));
        EXPECT_TRUE(unit.open(QIODevice::ReadOnly));
        for (const QByteArray& line : unit.readAll().split('\n')) {
            if (line.startsWith("ExecStart=")) {
                QString command = QString::fromUtf8(line.mid(10));
                EXPECT_TRUE(command.contains(u"/usr/bin/orva-till "_s)) << qPrintable(command);
                EXPECT_TRUE(command.contains(u"/etc/orva/orva.toml "_s)) << qPrintable(command);
                command.replace(u"/usr/bin/orva-till"_s, QStringLiteral(ORVA_TILL));
                command.replace(u"/etc/orva/orva.toml"_s, path(config));
                return command.split(u' ');
            }
        }
        ADD_FAILURE() << "the unit file starts nothing";
        return {};
    }

    std::unique_ptr<Program> startService(const QStringList& environment = {},
                                          const QString& config = u"orva.toml"_s)
    {
        auto service = std::make_unique<Program>(
            u"/usr/bin/env"_s,
            QStringList{u"NOTIFY_SOCKET="_s + path(u"notify"_s)} + environment + execStart(config),
            folder());
        EXPECT_TRUE(manager->waitFor("READY=1", longEnough)) << qPrintable(service->output());
        return service;
    }

    void SetUp() override
    {
        Shop::SetUp();
        manager = std::make_unique<NotifySocket>(path(u"notify"_s));
    }

    static void expectOk(const QString& answer)
    {
        EXPECT_TRUE(answer.endsWith(u"ok\n"_s)) << qPrintable(answer);
    }

    /// @return milliseconds until it had ended
    static qint64 endOf(Program& service)
    {
        QElapsedTimer clock;
        clock.start();
        service.terminate();
        return clock.elapsed();
    }

    /// @return milliseconds until nothing was left in the queue
    qint64 untilDelivered(const QString& database = u"till.sqlite"_s) const
    {
        QElapsedTimer clock;
        clock.start();
        while (runProgram(QStringLiteral(ORVA_TILL),
                          {u"--database"_s, path(database), u"queue"_s, u"list"_s, u"--json"_s},
                          folder())
                   .output.simplified() != u"[ ]"_s) {
            if (clock.hasExpired(longEnough)) {
                ADD_FAILURE() << "not delivered";
                break;
            }
        }
        return clock.elapsed();
    }

    std::unique_ptr<NotifySocket> manager;
};

} // namespace

TEST_F(ServiceTest, SaysThatItIsReadyThatItLivesAndThatItEnds)
{
    const auto service = startService({u"WATCHDOG_USEC=400000"_s});
    for (int ping = 0; ping < 4; ++ping) {
        EXPECT_TRUE(manager->waitFor("WATCHDOG=1", 400 + int(withinASecond))) << ping;
    }

    EXPECT_LE(endOf(*service), withinASecond);

    EXPECT_EQ(service->waitForEnd(), 0) << qPrintable(service->output());
    EXPECT_TRUE(manager->waitFor("STOPPING=1", 0));
    EXPECT_EQ(service->output(), QString()) << "it is told to be quiet";
}

TEST_F(ServiceTest, PingsNobodyWhoseWatchdogIsMeantForAnotherProcess)
{
    const auto service = startService({u"WATCHDOG_USEC=20000"_s, u"WATCHDOG_PID=1"_s});
    EXPECT_FALSE(manager->waitFor("WATCHDOG=1", 300));
    EXPECT_LE(endOf(*service), withinASecond);
}

TEST_F(ServiceTest, SpeaksToASocketThatStandsInNoFolder)
{
    const QString name = u"@orva-service-test-%1"_s.arg(QCoreApplication::applicationPid());
    NotifySocket socket(name);
    Program service(u"/usr/bin/env"_s, QStringList{u"NOTIFY_SOCKET="_s + name} + execStart(),
                    folder());
    EXPECT_TRUE(socket.waitFor("READY=1", longEnough)) << qPrintable(service.output());
    EXPECT_LE(endOf(service), withinASecond);
}

TEST_F(ServiceTest, TakesOverAtOnceWhatATillThatHasEndedLeaves)
{
    Barrier barrier;
    {
        const Gate gate(address, [&](const QString& endpoint) { barrier.waitAt(endpoint); });
        // the till goes through the gate, where its own delivery stands still; the service does not
        const QString direct = address;
        writeConfig(u"secret"_s, direct);
        writeFile(u"service.toml"_s, readFile(u"orva.toml"_s));
        writeFile(u"orva.toml"_s,
                  readFile(u"orva.toml"_s) + u"[http]\nproxy = \"%1\"\n"_s.arg(gate.address()));
        const auto till = startTill();
        expectOk(till->command(u"open sale.toml"_s));
        expectOk(till->command(u"close"_s));
        EXPECT_TRUE(barrier.isReached());
        const auto service = startService({}, u"service.toml"_s);
        EXPECT_EQ(undelivered(), 1);
        till->send(u"quit"_s);
        EXPECT_EQ(till->waitForEnd(), 0) << qPrintable(till->output());
        EXPECT_LE(untilDelivered(), withinASecond);
        EXPECT_LE(endOf(*service), withinASecond);
        barrier.open();
    }
    EXPECT_EQ(tillBooks(), serverBooks());
}

TEST_F(ServiceTest, HearsOfAClosedCheckWhileTheTillGoesOn)
{
    writeConfig();
    EXPECT_EQ(till({u"queue"_s, u"list"_s}).exitCode, 0);
    poshost::QueueBell bell(path(u"till.sqlite"_s));
    const auto till = startTill();
    expectOk(till->command(u"open sale.toml"_s));
    pollfd awaited{bell.descriptor(), POLLIN, 0};
    EXPECT_EQ(::poll(&awaited, 1, 0), 0) << "nothing is closed yet";

    expectOk(till->command(u"close"_s));

    EXPECT_EQ(::poll(&awaited, 1, int(withinASecond)), 1);
}

TEST_F(ServiceTest, DeliversAtOnceWhatIsMadeDue)
{
    const auto service = startService();
    {
        const auto till = startTill();
        expectOk(till->command(u"open sale.toml"_s));
        expectOk(till->command(u"points 50"_s));
        stopServer();
        expectOk(till->command(u"close"_s));
        till->kill();
    }
    EXPECT_EQ(till({u"queue"_s, u"park"_s, u"1"_s}).exitCode, 0);
    startServer();

    EXPECT_EQ(till({u"queue"_s, u"retry"_s, u"1"_s}).exitCode, 0);

    EXPECT_LE(untilDelivered(), withinASecond);
    EXPECT_LE(endOf(*service), withinASecond);
    EXPECT_EQ(tillBooks(), serverBooks());
}

TEST_F(ServiceTest, EndsWithinASecondInTheMiddleOfARequest)
{
    Barrier barrier;
    {
        const Gate gate(address, [&](const QString& endpoint) { barrier.waitAt(endpoint); });
        writeConfig(u"secret"_s, gate.address());
        {
            const auto till = startTill();
            expectOk(till->command(u"open sale.toml"_s));
            expectOk(till->command(u"close"_s));
            till->kill();
        }
        const auto service = startService();
        EXPECT_TRUE(barrier.isReached());
        EXPECT_LE(endOf(*service), withinASecond);
        EXPECT_EQ(service->waitForEnd(), 0);
        EXPECT_TRUE(manager->waitFor("STOPPING=1", 0));
        barrier.open();
    }
    EXPECT_EQ(undelivered(), 1) << "nothing is lost";
}

TEST_F(ServiceTest, BesideTillsEveryMessageGoesOutOnce)
{
    const auto service = startService();
    const auto first = startTill();
    const auto second = startTill();
    constexpr int checksEach = 4;
    for (int i = 0; i < checksEach; ++i) {
        for (const auto& till : {first.get(), second.get()}) {
            expectOk(till->command(u"open sale.toml"_s));
            expectOk(till->command(u"close"_s));
        }
    }

    expectOk(first->command(u"wait 60"_s));

    EXPECT_EQ(tillBooks(), serverBooks());
    EXPECT_LE(endOf(*service), withinASecond);
    stopServer();
    EXPECT_EQ(server->output().count(u"checkconfirm"_s), 2 * checksEach)
        << qPrintable(server->output());
    EXPECT_FALSE(server->output().contains(u" 409"_s)) << qPrintable(server->output());
}

TEST_F(ServiceTest, SettingsThatCannotBeReadEndItWithTwo)
{
    writeFile(u"orva.toml"_s, u"[Orva\n"_s);
    Program service(u"/usr/bin/env"_s,
                    QStringList{u"NOTIFY_SOCKET="_s + path(u"notify"_s)} + execStart(), folder());
    EXPECT_EQ(service.waitForEnd(), 2) << qPrintable(service.output());
    EXPECT_FALSE(manager->waitFor("READY=1", 0));
}
