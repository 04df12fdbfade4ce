// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/rawserver.h"
#include "contract/subject.h"

#include <QElapsedTimer>

#include <barrier>
#include <gtest/gtest.h>
#include <thread>

using namespace Qt::StringLiterals;

void contract::addRestFailurePromises() {}

namespace contract {
namespace {

void expectTransportFailure(RestClient& client)
{
    EXPECT_GT(client.getError(), 0);
    EXPECT_EQ(client.getHttpStatusCode(), 0);
    EXPECT_TRUE(client.getResponse().isEmpty());
    EXPECT_FALSE(client.getErrorText().isEmpty());
}

TEST(RestClientContract, AnAddressWhereNobodyListensIsATransportFailure)
{
    QUrl url;
    {
        RawServer gone(RawServer::answering({}));
        url = gone.url();
    }
    const auto client = subject().makeRestClient();
    client->post(url, "body", {});
    expectTransportFailure(*client);
    EXPECT_EQ(client->getSendCount(), 0) << "no connection came about";
}

TEST(RestClientContract, AnAddressThatCannotBeUsedIsAFailureAndNotAnException)
{
    for (const QString& address : {QString(), u"http://"_s, u"file:///etc/hostname"_s}) {
        const auto client = subject().makeRestClient();
        EXPECT_NO_THROW(client->post(QUrl(address), "body", {})) << address.toStdString();
        EXPECT_GT(client->getError(), 0) << address.toStdString();
        EXPECT_EQ(client->getHttpStatusCode(), 0) << address.toStdString();
    }
}

TEST(RestClientContract, AnAnswerThatIsCutShortIsAFailureWithoutABody)
{
    RawServer server([](RawServer::Connection& connection) {
        if (connection.readRequest()) {
            connection.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n<half");
        }
    });
    const auto client = subject().makeRestClient();
    client->post(server.url(), "body", {});
    EXPECT_GT(client->getError(), 0);
    EXPECT_TRUE(client->getResponse().isEmpty());
    EXPECT_FALSE(client->getErrorText().isEmpty());
}

TEST(RestClientContract, NeverBlocksLongerThanTheTimeOut)
{
    RawServer server([](RawServer::Connection& connection) {
        if (connection.readRequest()) {
            connection.hang();
        }
    });
    const auto client = subject().makeRestClient();
    client->setTimeout(1);
    QElapsedTimer timer;
    timer.start();
    client->post(server.url(), "body", {});
    EXPECT_GE(timer.elapsed(), 900) << "gives up before the time-out";
    EXPECT_LT(timer.elapsed(), 2000) << "the time-out was one second";
    expectTransportFailure(*client);
}

TEST(RestClientContract, AbortFromAnotherThreadEndsAPost)
{
    std::barrier reached(2);
    RawServer server([&reached](RawServer::Connection& connection) {
        if (connection.readRequest()) {
            reached.arrive_and_wait();
            connection.hang();
        }
    });
    const auto client = subject().makeRestClient();
    client->setTimeout(30);
    std::thread aborting([&] {
        reached.arrive_and_wait();
        client->abort();
    });
    QElapsedTimer timer;
    timer.start();
    client->post(server.url(), "body", {});
    aborting.join();
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_GT(client->getError(), 0);
    client->post(server.url(), "body", {});
    EXPECT_GT(client->getError(), 0) << "every later post of this object fails too";
}

} // namespace
} // namespace contract
