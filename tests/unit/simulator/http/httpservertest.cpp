// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/httpserver.h"

#include "simulator/service.h"
#include "tests/unit/simulator/testchecks.h"

#include <QTemporaryDir>

#include <cerrno>
#include <chrono>
#include <future>
#include <httplib.h>
#include <mutex>
#include <system_error>
#include <thread>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

const std::string authorization =
    "Basic dGlsbDplNWU5ZmExYmEzMWVjZDFhZTg0Zjc1Y2FhYTQ3NGYzYTY2M2YwNWY0OmRlbW8=";
const char* const precheckPath = "/api/1.x/precheck";
const char* const xmlType = "application/xml";

/// The real service behind a real server at a free port.
class Http : public testing::Test
{
protected:
    Http()
    {
        client.set_default_headers({{"Authorization", authorization}, {"Accept", xmlType}});
        client.set_read_timeout(20);
        client.set_tcp_nodelay(true);
    }

    QTemporaryDir folder;
    Service service{builtIn(), folder.filePath(u"simulator.sqlite"_s)};
    HttpServer server{u"127.0.0.1"_s, 0,
                      [this](const Request& from) { return service.handle(from); }};
    httplib::Client client{"127.0.0.1", server.port()};
    std::string request = goldenFile(u"precheck-request.xml"_s).toStdString();
};

TEST_F(Http, answersAPrecheck)
{
    const auto result = client.Post(precheckPath, request, xmlType);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->status, 200);
    EXPECT_EQ(result->get_header_value("Content-Type"), "application/xml; charset=utf-8");
    EXPECT_EQ(result->body, goldenFile(u"precheck-answer.xml"_s).toStdString());
    EXPECT_EQ(server.url(), u"http://127.0.0.1:%1/"_s.arg(server.port()));
}

TEST_F(Http, keepsOneConnectionForAHundredRequests)
{
    client.set_keep_alive(true);
    int connections = 0;
    client.set_socket_options([&connections](socket_t) { ++connections; });
    for (int i = 0; i < 100; ++i) {
        const auto result = client.Post(precheckPath, request, xmlType);
        ASSERT_TRUE(result) << "request " << i;
        ASSERT_EQ(result->status, 200) << "request " << i;
    }
    EXPECT_EQ(connections, 1);
}

TEST_F(Http, serves16KeptConnectionsAtOnce)
{
    std::vector<std::unique_ptr<httplib::Client>> clients;
    for (int i = 0; i < 16; ++i) {
        clients.push_back(std::make_unique<httplib::Client>("127.0.0.1", server.port()));
        clients.back()->set_keep_alive(true);
        clients.back()->set_read_timeout(20);
        clients.back()->set_tcp_nodelay(true);
    }
    for (int round = 0; round < 3; ++round) {
        for (const auto& kept : clients) {
            const auto result =
                kept->Post(precheckPath, {{"Authorization", authorization}}, request, xmlType);
            ASSERT_TRUE(result);
            EXPECT_EQ(result->status, 200);
        }
    }
}

TEST_F(Http, refusesWrongAddressesMethodsAndCredentials)
{
    EXPECT_EQ(client.Post("/", request, xmlType)->status, 404);
    EXPECT_EQ(client.Post("/api/1.x/refund", request, xmlType)->status, 404);
    EXPECT_EQ(client.Get("/")->status, 404);
    for (const auto& result :
         {client.Get(precheckPath)->status, client.Put(precheckPath, request, xmlType)->status,
          client.Delete(precheckPath, request, xmlType)->status,
          client.Patch(precheckPath, request, xmlType)->status,
          client.Options(precheckPath)->status}) {
        EXPECT_EQ(result, 405);
    }
    EXPECT_EQ(client.Get(precheckPath)->get_header_value("Allow"), "POST");
    client.set_default_headers({{"Authorization", "Basic dGlsbA=="}});
    const auto wrong = client.Post(precheckPath, request, xmlType);
    EXPECT_EQ(wrong->status, 401);
    EXPECT_EQ(wrong->body, "The user, the password or the key is wrong\n");
    EXPECT_EQ(wrong->get_header_value("WWW-Authenticate"), "Basic realm=\"orva-simulator\"");
    client.set_default_headers({});
    EXPECT_EQ(client.Post(precheckPath, request, xmlType)->status, 401);
}

TEST_F(Http, answersTheStatusOfTheService)
{
    EXPECT_EQ(client.Post(precheckPath, "<RawCheck", xmlType)->status, 400);
    EXPECT_EQ(client.Post("/api/1.x/checkconfirm", request, xmlType)->status, 424);
    EXPECT_EQ(
        client.Post(precheckPath, httplib::MultipartFormDataItems{{"a", "b", "", ""}})->status,
        415);
}

TEST_F(Http, refusesBodiesAbove16MiBThoughTheClientSendsThemToTheirEnd)
{
    client.set_keep_alive(true);
    const std::string large(16 * 1024 * 1024 + 1, ' ');
    const auto plain = client.Post(precheckPath, large, xmlType);
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->status, 413);
    EXPECT_EQ(plain->body, "The body is larger than 16 MiB\n");
    const auto chunked = client.Post(
        precheckPath,
        [&large](size_t offset, httplib::DataSink& sink) {
            const size_t length = std::min<size_t>(1'000'000, large.size() - offset);
            sink.write(large.data() + offset, length);
            if (offset + length == large.size()) {
                sink.done();
            }
            return true;
        },
        xmlType);
    ASSERT_TRUE(chunked);
    EXPECT_EQ(chunked->status, 413);
    EXPECT_EQ(client.Post(precheckPath, large.substr(1), xmlType)->status, 400); // blanks only
    EXPECT_EQ(client.Post(precheckPath, request, xmlType)->status, 200);
}

TEST_F(Http, stopsAtOnceThoughConnectionsAreIdle)
{
    auto second = std::make_unique<HttpServer>(
        u"127.0.0.1"_s, 0, [this](const Request& from) { return service.handle(from); });
    httplib::Client idle("127.0.0.1", second->port());
    idle.set_keep_alive(true);
    ASSERT_EQ(idle.Post(precheckPath, request, xmlType)->status, 401);
    const auto start = std::chrono::steady_clock::now();
    second.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    // the other server of this process is not touched
    EXPECT_EQ(client.Post(precheckPath, request, xmlType)->status, 200);
}

TEST_F(Http, sendsTheAnswerThatIsBeingMadeBeforeItStops)
{
    std::promise<void> begun;
    std::promise<void> go;
    auto slow = std::make_unique<HttpServer>(u"127.0.0.1"_s, 0, [&](const Request&) {
        begun.set_value();
        go.get_future().wait();
        return refusal(418, u"late"_s);
    });
    auto result = std::async(std::launch::async, [port = slow->port()] {
        httplib::Client waiting("127.0.0.1", port);
        const auto answer = waiting.Post(precheckPath, "x", xmlType);
        return answer ? answer->body : "no answer";
    });
    begun.get_future().wait();
    std::thread stopper([&slow] { slow.reset(); });
    go.set_value();
    stopper.join();
    EXPECT_EQ(result.get(), "late\n");
}

TEST_F(Http, tellsTheObserverOfEveryRequest)
{
    std::mutex mutex;
    std::vector<std::pair<QByteArray, int>> seen;
    const HttpServer observed(
        u"127.0.0.1"_s, 0, [this](const Request& from) { return service.handle(from); },
        [&](const Request& from, const Answer& answer) {
            const std::scoped_lock lock(mutex);
            seen.emplace_back(from.path, answer.status);
        });
    httplib::Client other("127.0.0.1", observed.port());
    EXPECT_EQ(other.Get("/x")->status, 404);
    EXPECT_EQ(other.Post(precheckPath, request, xmlType)->status, 401);
    const std::scoped_lock lock(mutex);
    EXPECT_EQ(seen, (std::vector<std::pair<QByteArray, int>>{{"/x", 404}, {precheckPath, 401}}));
}

TEST_F(Http, cannotListenTwiceAtOnePortOrAtAForeignAddress)
{
    const auto complaint = [](const QString& address, int port) {
        try {
            const HttpServer second(address, port, [](const Request&) { return Answer(); });
        } catch (const ListenError& error) {
            return QString::fromUtf8(error.what());
        }
        return QString();
    };
    const QString twice = complaint(u"127.0.0.1"_s, server.port());
    // the reason is in the language of the system
    EXPECT_EQ(twice, u"Cannot listen at 127.0.0.1, port %1: %2; choose another with --listen or "
                     "--port"_s.arg(server.port())
                         .arg(QString::fromStdString(std::generic_category().message(EADDRINUSE))));
    EXPECT_TRUE(complaint(u"192.0.2.1"_s, 0).startsWith(u"Cannot listen at 192.0.2.1, port 0: "));
}

TEST_F(Http, listensAtIpv6Too)
{
    const HttpServer six(u"::1"_s, 0, [](const Request&) { return refusal(418, u"six"_s); });
    EXPECT_EQ(six.url(), u"http://[::1]:%1/"_s.arg(six.port()));
    httplib::Client other("::1", six.port());
    const auto result = other.Get("/");
    ASSERT_TRUE(result);
    EXPECT_EQ(result->body, "six\n");
}

} // namespace
} // namespace simulator::test
