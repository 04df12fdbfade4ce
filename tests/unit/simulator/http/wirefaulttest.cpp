// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The faults that need a connection, seen byte by byte from a plain socket.

#include "simulator/faults/faultplan.h"
#include "simulator/faults/faultyservice.h"
#include "simulator/http/httpserver.h"
#include "tests/support/struck.h"
#include "tests/unit/simulator/wire.h"

#include <chrono>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace simulator {
namespace {

constexpr int faultPatience = 20'000; // milliseconds; an upper bound, not a wait

/// A client that sends one request.
class FaultyWire : public test::Wire
{
public:
    using Wire::Wire;

    void send() const
    {
        EXPECT_TRUE(Wire::send("POST /api/1.x/precheck HTTP/1.1\r\nHost: localhost\r\n"
                               "Content-Length: 4\r\n\r\nbody"));
    }

    /// Reads the headers and returns the length that they announce.
    size_t readHeaders()
    {
        const std::string head = readHead();
        EXPECT_TRUE(head.starts_with("HTTP/1.1 200 OK\r\n")) << head;
        return test::announcedLength(head);
    }
};

const std::string body(100, 'x');

/// A server whose every answer is a body of 100 bytes.
class WireFault : public ::testing::Test
{
protected:
    void fail(FaultKind kind, milliseconds duration = milliseconds(0))
    {
        FaultRule rule;
        rule.fault.kind = kind;
        rule.fault.duration = duration;
        plan.setRules({rule});
    }

    static Answer answer()
    {
        Answer made;
        made.contentType = "text/plain";
        made.body = QByteArray::fromStdString(body);
        return made;
    }

    FaultPlan plan;
    FaultyService faulty{[](const Request&) { return answer(); }, plan};
    std::unique_ptr<HttpServer> server = std::make_unique<HttpServer>(
        u"127.0.0.1"_s, 0, [this](const Request& from) { return faulty.handle(from); });
    FaultyWire wire{server->port()};
};

TEST_F(WireFault, lostRequestsAndRepliesCloseWithoutAByte)
{
    for (const FaultKind kind : {FaultKind::RequestLost, FaultKind::ReplyLost}) {
        fail(kind);
        FaultyWire one(server->port());
        one.send();
        EXPECT_EQ(one.read(), "") << describe(kind).name;
        EXPECT_TRUE(one.closed);
    }
}

TEST_F(WireFault, aHangBeforeHeadersEndsAfterItsTimeWithoutAByte)
{
    fail(FaultKind::HangBeforeHeaders, milliseconds(100));
    const auto start = std::chrono::steady_clock::now();
    wire.send();
    EXPECT_EQ(wire.read(), "");
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(100));
}

TEST_F(WireFault, aDelayedAnswerIsWhole)
{
    fail(FaultKind::Delay, milliseconds(100));
    const auto start = std::chrono::steady_clock::now();
    wire.send();
    EXPECT_EQ(wire.readHeaders(), body.size());
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(100));
    EXPECT_EQ(wire.read(body.size()), body);
}

TEST_F(WireFault, aHangAfterHeadersSendsNoBody)
{
    fail(FaultKind::HangAfterHeaders, milliseconds(100));
    wire.send();
    EXPECT_EQ(wire.readHeaders(), body.size());
    EXPECT_EQ(wire.read(), "");
}

TEST_F(WireFault, aDripSendsByteAfterByteInItsTime)
{
    fail(FaultKind::SlowDrip, milliseconds(1000));
    wire.send();
    EXPECT_EQ(wire.readHeaders(), body.size());
    EXPECT_EQ(wire.read(1), body.substr(0, 1));
    const auto first = std::chrono::steady_clock::now();
    EXPECT_EQ(wire.read(body.size() - 1), body.substr(1));
    EXPECT_GE(std::chrono::steady_clock::now() - first, milliseconds(300)) << "it comes at once";
}

TEST_F(WireFault, aCutBodyEndsInTheMiddle)
{
    fail(FaultKind::CutBody);
    wire.send();
    EXPECT_EQ(wire.readHeaders(), body.size());
    EXPECT_EQ(wire.read(), body.substr(50));
}

TEST_F(WireFault, aLengthThatIsTooLargeLetsTheClientWaitForMore)
{
    fail(FaultKind::LengthTooLarge);
    wire.send();
    EXPECT_EQ(wire.readHeaders(), body.size() + 20);
    EXPECT_EQ(wire.read(body.size()), body);
    EXPECT_TRUE(wire.isSilent());
}

TEST_F(WireFault, aLengthThatIsTooSmallIsFollowedByAllBytes)
{
    fail(FaultKind::LengthTooSmall);
    wire.send();
    EXPECT_EQ(wire.readHeaders(), body.size() / 2);
    EXPECT_EQ(wire.read(body.size()), body);
}

TEST_F(WireFault, garbledHeadersAreNoHttp)
{
    fail(FaultKind::GarbledHeaders);
    wire.send();
    const std::string got = wire.read();
    EXPECT_FALSE(got.empty());
    EXPECT_FALSE(got.starts_with("HTTP/"));
}

/// A server whose answers are all as one is made.
class WireAnswer : public ::testing::Test
{
protected:
    Answer made;
    std::mutex mutex;
    std::vector<quint64> connections; ///< of the requests
    const HttpServer server{u"127.0.0.1"_s, 0, [this](const Request& from) {
                                const std::scoped_lock lock(mutex);
                                connections.push_back(from.connection);
                                return made;
                            }};
};

TEST_F(WireAnswer, endsItsConnectionUnsaidWhereItIsToldTo)
{
    made.closesUnsaid = true;
    FaultyWire one(server.port());
    one.send();
    const std::string head = one.readHead();
    EXPECT_EQ(head.find("Connection: close"), std::string::npos) << head;
    EXPECT_EQ(one.read(), "");
    EXPECT_TRUE(one.closed);
}

TEST_F(WireAnswer, saysTheDateAndTheLengthThatItIsGiven)
{
    made.body = "0123456789";
    made.announced = 4;
    made.date = "some day";
    FaultyWire one(server.port());
    one.send();
    const std::string head = one.readHead();
    EXPECT_NE(head.find("\r\nDate: some day\r\n"), std::string::npos) << head;
    EXPECT_EQ(test::announcedLength(head), 4U);
    EXPECT_EQ(one.read(10), "0123456789");
    made.date = QByteArray();
    FaultyWire other(server.port());
    other.send();
    EXPECT_EQ(other.readHead().find("\r\nDate: "), std::string::npos);
}

TEST_F(WireAnswer, isMadeWithTheNumberOfTheConnection)
{
    FaultyWire one(server.port());
    FaultyWire other(server.port());
    one.send();
    one.readHead();
    other.send();
    other.readHead();
    one.send();
    one.readHead();
    const std::scoped_lock lock(mutex);
    ASSERT_EQ(connections.size(), 3U);
    EXPECT_EQ(connections[0], connections[2]);
    EXPECT_NE(connections[0], connections[1]);
}

TEST_F(WireFault, hangingEndsWithTheServerOrTheClient)
{
    fail(FaultKind::HangBeforeHeaders);
    constexpr int moreThanThereAreThreads = 80;
    for (int i = 0; i < moreThanThereAreThreads; ++i) {
        FaultyWire(server->port()).send(); // gone at once: its thread is free again
    }
    wire.send();
    const auto giveUp = std::chrono::steady_clock::now() + milliseconds(faultPatience);
    while (struckBy(plan) <= moreThanThereAreThreads) {
        ASSERT_LT(std::chrono::steady_clock::now(), giveUp);
        std::this_thread::yield();
    }
    fail(FaultKind::HangAfterHeaders);
    FaultyWire other(server->port());
    other.send();
    EXPECT_EQ(other.readHeaders(), body.size());
    const auto start = std::chrono::steady_clock::now();
    server.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
    EXPECT_EQ(wire.read(), "");
}

TEST_F(WireFault, theNextRequestIsAnsweredOnTheSameServer)
{
    for (const FaultDescription& row : faultDescriptions()) {
        if (row.stage == FaultStage::Connecting) {
            continue;
        }
        fail(row.kind, milliseconds(1));
        FaultyWire struck(server->port());
        struck.send();
        static_cast<void>(struck.read(1));
        plan.setRules({});
        FaultyWire next(server->port());
        next.send();
        EXPECT_EQ(next.readHeaders(), body.size()) << row.name;
        EXPECT_EQ(next.read(body.size()), body) << row.name;
    }
}

} // namespace
} // namespace simulator
