// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a test looks at and changes while the server runs.

#include "simulator/faults/faultplan.h"
#include "simulator/faults/faultyservice.h"
#include "simulator/http/admindesk.h"
#include "simulator/rules/rulesreader.h"
#include "tests/support/struck.h"
#include "tests/unit/simulator/servicefixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

class Admin : public ServiceFixture
{
protected:
    Answer ask(const QByteArray& method, const QByteArray& path, const QByteArray& body = {})
    {
        Request request{method, path, {}, body};
        request.host = "127.0.0.1:8711";
        request.contentType = method == "POST" ? "application/json" : "";
        return ask(request);
    }

    Answer ask(const Request& request) { return desk.handle(request); }

    /// The faults as "kind struck/matched", armed ones with a star.
    QStringList faults()
    {
        QStringList brief;
        const QJsonArray list = QJsonDocument::fromJson(ask("GET", "/faults").body).array();
        for (const auto& value : list) {
            const QJsonObject fault = value.toObject();
            brief.append(u"%1%2 %3/%4"_s
                             .arg(fault.value(u"kind"_s).toString(),
                                  fault.value(u"armed"_s).toBool() ? u"*"_s : QString())
                             .arg(fault.value(u"struck"_s).toInt())
                             .arg(fault.value(u"matched"_s).toInt()));
        }
        return brief;
    }

    FaultPlan plan{
        readRules("[[fault]]\nkind = 'cut-body'\nendpoint = 'checkconfirm'\n", u"a"_s).faults};
    FaultyService faulty{[this](const Request& request) { return service->handle(request); }, plan};
    const AdminDesk desk{*service, plan};
};

TEST_F(Admin, ledgerIsTheOneThatTheCommandPrints)
{
    sell(u"sale"_s);
    const Answer answer = ask("GET", "/ledger");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.contentType, QByteArray("application/json; charset=utf-8"));
    EXPECT_EQ(answer.body, ledgerJson(ledger()));
    EXPECT_TRUE(answer.body.contains("****0017"));
    EXPECT_FALSE(answer.body.contains("2200000000017"));
}

TEST_F(Admin, armedFaultStrikesFirstAndSurvivesOtherRules)
{
    const Answer armed = ask("POST", "/faults",
                             R"({"kind": "reply-lost", "endpoint": "precheck",
                                 "card": "2200000000017", "times": 1})");
    EXPECT_EQ(armed.status, 200) << armed.body.toStdString();
    EXPECT_EQ(armed.body, ask("GET", "/faults").body);
    EXPECT_FALSE(armed.body.contains("2200000000017"));
    EXPECT_TRUE(armed.body.contains("*0017"));
    const Request request = post("precheck", document(saleOfTwo(u"sale"_s)));
    ASSERT_TRUE(faulty.handle(request).fault);
    EXPECT_FALSE(faulty.handle(request).fault);
    EXPECT_EQ(faults(), (QStringList{u"reply-lost* 1/2"_s, u"cut-body 0/0"_s}));
    plan.setRules({});
    EXPECT_EQ(faults(), QStringList{u"reply-lost* 1/2"_s});
    EXPECT_EQ(ask("DELETE", "/faults").body.trimmed(), QByteArray("[\n]"));
    EXPECT_EQ(struckBy(plan), 0);
}

TEST_F(Admin, clearedFaultsStrikeNoMore)
{
    ask("POST", "/faults", R"({"kind": "request-lost"})");
    ask("DELETE", "/faults");
    EXPECT_EQ(faulty.handle(post("checkconfirm", "")).fault, std::nullopt);
    EXPECT_TRUE(faults().isEmpty());
}

TEST_F(Admin, wrongFaultsAreRefusedWithTheirKeyAndChangeNothing)
{
    const auto refused = [&](const QByteArray& body) {
        const Answer answer = ask("POST", "/faults", body);
        EXPECT_EQ(answer.status, 400) << body.toStdString();
        return answer.reason;
    };
    EXPECT_EQ(refused(R"({"kind": "reply-los"})"),
              u"body: the key \"kind\" is \"reply-los\": did you mean \"reply-lost\"?"_s);
    EXPECT_EQ(refused(R"({"kind": "cut-body", "time": 1})"),
              u"body: the key \"time\" is unknown: did you mean \"times\"?"_s);
    EXPECT_EQ(refused(R"({"kind": "cut-body", "times": 1.5})"),
              u"body: the key \"times\" must be a whole number from 1 to 2147483647"_s);
    EXPECT_EQ(refused(R"({"kind": "cut-body", "times": "1"})"),
              u"body: the key \"times\" must be a whole number from 1 to 2147483647"_s);
    for (const char* value : {"null", "[]", "{}", "1", "true"}) {
        EXPECT_EQ(refused(R"({"kind": )" + QByteArray(value) + '}'),
                  u"body: the key \"kind\" must be a text in quotes"_s);
    }
    EXPECT_TRUE(refused("{\n\"kind\": ").startsWith(u"body:2: this is not JSON: "_s));
    EXPECT_TRUE(refused("kind = 'cut-body'").startsWith(u"body:1: this is not JSON: "_s));
    EXPECT_TRUE(refused(QByteArray(60'000, '[')).startsWith(u"body:1: this is not JSON: "_s));
    EXPECT_EQ(refused("[]"), u"body: this is not a JSON object"_s);
    EXPECT_EQ(refused("{}"), u"body: the key \"kind\" is missing"_s);
    EXPECT_EQ(faults(), QStringList{u"cut-body 0/0"_s});
}

TEST_F(Admin, allKeysOfAFaultComeThrough)
{
    ask("POST", "/faults",
        R"({"kind": "status", "status": 503, "body": "Занято", "endpoint": "checkconfirm",
            "card": "17", "request": 4.0, "times": 6, "probability": 0.5,
            "seed": 9223372036854775807})");
    const FaultPlan::State state = plan.states().front();
    EXPECT_EQ(state.rule.fault.kind, FaultKind::Status);
    EXPECT_EQ(state.rule.fault.status, 503);
    EXPECT_EQ(state.rule.fault.body, QByteArray("Занято"));
    EXPECT_EQ(state.rule.endpoint, u"checkconfirm"_s);
    EXPECT_EQ(state.rule.card, u"17"_s);
    EXPECT_EQ(state.rule.firstRequest, 4);
    EXPECT_EQ(state.rule.times, 6);
    EXPECT_EQ(state.rule.probability, 0.5);
    EXPECT_EQ(state.rule.seed, 9223372036854775807U);
    ask("POST", "/faults", R"({"kind": "delay", "seconds": 1.5, "probability": 1})");
    EXPECT_EQ(plan.states().front().rule.fault.duration.count(), 1500);
}

/// Requests as a web page can have a browser send them.
class AdminAndWebPages : public Admin
{
protected:
    static Request arming()
    {
        Request request{"POST", "/faults", {}, R"({"kind": "request-lost"})"};
        request.host = "localhost:8711";
        request.contentType = "application/json";
        return request;
    }

    /// Sends a request that must be refused, and returns the reason.
    QString refused(const Request& request, int status)
    {
        const Answer answer = ask(request);
        EXPECT_EQ(answer.status, status) << request.method.toStdString();
        EXPECT_EQ(desk.bodyLimit(request), 0);
        EXPECT_EQ(faults(), QStringList{u"cut-body 0/0"_s});
        return answer.reason;
    }
};

TEST_F(AdminAndWebPages, namesOfLoopbackAloneReachIt)
{
    for (const char* host :
         {"localhost", "LocalHost:8711", "127.0.0.1", "127.0.0.1:1", "[::1]", "[::1]:8711"}) {
        Request request{"GET", "/ledger", {}, {}};
        request.host = host;
        EXPECT_EQ(ask(request).status, 200) << host;
    }
    for (const char* host : {"evil.test", "evil.test:8711", "localhost.evil.test:8711",
                             "evil.test:127.0.0.1", "127.0.0.1.evil.test", "[::1].evil.test",
                             "192.168.0.5:8711", "localhost@evil.test", ""}) {
        for (const char* method : {"GET", "POST", "DELETE", "OPTIONS"}) {
            Request request = arming();
            request.method = method;
            request.host = host;
            EXPECT_EQ(refused(request, 403),
                      u"The Host must be localhost, 127.0.0.1 or [::1]: this address is for "
                      "programs on this machine"_s)
                << host;
        }
    }
}

TEST_F(AdminAndWebPages, pagesOfOtherAddressesAreRefused)
{
    for (const char* origin : {"https://evil.test", "http://localhost:3000", "null",
                               "https://localhost:8711", "http://localhost:8711.evil.test"}) {
        for (const char* method : {"GET", "POST", "DELETE", "OPTIONS"}) {
            Request request = arming();
            request.method = method;
            request.origin = origin;
            EXPECT_EQ(refused(request, 403),
                      u"Pages of other addresses may not ask for anything here"_s)
                << origin;
        }
    }
}

TEST_F(AdminAndWebPages, pageOfThisAddressNeedsItsTokenToChangeSomething)
{
    Request own = arming();
    own.origin = "http://localhost:8711";
    for (const QByteArray& token :
         {QByteArray(), QByteArray(32, '0'), desk.pageToken().chopped(1), desk.pageToken() + '0'}) {
        own.pageToken = token;
        for (const char* method : {"POST", "DELETE"}) {
            own.method = method;
            EXPECT_EQ(refused(own, 403),
                      u"The page was made by a server that has ended: load it anew"_s)
                << token.toStdString();
        }
    }
    own.method = "GET"; // looking needs none
    own.pageToken = {};
    own.body = {};
    EXPECT_EQ(ask(own).status, 200);
    own = arming();
    own.origin = "http://localhost:8711";
    own.pageToken = desk.pageToken();
    EXPECT_EQ(ask(own).status, 200);
}

TEST_F(AdminAndWebPages, everyServerHasATokenOfItsOwn)
{
    EXPECT_EQ(desk.pageToken().size(), 32);
    EXPECT_NE(desk.pageToken(), AdminDesk(*service, plan).pageToken());
}

TEST_F(AdminAndWebPages, everyAnswerLetsNothingButThePagesScriptsRun)
{
    Request refusedOne = arming();
    refusedOne.host = "evil.test";
    Request good = arming();
    for (const Request& request : {good, refusedOne}) {
        const QByteArrayList headers = ask(request).headers;
        EXPECT_TRUE(headers.contains("X-Content-Type-Options: nosniff"));
        const auto policy = std::find_if(headers.begin(), headers.end(), [](const auto& header) {
            return header.startsWith("Content-Security-Policy: default-src 'none';");
        });
        ASSERT_NE(policy, headers.end());
        EXPECT_FALSE(policy->contains("unsafe"));
        EXPECT_FALSE(policy->contains('*'));
        for (const QByteArray& header : headers) {
            EXPECT_FALSE(header.startsWith("Access-Control-")) << header.toStdString();
        }
    }
}

TEST_F(Admin, oneFaultIsTakenAwayByItsId)
{
    ask("POST", "/faults", R"({"kind": "request-lost"})");
    ask("POST", "/faults", R"({"kind": "reply-lost"})");
    const QJsonArray list = QJsonDocument::fromJson(ask("GET", "/faults").body).array();
    ASSERT_EQ(list.size(), 3);
    const auto path = [&](qsizetype i) {
        return "/faults/" + QByteArray::number(list[i].toObject()[u"id"_s].toInt());
    };
    EXPECT_EQ(ask("DELETE", path(1)).status, 200);
    EXPECT_EQ(faults(), (QStringList{u"reply-lost* 0/0"_s, u"cut-body 0/0"_s}));
    EXPECT_EQ(ask("DELETE", path(1)).status, 404);
    EXPECT_EQ(ask("DELETE", "/faults/x").status, 404);
    EXPECT_EQ(ask("DELETE", path(2)).status, 200);
    EXPECT_EQ(faults(), QStringList{u"reply-lost* 0/0"_s});
}

TEST_F(AdminAndWebPages, whatAFormCanSendChangesNothing)
{
    for (const char* type :
         {"text/plain", "application/x-www-form-urlencoded", "multipart/form-data; boundary=x", "",
          "text/json", "application/jsonp", "text/plain; application/json"}) {
        Request request = arming();
        request.contentType = type;
        EXPECT_EQ(refused(request, 415), u"The body must be JSON, with the header Content-Type: "
                                         "application/json"_s)
            << type;
    }
    Request request = arming();
    request.contentType = "Application/JSON; charset=utf-8";
    EXPECT_EQ(ask(request).status, 200);
}

TEST_F(Admin, nothingElseIsThere)
{
    for (const char* path : {"/", "/ledger/", "/api/1.x/precheck", "/faults/1"}) {
        EXPECT_EQ(ask("GET", path).status, 404) << path;
    }
    EXPECT_EQ(ask("POST", "/ledger").status, 404);
    EXPECT_EQ(ask("PUT", "/faults").status, 404);
}

} // namespace
} // namespace simulator::test
