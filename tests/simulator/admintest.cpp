// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a test looks at and changes while the server runs.

#include "simulator/admindesk.h"
#include "simulator/faultplan.h"
#include "simulator/faultyservice.h"
#include "simulator/rulesreader.h"
#include "tests/input/hostiletoml.h"
#include "tests/simulator/servicefixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

class Admin : public ServiceFixture
{
protected:
    Answer ask(const QByteArray& method, const QByteArray& path, const QByteArray& body = {})
    {
        return AdminDesk(*service, plan).handle({method, path, {}, body});
    }

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
                             "kind = 'reply-lost'\nendpoint = 'precheck'\n"
                             "card = '2200000000017'\ntimes = 1\n");
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
    EXPECT_EQ(plan.struck(), 0);
}

TEST_F(Admin, clearedFaultsStrikeNoMore)
{
    ask("POST", "/faults", "kind = 'request-lost'\n");
    ask("DELETE", "/faults");
    EXPECT_EQ(faulty.handle(post("checkconfirm", "")).fault, std::nullopt);
    EXPECT_TRUE(faults().isEmpty());
}

TEST_F(Admin, wrongFaultsAreRefusedWithLineAndKeyAndChangeNothing)
{
    const auto refused = [&](const QByteArray& body) {
        const Answer answer = ask("POST", "/faults", body);
        EXPECT_EQ(answer.status, 400);
        return answer.reason;
    };
    EXPECT_EQ(refused("\nkind = 'reply-los'\n"),
              u"body:2: the key \"kind\" is \"reply-los\": did you mean \"reply-lost\"?"_s);
    EXPECT_EQ(refused("kind = 'cut-body'\ntime = 1\n"),
              u"body:2: the key \"time\" is unknown: did you mean \"times\"?"_s);
    EXPECT_TRUE(refused("kind = ").startsWith(u"body:1: this is not TOML"_s));
    EXPECT_EQ(refused(tests::deepToml().first()),
              u"body:1: tables and lists are nested deeper than 64 levels; look at the dots and "
              "brackets"_s);
    EXPECT_EQ(refused(""), u"body:1: the key \"kind\" is missing"_s);
    EXPECT_EQ(faults(), QStringList{u"cut-body 0/0"_s});
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
