// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/rawserver.h"
#include "contract/subject.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

void contract::addRestClientPromises() {}

namespace contract {
namespace {

TEST(RestClientContract, AnswersZeroAndEmptyBeforeAPost)
{
    const auto client = subject().makeRestClient();
    EXPECT_EQ(client->getError(), 0);
    EXPECT_EQ(client->getHttpStatusCode(), 0);
    EXPECT_EQ(client->getSendCount(), 0);
    EXPECT_TRUE(client->getErrorText().isEmpty());
    EXPECT_TRUE(client->getResponse().isEmpty());
    EXPECT_TRUE(client->getResponseHeader(u"Retry-After"_s).isEmpty());
}

TEST(RestClientContract, PostsTheBodyWithTheHeadersOnce)
{
    RawServer server(RawServer::answering(RawServer::answer("200 OK", "<ok/>")));
    const auto client = subject().makeRestClient();
    const QByteArray body = "<RawCheck>Ёж</RawCheck>\r\n";
    client->post(
        server.url(), body,
        {{u"Content-Type"_s, u"application/xml"_s}, {u"Authorization"_s, u"Basic dTpwOms="_s}});
    ASSERT_EQ(server.requests().size(), 1u);
    const std::string request = server.requests().front();
    EXPECT_TRUE(request.starts_with("POST /api/1.x/precheck HTTP/1.")) << request;
    EXPECT_TRUE(request.ends_with("\r\n\r\n" + body.toStdString())) << request;
    EXPECT_THAT(request, HasSubstr("\r\nContent-Type: application/xml\r\n"));
    EXPECT_THAT(request, HasSubstr("\r\nAuthorization: Basic dTpwOms=\r\n"));
    EXPECT_EQ(client->getSendCount(), 1);
}

TEST(RestClientContract, ReadsTheWholeAnswer)
{
    const std::string body(200'000, 'x');
    RawServer server(RawServer::answering(RawServer::answer("200 OK", body)));
    const auto client = subject().makeRestClient();
    client->post(server.url(), "body", {});
    EXPECT_EQ(client->getError(), 0) << client->getErrorText().ru().toStdString();
    EXPECT_EQ(client->getHttpStatusCode(), 200);
    EXPECT_TRUE(client->getErrorText().isEmpty());
    EXPECT_TRUE(client->getResponse().toStdString() == body)
        << client->getResponse().size() << " bytes";
}

TEST(RestClientContract, AStatusFrom400UpIsAnErrorWithItsBody)
{
    for (const int status : {400, 401, 404, 409, 429, 500, 503, 599}) {
        RawServer server(RawServer::answering(
            RawServer::answer(std::to_string(status) + " Status", "the reason")));
        const auto client = subject().makeRestClient();
        client->post(server.url(), "body", {});
        EXPECT_GT(client->getError(), 0) << status;
        EXPECT_EQ(client->getHttpStatusCode(), status);
        EXPECT_EQ(client->getResponse(), "the reason") << status;
        EXPECT_FALSE(client->getErrorText().isEmpty()) << status;
        EXPECT_EQ(server.requests().size(), 1u) << "an answered request is not sent again";
    }
}

TEST(RestClientContract, AStatusBelow400IsNoError)
{
    for (const int status : {200, 201, 302, 399}) {
        RawServer server(
            RawServer::answering(RawServer::answer(std::to_string(status) + " Status", "body")));
        const auto client = subject().makeRestClient();
        client->post(server.url(), "body", {});
        EXPECT_EQ(client->getError(), 0) << status;
        EXPECT_EQ(client->getHttpStatusCode(), status);
    }
}

TEST(RestClientContract, AnswerHeadersAreFoundWhateverTheirCaseTheLastOneCounts)
{
    RawServer server(RawServer::answering(RawServer::answer(
        "503 Busy", "", "Retry-After: 17\r\nX-Twice: first\r\nx-twice: last\r\n")));
    const auto client = subject().makeRestClient();
    client->post(server.url(), "body", {});
    EXPECT_EQ(client->getResponseHeader(u"retry-after"_s), u"17"_s);
    EXPECT_EQ(client->getResponseHeader(u"RETRY-AFTER"_s), u"17"_s);
    EXPECT_EQ(client->getResponseHeader(u"X-Twice"_s), u"last"_s);
    EXPECT_EQ(client->getResponseHeader(u"X-Absent"_s), QString());
}

TEST(RestClientContract, ASecondPostForgetsTheFirst)
{
    RawServer refusing(
        RawServer::answering(RawServer::answer("424 Failed", "reason", "Retry-After: 5\r\n")));
    RawServer agreeing(RawServer::answering(RawServer::answer("200 OK")));
    const auto client = subject().makeRestClient();
    client->post(refusing.url(), "body", {});
    client->post(agreeing.url(), "body", {});
    EXPECT_EQ(client->getError(), 0);
    EXPECT_EQ(client->getHttpStatusCode(), 200);
    EXPECT_TRUE(client->getErrorText().isEmpty());
    EXPECT_TRUE(client->getResponse().isEmpty());
    EXPECT_TRUE(client->getResponseHeader(u"Retry-After"_s).isEmpty());
}

TEST(RestClientContract, ASecondRequestToAServerOpensNoNewConnection)
{
    RawServer server(RawServer::answering(RawServer::answer("200 OK", "<ok/>")));
    for (int i = 0; i < 3; ++i) {
        const auto client = subject().makeRestClient();
        client->post(server.url(), "body", {});
        EXPECT_EQ(client->getError(), 0);
    }
    EXPECT_EQ(server.connections(), 1);
    EXPECT_EQ(server.requests().size(), 3u);
}

} // namespace
} // namespace contract
