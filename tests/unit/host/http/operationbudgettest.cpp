// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/operationbudget.h"
#include "contract/rawserver.h"
#include "host/services/restclient.h"

#include <QElapsedTimer>
#include <QUrl>
#include <gtest/gtest.h>
#include <thread>

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace {

/// What a clock and a busy machine may add.
constexpr qint64 aBit = 250;

RawServer::Handler answeringAfter(int milliseconds)
{
    return [milliseconds](RawServer::Connection& connection) {
        while (connection.readRequest() && connection.pause(milliseconds)) {
            connection.send(RawServer::answer("200 OK", "fine"));
        }
    };
}

void hang(RawServer::Connection& connection)
{
    while (connection.readRequest()) {
        connection.hang();
    }
}

/// One request and how long it took.
struct Asked
{
    Asked(RawServer& server, int timeoutSeconds)
    {
        client.setTimeout(timeoutSeconds);
        clock.start();
        client.post(server.url(), "body", {});
        elapsed = clock.elapsed();
    }
    bool isAnswered() { return client.getError() == 0 && client.getResponse() == "fine"; }
    bool wasSent() { return client.getSendCount() > 0; }
    QString trouble() { return client.getErrorText().ru(); }

    RestClient client;
    QElapsedTimer clock;
    qint64 elapsed = 0;
};

const QString noAnswer = u"Сервер 127.0.0.1: нет ответа за отведённое время"_s;

class Heard : public poshost::RequestObserver
{
public:
    void requestBegins(const QString& host, milliseconds since, milliseconds atMost) override
    {
        ++begun;
        lastHost = host;
        lastSince = since.count();
        lastAtMost = atMost.count();
    }
    void requestEnded() override { ++ended; }

    int begun = 0;
    int ended = 0;
    QString lastHost;
    qint64 lastSince = -1;
    qint64 lastAtMost = -1;
};

TEST(OperationBudget, RequestsOfOneOperationShareTheTimeoutOfTheFirst)
{
    RawServer server(answeringAfter(600));
    const poshost::OperationBudget operation;
    Asked first(server, 1);
    EXPECT_TRUE(first.isAnswered());
    Asked second(server, 1);
    EXPECT_FALSE(second.isAnswered());
    EXPECT_EQ(second.trouble(), noAnswer);
    EXPECT_EQ(second.client.getErrorText().id(), u"restTransportError"_s);
    EXPECT_LE(first.elapsed + second.elapsed, 1000 + aBit);
    EXPECT_GE(first.elapsed + second.elapsed, 990);
    EXPECT_EQ(server.requests().size(), 2u);
}

TEST(OperationBudget, ALongerTimeoutOfALaterRequestDoesNotLengthenIt)
{
    RawServer quick(answeringAfter(0));
    RawServer silent(hang);
    const poshost::OperationBudget operation;
    Asked first(quick, 1);
    EXPECT_TRUE(first.isAnswered());
    Asked second(silent, 60);
    EXPECT_LE(second.elapsed, 1000 + aBit);
}

TEST(OperationBudget, ASilentServerIsNotAskedAgainAndOthersAre)
{
    RawServer quick(answeringAfter(0));
    RawServer silent(hang);
    const poshost::OperationBudget operation;
    Asked first(quick, 3);
    Asked second(silent, 1);
    EXPECT_TRUE(second.wasSent());
    Asked third(silent, 3);
    EXPECT_EQ(third.trouble(), noAnswer);
    EXPECT_FALSE(third.wasSent());
    EXPECT_LE(third.elapsed, aBit);
    EXPECT_EQ(silent.requests().size(), 1u);
    Asked fourth(quick, 3);
    EXPECT_TRUE(fourth.isAnswered());
}

TEST(OperationBudget, NothingIsSentWhenNothingIsLeft)
{
    RawServer silent(hang);
    RawServer quick(answeringAfter(0));
    const poshost::OperationBudget operation;
    Asked first(silent, 1);
    EXPECT_FALSE(first.isAnswered());
    Asked second(quick, 1);
    EXPECT_FALSE(second.wasSent());
    EXPECT_EQ(second.trouble(), noAnswer);
    EXPECT_GT(second.client.getError(), 0);
    EXPECT_EQ(second.client.getHttpStatusCode(), 0);
    EXPECT_EQ(quick.connections(), 0);
}

TEST(OperationBudget, NothingIsLeftAfterATimeoutAMillisecondTooEarly)
{
    const poshost::OperationBudget operation;
    {
        poshost::BudgetedRequest first(QUrl(u"http://127.0.0.1:1/"_s), milliseconds(200));
        EXPECT_EQ(first.allowed(), milliseconds(200));
        std::this_thread::sleep_for(milliseconds(195));
        first.timedOut();
    }
    EXPECT_EQ(poshost::BudgetedRequest(QUrl(u"http://127.0.0.1:2/"_s), milliseconds(200)).allowed(),
              milliseconds(0));
}

TEST(OperationBudget, WaitingBeforeTheFirstRequestCountsForNothing)
{
    RawServer server(answeringAfter(700));
    const poshost::OperationBudget operation;
    std::this_thread::sleep_for(milliseconds(500));
    Asked first(server, 1);
    EXPECT_TRUE(first.isAnswered());
}

TEST(OperationBudget, EveryOperationHasItsOwnAndAnInnerOneJoins)
{
    RawServer server(answeringAfter(600));
    for (int i = 0; i < 2; ++i) {
        const poshost::OperationBudget operation;
        Asked first(server, 1);
        EXPECT_TRUE(first.isAnswered()) << i;
        const poshost::OperationBudget inner;
        Asked second(server, 1);
        EXPECT_FALSE(second.isAnswered()) << i;
    }
    Asked outside(server, 1);
    Asked alone(server, 1);
    EXPECT_TRUE(outside.isAnswered() && alone.isAnswered());
}

TEST(OperationBudget, LimitsItsThreadOnly)
{
    RawServer silent(hang);
    RawServer quick(answeringAfter(0));
    const poshost::OperationBudget operation;
    Asked first(silent, 1);
    bool isAnswered = false;
    std::thread([&] { isAnswered = Asked(quick, 1).isAnswered(); }).join();
    EXPECT_TRUE(isAnswered);
}

TEST(OperationBudget, TheObserverHearsWhatIsWaitedFor)
{
    RawServer quick(answeringAfter(300));
    RawServer silent(hang);
    Heard heard;
    Heard innerHeard;
    {
        const poshost::OperationBudget operation(&heard);
        Asked first(quick, 1);
        EXPECT_EQ(heard.lastHost, u"127.0.0.1"_s);
        EXPECT_EQ(heard.lastSince, 0);
        EXPECT_EQ(heard.lastAtMost, 1000);
        const poshost::OperationBudget inner(&innerHeard);
        Asked second(silent, 1);
        EXPECT_GE(heard.lastSince, 300);
        EXPECT_EQ(heard.lastAtMost, 1000 - heard.lastSince);
        Asked third(quick, 1);
    }
    EXPECT_EQ(heard.begun, 2) << "the third was not sent";
    EXPECT_EQ(heard.ended, 2);
    EXPECT_EQ(innerHeard.begun, 0);
    Asked outside(quick, 1);
    EXPECT_EQ(heard.begun, 2);
}

} // namespace
