// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The faults that need a connection, seen byte by byte from a plain socket.

#include "simulator/faultplan.h"
#include "simulator/faultyservice.h"
#include "simulator/httpserver.h"

#include <arpa/inet.h>
#include <chrono>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace simulator {
namespace {

constexpr int patience = 20'000; // milliseconds; an upper bound, not a wait

/// A connection to a port of the loopback.
class Wire
{
public:
    explicit Wire(int port) : descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(::connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    }
    ~Wire() { ::close(descriptor); }
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;

    void send() const
    {
        const std::string request = "POST /api/1.x/precheck HTTP/1.1\r\nHost: localhost\r\n"
                                    "Content-Length: 4\r\n\r\nbody";
        EXPECT_EQ(::send(descriptor, request.data(), request.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(request.size()));
    }

    /// What comes until that many bytes are there or the server closes.
    std::string read(size_t most = std::string::npos)
    {
        std::string all;
        pollfd waiting{descriptor, POLLIN, 0};
        while (all.size() < most) {
            if (::poll(&waiting, 1, patience) != 1) {
                ADD_FAILURE() << "nothing comes after: " << all;
                break;
            }
            char byte = 0;
            if (::recv(descriptor, &byte, 1, 0) != 1) {
                closed = true;
                break;
            }
            all += byte;
        }
        return all;
    }

    /// Reads the headers and returns the length that they announce.
    size_t readHeaders()
    {
        std::string head;
        while (!head.ends_with("\r\n\r\n") && !closed) {
            head += read(1);
        }
        EXPECT_TRUE(head.starts_with("HTTP/1.1 200 OK\r\n")) << head;
        const size_t at = head.find("Content-Length: ");
        EXPECT_NE(at, std::string::npos) << head;
        return at == std::string::npos ? 0 : std::stoul(head.substr(at + 16));
    }

    bool isSilent() const
    {
        pollfd waiting{descriptor, POLLIN, 0};
        return ::poll(&waiting, 1, 0) == 0;
    }

    bool closed = false;

private:
    const int descriptor;
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
    Wire wire{server->port()};
};

TEST_F(WireFault, lostRequestsAndRepliesCloseWithoutAByte)
{
    for (const FaultKind kind : {FaultKind::RequestLost, FaultKind::ReplyLost}) {
        fail(kind);
        Wire one(server->port());
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

TEST_F(WireFault, aDripSendsAllInItsTime)
{
    fail(FaultKind::SlowDrip, milliseconds(200));
    const auto start = std::chrono::steady_clock::now();
    wire.send();
    EXPECT_EQ(wire.readHeaders(), body.size());
    EXPECT_EQ(wire.read(body.size()), body);
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(200));
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

TEST_F(WireFault, hangingEndsWithTheServerOrTheClient)
{
    fail(FaultKind::HangBeforeHeaders);
    constexpr int moreThanThereAreThreads = 80;
    for (int i = 0; i < moreThanThereAreThreads; ++i) {
        Wire(server->port()).send(); // gone at once: its thread is free again
    }
    wire.send();
    const auto giveUp = std::chrono::steady_clock::now() + milliseconds(patience);
    while (plan.struck() <= moreThanThereAreThreads) {
        ASSERT_LT(std::chrono::steady_clock::now(), giveUp);
        std::this_thread::yield();
    }
    fail(FaultKind::HangAfterHeaders);
    Wire other(server->port());
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
        Wire struck(server->port());
        struck.send();
        static_cast<void>(struck.read(1));
        plan.setRules({});
        Wire next(server->port());
        next.send();
        EXPECT_EQ(next.readHeaders(), body.size()) << row.name;
        EXPECT_EQ(next.read(body.size()), body) << row.name;
    }
}

} // namespace
} // namespace simulator
