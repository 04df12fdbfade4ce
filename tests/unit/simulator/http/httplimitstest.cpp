// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the server bears from clients that are careless, broken or hostile, byte by byte.

#include "simulator/http/httpserver.h"
#include "tests/unit/simulator/wire.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>
#include <vector>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

const std::string largest = std::to_string(HttpServer::maximumBody);

std::string rawPost(const std::string& headers, const std::string& body = {})
{
    return "POST /echo HTTP/1.1\r\nHost: localhost\r\n" + headers + "\r\n" + body;
}

std::string posted(const std::string& body)
{
    return rawPost("Content-Length: " + std::to_string(body.size()) + "\r\n", body);
}

/// A server that answers a request with its body. Those to /closed may have none.
class HttpLimits : public testing::Test
{
protected:
    static Answer echo(const Request& request)
    {
        if (request.path != "/echo") {
            return refusal(401, u"not for you"_s);
        }
        Answer answer;
        answer.contentType = "text/plain";
        answer.body = request.method + ' ' + request.body;
        return answer;
    }

    /// The answer to those bytes on a new connection.
    Wire::Answer answerTo(const std::string& bytes)
    {
        Wire wire(server.port());
        wire.send(bytes);
        return wire.readAnswer();
    }

    HttpServer server{u"127.0.0.1"_s, 0, &HttpLimits::echo, {}, {}, [](const Request& request) {
                          return request.path == "/echo" ? HttpServer::maximumBody : 0;
                      }};
};

TEST_F(HttpLimits, pipelinedRequestsAreAnsweredEachInTheirOrder)
{
    Wire wire(server.port());
    std::string all;
    for (int i = 0; i < 50; ++i) {
        all += posted("body " + std::to_string(i));
    }
    ASSERT_TRUE(wire.send(all + posted(std::string(20'000, 'x')) + posted("last")));
    for (int i = 0; i < 50; ++i) {
        ASSERT_EQ(wire.readAnswer().body, "POST body " + std::to_string(i));
    }
    EXPECT_EQ(wire.readAnswer().body, "POST " + std::string(20'000, 'x'));
    EXPECT_EQ(wire.readAnswer().body, "POST last");
    EXPECT_TRUE(wire.isSilent());
}

TEST_F(HttpLimits, aRequestMayComeByteByByte)
{
    Wire wire(server.port());
    for (const char byte : posted("body")) {
        ASSERT_TRUE(wire.send(std::string(1, byte)));
    }
    EXPECT_EQ(wire.readAnswer().body, "POST body");
}

TEST_F(HttpLimits, aBodyMayComeInPieces)
{
    const std::string chunked = "Transfer-Encoding: chunked\r\n";
    Wire wire(server.port());
    wire.send(rawPost(chunked, "2\r\nbo\r\n2;x=y\r\ndy\r\n0\r\nTrailer: x\r\n\r\n") +
              posted("next"));
    EXPECT_EQ(wire.readAnswer().body, "POST body");
    EXPECT_EQ(wire.readAnswer().body, "POST next");
    for (const char* garbled :
         {"-2\r\nbo\r\n", "zz\r\n", "\r\n", "2\r\nbody\r\n", "FFFFFFFFFFFFFFFFF\r\n"}) {
        EXPECT_EQ(answerTo(rawPost(chunked, garbled)).status, 400) << garbled;
    }
    EXPECT_EQ(answerTo(rawPost(chunked, "FFFFFFF\r\n")).status, 413);
}

TEST_F(HttpLimits, aLengthBeyondTheLimitIsRefusedBeforeTheBodyComes)
{
    for (const char* length :
         {"16777217", "4294967297", "9223372036854775808", "18446744073709551615",
          "18446744073709551616", "99999999999999999999999999"}) {
        Wire wire(server.port());
        wire.send(rawPost("Content-Length: " + std::string(length) + "\r\n"));
        const Wire::Answer answer = wire.readAnswer();
        EXPECT_EQ(answer.status, 413) << length;
        EXPECT_EQ(answer.body, "The body is larger than 16 MiB\n");
        EXPECT_NE(answer.head.find("Connection: close\r\n"), std::string::npos);
    }
}

TEST_F(HttpLimits, aLengthThatIsNoneIsRefused)
{
    for (const char* length : {"-1", "-9223372036854775808", "+5", "5,5", "0x10", "five", ""}) {
        const Wire::Answer answer =
            answerTo(rawPost("Content-Length: " + std::string(length) + "\r\n"));
        EXPECT_EQ(answer.status, 400) << length;
        EXPECT_EQ(answer.body, "The Content-Length is no whole number from 0 up\n");
    }
}

TEST_F(HttpLimits, headsThatCouldBeReadInTwoWaysAreRefused)
{
    for (const char* head :
         {"Content-Length: 1\r\nContent-Length: 2\r\n",
          "Content-Length: 1\r\nTransfer-Encoding: chunked\r\n", "Content-Length : 1\r\n",
          "X: a\r\n folded\r\n", "X: a\nContent-Length: 1\r\n", "Host: other\r\n", "no header\r\n",
          "X: \x01\r\n", ": x\r\n"}) {
        EXPECT_EQ(answerTo(rawPost(head)).status, 400) << head;
    }
    EXPECT_EQ(answerTo("GET /echo HTTP/1.1\r\n\r\n").status, 400) << "without a Host";
    EXPECT_EQ(answerTo("GET http://other/ HTTP/1.1\r\nHost: x\r\n\r\n").status, 400);
    EXPECT_EQ(answerTo("GET  /echo HTTP/1.1\r\nHost: x\r\n\r\n").status, 400);
    EXPECT_EQ(answerTo("\x16\x03\x01 hello\r\n\r\n").status, 400);
    EXPECT_EQ(answerTo("GET /echo HTTP/2.0\r\nHost: x\r\n\r\n").status, 505);
    EXPECT_EQ(answerTo(rawPost("Transfer-Encoding: gzip, chunked\r\n")).status, 501);
    EXPECT_EQ(answerTo(rawPost("Content-Encoding: gzip\r\nContent-Length: 1\r\n", "x")).status,
              415);
}

TEST_F(HttpLimits, aHeadHas32KiBAnd100Headers)
{
    const std::string name = "X: ";
    EXPECT_EQ(answerTo(rawPost(name + std::string(30'000, 'x') + "\r\n")).status, 200);
    EXPECT_EQ(answerTo(rawPost(name + std::string(33'000, 'x') + "\r\n")).status, 431);
    EXPECT_EQ(answerTo(std::string(40'000, 'G')).status, 431) << "a line without an end";
    std::string many;
    for (int i = 0; i < 99; ++i) {
        many += "X: y\r\n";
    }
    EXPECT_EQ(answerTo(rawPost(many)).status, 200);
    EXPECT_EQ(answerTo(rawPost(many + "X: y\r\n")).status, 431);
}

TEST_F(HttpLimits, theAnswerToARequestThatMayHaveNoBodyDoesNotWaitForIt)
{
    for (const std::string& headers :
         {"Content-Length: " + largest + "\r\n", std::string("Transfer-Encoding: chunked\r\n"),
          std::string("Expect: 100-continue\r\nContent-Length: 9\r\n")}) {
        const Wire::Answer answer =
            answerTo("POST /closed HTTP/1.1\r\nHost: localhost\r\n" + headers + "\r\n");
        EXPECT_EQ(answer.status, 401) << headers;
        EXPECT_EQ(answer.body, "not for you\n");
    }
}

TEST_F(HttpLimits, aSmallBodyOfARefusedRequestLeavesTheConnectionUsable)
{
    Wire wire(server.port());
    wire.send("POST /closed HTTP/1.1\r\nHost: localhost\r\nContent-Length: 4\r\n\r\nbody" +
              posted("next"));
    EXPECT_EQ(wire.readAnswer().status, 401);
    EXPECT_EQ(wire.readAnswer().body, "POST next");
}

TEST_F(HttpLimits, whoeverAsksFirstIsToldToSend)
{
    Wire wire(server.port());
    wire.send(rawPost("Expect: 100-continue\r\nContent-Length: 4\r\n"));
    EXPECT_EQ(wire.readHead(), "HTTP/1.1 100 Continue\r\n\r\n");
    wire.send("body");
    EXPECT_EQ(wire.readAnswer().body, "POST body");
}

TEST_F(HttpLimits, theAnswerToHeadHasNoBody)
{
    Wire wire(server.port());
    wire.send("HEAD /echo HTTP/1.1\r\nHost: localhost\r\n\r\n" + posted("next"));
    EXPECT_TRUE(wire.readHead().starts_with("HTTP/1.1 200 "));
    EXPECT_EQ(wire.readAnswer().body, "POST next");
}

TEST_F(HttpLimits, theOldVersionEndsTheConnectionUnlessItIsAskedToKeepIt)
{
    Wire wire(server.port());
    wire.send("GET /echo HTTP/1.0\r\nConnection: keep-alive\r\n\r\nGET /echo HTTP/1.0\r\n\r\n");
    EXPECT_EQ(wire.readAnswer().body, "GET ");
    EXPECT_EQ(wire.readAnswer().body, "GET ");
    EXPECT_EQ(wire.read(), "");
    EXPECT_TRUE(wire.closed);
}

TEST(HttpMemory, onlyTwoOfTheLargestBodiesAreReadAtATime)
{
    constexpr std::chrono::seconds patience(20);
    constexpr int clients = 5;
    std::mutex mutex;
    std::condition_variable changed;
    int announced = 0;
    HttpServer server(
        u"127.0.0.1"_s, 0, [](const Request&) { return refusal(418, u"read"_s); }, {}, {},
        [&](const Request&) {
            const std::scoped_lock lock(mutex);
            ++announced;
            changed.notify_all();
            return HttpServer::maximumBody;
        });
    std::vector<std::unique_ptr<Wire>> wires;
    for (int i = 0; i < clients; ++i) {
        wires.push_back(std::make_unique<Wire>(server.port()));
        wires.back()->send(rawPost("Expect: 100-continue\r\nContent-Length: " + largest + "\r\n"));
    }
    {
        std::unique_lock lock(mutex);
        ASSERT_TRUE(changed.wait_for(lock, patience, [&] { return announced >= clients; }));
    }
    std::vector<Wire*> let;
    std::vector<Wire*> waiting;
    const auto sort = [&] {
        let.clear();
        waiting.clear();
        for (const auto& wire : wires) {
            (wire->isSilent() ? waiting : let).push_back(wire.get());
        }
    };
    const auto giveUp = std::chrono::steady_clock::now() + patience;
    for (sort(); let.size() < 2; sort()) {
        ASSERT_LT(std::chrono::steady_clock::now(), giveUp);
        Wire small(server.port()); // waits for nobody
        small.send(posted("small"));
        EXPECT_EQ(small.readAnswer().status, 418);
    }
    for (int i = 0; i < 50; ++i) { // time in which the others could come through
        Wire small(server.port());
        small.send(posted("small"));
        EXPECT_EQ(small.readAnswer().status, 418);
    }
    sort();
    ASSERT_EQ(let.size(), 2U);
    const std::string body(HttpServer::maximumBody, 'x');
    const auto serve = [&body](Wire& wire) {
        EXPECT_EQ(wire.readHead(), "HTTP/1.1 100 Continue\r\n\r\n");
        EXPECT_TRUE(wire.send(body));
        EXPECT_EQ(wire.readAnswer().status, 418);
    };
    for (Wire* wire : let) {
        serve(*wire);
    }
    while (!waiting.empty()) { // they have their turn now, in whichever order
        const auto next = std::find_if(waiting.begin(), waiting.end(),
                                       [](const Wire* wire) { return !wire->isSilent(); });
        if (next != waiting.end()) {
            serve(**next);
            waiting.erase(next);
        }
        ASSERT_LT(std::chrono::steady_clock::now(), giveUp + patience);
    }
}

} // namespace
} // namespace simulator::test
