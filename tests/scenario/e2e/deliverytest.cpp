// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Whatever fails between closing and booking, the books agree in the end and nothing is booked
// twice.

#include "tests/support/gate.h"
#include "tests/support/shop.h"

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QThread>

#include <atomic>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

class DeliveryProgramTest : public Shop
{
protected:
    /// A sale whose check is closed while the server is away.
    void closeWithServerAway(Program& till)
    {
        expectOk(till.command(u"open sale.toml"_s));
        expectOk(till.command(u"points 50"_s));
        stopServer();
        expectOk(till.command(u"close"_s));
    }

    static void expectOk(const QString& answer)
    {
        EXPECT_TRUE(answer.endsWith(u"ok\n"_s)) << qPrintable(answer);
    }

    void expectBooksAgree(int checks) const
    {
        const QString books = tillBooks();
        EXPECT_EQ(books, serverBooks());
        EXPECT_EQ(books.count(u'\n'), 1 + checks) << qPrintable(books);
        EXPECT_EQ(undelivered(), 0);
    }

    /// How often the server confirmed a check, over all its lives.
    static qsizetype confirmations(const QString& serverLog)
    {
        static const QRegularExpression line(u"checkconfirm .* 200"_s);
        return serverLog.count(line);
    }
};

} // namespace

TEST_F(DeliveryProgramTest, ServerAwayBetweenPrecheckAndClosing)
{
    const auto till = startTill();
    closeWithServerAway(*till);
    EXPECT_EQ(undelivered(), 1);
    EXPECT_EQ(balance(), u"500.00"_s);

    startServer();

    expectOk(till->command(u"wait 60"_s));
    expectBooksAgree(1);
    EXPECT_NE(balance(), u"500.00"_s);
}

TEST_F(DeliveryProgramTest, ServerKilledBetweenPaymentTryAndConfirmation)
{
    std::atomic<bool> killed = false;
    const pid_t serverProcess = server->processId();
    const Gate gate(address, [serverProcess, &killed](const QString& endpoint) {
        if (endpoint == u"checkconfirm"_s && !killed.exchange(true)) {
            ::kill(serverProcess, SIGKILL);
        }
    });
    writeConfig(u"secret"_s, gate.address());

    const RunResult sold = till({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"all"_s});
    EXPECT_EQ(sold.exitCode, 0) << qPrintable(sold.output);
    // the first run may have ended before its delivery came so far
    while (!killed) {
        ASSERT_NE(till({u"queue"_s, u"deliver"_s}).exitCode, -1);
    }
    server->waitForEnd();
    EXPECT_EQ(undelivered(), 1);
    startServer();

    const auto working = startTill();
    expectOk(working->command(u"wait 60"_s));
    expectBooksAgree(1);
}

TEST_F(DeliveryProgramTest, TillKilledBetweenClosingAndDelivery)
{
    const auto till = startTill();
    closeWithServerAway(*till);
    till->kill();
    startServer();

    const auto again = startTill();

    expectOk(again->command(u"wait 60"_s));
    expectBooksAgree(1);
    stopServer();
    EXPECT_EQ(confirmations(server->output()), 1) << qPrintable(server->output());
}

TEST_F(DeliveryProgramTest, TwoTillsOnOneQueueDeliverEachMessageOnce)
{
    const auto first = startTill();
    const auto second = startTill();
    constexpr int checksEach = 3;
    for (int i = 0; i < checksEach; ++i) {
        for (const auto& till : {first.get(), second.get()}) {
            expectOk(till->command(u"open sale.toml"_s));
            expectOk(till->command(u"close"_s));
        }
    }

    expectOk(first->command(u"wait 60"_s));
    expectBooksAgree(2 * checksEach);
    stopServer();
    EXPECT_EQ(confirmations(server->output()), 2 * checksEach) << qPrintable(server->output());
    EXPECT_FALSE(server->output().contains(u" 409"_s)) << qPrintable(server->output());
}

TEST_F(DeliveryProgramTest, PasswordChangedWithFullQueueIsMendedByReauthorizing)
{
    const auto till = startTill();
    closeWithServerAway(*till);
    const auto attempts = [this] {
        const RunResult list = this->till({u"queue"_s, u"list"_s, u"--json"_s});
        const QJsonArray messages = QJsonDocument::fromJson(list.output.toUtf8()).array();
        return messages.at(0).toObject().value("attempts"_L1).toInt();
    };
    const QDeadlineTimer patience(std::chrono::seconds(20));
    while (attempts() == 0 && !patience.hasExpired()) {
        QThread::msleep(20);
    }
    ASSERT_GT(attempts(), 0);
    till->kill();
    const QString rules = runProgram(QStringLiteral(ORVA_SIMULATOR), {u"rules"_s}, folder()).output;
    ASSERT_TRUE(rules.contains(u"\"secret\""_s)) << qPrintable(rules);
    writeFile(u"rules.toml"_s, QString(rules).replace(u"\"secret\""_s, u"\"new secret\""_s));
    startServer(path(u"rules.toml"_s));

    // the till has found the server gone, and its queue still waits for it
    EXPECT_EQ(this->till({u"queue"_s, u"retry"_s, u"1"_s}).exitCode, 0);
    const RunResult refused = this->till({u"queue"_s, u"deliver"_s});
    EXPECT_EQ(refused.exitCode, 1) << qPrintable(refused.output);
    const RunResult list = this->till({u"queue"_s, u"list"_s});
    EXPECT_TRUE(list.output.contains(u"paused"_s)) << qPrintable(list.output);
    EXPECT_TRUE(list.output.contains(u"reauthorize"_s)) << qPrintable(list.output);

    writeConfig(u"new secret"_s);
    EXPECT_EQ(this->till({u"queue"_s, u"reauthorize"_s}).exitCode, 0);
    const RunResult delivered = this->till({u"queue"_s, u"deliver"_s});
    EXPECT_EQ(delivered.exitCode, 0) << qPrintable(delivered.output);
    expectBooksAgree(1);
}

TEST_F(DeliveryProgramTest, SuspendedCheckIsRestoredAfterTheTillWasKilled)
{
    auto till = startTill();
    expectOk(till->command(u"open sale.toml"_s));
    expectOk(till->command(u"points 20"_s));
    expectOk(till->command(u"suspend"_s));
    till->kill();

    till = startTill();
    expectOk(till->command(u"restore last"_s));
    expectOk(till->command(u"close"_s));
    expectOk(till->command(u"wait 60"_s));

    expectBooksAgree(1);
    EXPECT_TRUE(tillBooks().contains(u",20.00,"_s)) << qPrintable(tillBooks());
}

TEST_F(DeliveryProgramTest, PartialReturnsGiveBackExactlyWhatTheSaleBooked)
{
    const auto till = startTill();
    expectOk(till->command(u"open sale.toml"_s));
    expectOk(till->command(u"points all"_s));
    expectOk(till->command(u"close"_s));
    for (int pack = 0; pack < 2; ++pack) {
        expectOk(till->command(u"return return.toml"_s));
        expectOk(till->command(u"close"_s));
    }
    writeFile(u"return.toml"_s, u"type = \"return\"\nsale = \"1\"\n"
                                "[[line]]\nposition = 2\nquantity = 0.765\n"
                                "[[line]]\nposition = 3\nquantity = 1\n"_s);
    expectOk(till->command(u"return return.toml"_s));
    expectOk(till->command(u"close"_s));

    expectOk(till->command(u"wait 60"_s));
    expectBooksAgree(4);
    EXPECT_EQ(balance(), u"500.00"_s);
}

TEST_F(DeliveryProgramTest, SecondCustomersSaleWithServerAwayQueuesNothingOfTheFirst)
{
    const auto till = startTill();
    expectOk(till->command(u"open sale.toml"_s));
    expectOk(till->command(u"close"_s));
    expectOk(till->command(u"wait 60"_s));
    stopServer();

    writeFile(u"second.toml"_s, readFile(u"sale.toml"_s).replace(u"0017"_s, u"0024"_s));
    till->command(u"open second.toml"_s);
    const QString slip = till->command(u"close"_s);

    expectOk(slip);
    EXPECT_EQ(undelivered(), 0);
    startServer();
    expectBooksAgree(1);
}

TEST_F(DeliveryProgramTest, AbandonedCheckLeavesNothingInTheQueue)
{
    const auto till = startTill();
    expectOk(till->command(u"open sale.toml"_s));
    expectOk(till->command(u"abandon"_s));

    expectBooksAgree(0);
    EXPECT_EQ(balance(), u"500.00"_s);
}
