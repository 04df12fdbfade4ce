// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the server answers.

#include "contract/rawserver.h"
#include "tests/support/mocked.h"
#include "tests/unit/till/doctor/row.h"

#include <memory>

using namespace Qt::StringLiterals;
using simulator::Fault;
using simulator::FaultKind;
using tests::Row;
using tests::Scene;

namespace {

const QStringList behindAnswer{u"clock"_s, u"server.credentials"_s, u"server.endpoint"_s,
                               u"server.precheck"_s};

std::function<void(Scene&)> striking(FaultKind kind, int status = 500)
{
    return [kind, status](Scene& scene) {
        Fault fault;
        fault.kind = kind;
        fault.status = status;
        scene.strike(fault);
    };
}

QList<Row> answersThatDoNotArrive()
{
    return {
        {"nothing", striking(FaultKind::ReplyLost), u"server.answer fails"_s, behindAnswer},
        {"half of it", striking(FaultKind::CutBody), u"server.answer fails"_s, behindAnswer},
        {"no HTTP", striking(FaultKind::GarbledHeaders), u"server.answer fails"_s, behindAnswer},
        {"too much", [](Scene& scene) { scene.set(u"http.maxAnswerBytes"_s, u"1"_s); },
         u"server.answer fails"_s, behindAnswer},
    };
}

QList<Row> credentialsThatAreRefused()
{
    const QStringList rest{u"server.endpoint"_s, u"server.precheck"_s};
    QList<Row> rows{
        {"HTTP 403", striking(FaultKind::Status, 403), u"server.credentials fails"_s, rest}};
    for (const QString& key : {u"Orva.user"_s, u"Orva.password"_s, u"Orva.apikey"_s}) {
        rows.append({"another value", [key](Scene& scene) { scene.set(key, u"\"another\""_s); },
                     u"server.credentials fails"_s, rest});
    }
    return rows;
}

QList<Row> addressesWithoutTheService()
{
    QList<Row> rows{{"another path",
                     [](Scene& scene) { scene.setAddress(scene.address(u"/elsewhere/"_s)); },
                     u"server.endpoint fails"_s,
                     {u"server.precheck"_s}}};
    for (const int status : {302, 405, 407, 400, 500, 503}) {
        rows.append({"a status",
                     striking(FaultKind::Status, status),
                     u"server.endpoint fails"_s,
                     {u"server.precheck"_s}});
    }
    return rows;
}

QList<Row> prechecksThatAreNotGranted()
{
    return {
        {"an unknown card", [](Scene& scene) { scene.subject.card = u"1"_s; },
         u"server.precheck fails"_s},
        {"an answer of another shape",
         [](Scene& scene) {
             Fault fault;
             fault.kind = FaultKind::Status;
             fault.status = 200;
             fault.body = "<html>Welcome to our network</html>";
             scene.strike(fault);
         },
         u"server.precheck fails"_s},
    };
}

TEST(Doctor, saysBesideARefusalWhatTheServerWroteToIt)
{
    Scene scene;
    scene.subject.card = u"1100777788889"_s;
    const till::doctor::Report report = scene.examine();
    QStringList found;
    for (const auto& row : report.rows()) {
        if (row.id == u"server.precheck"_s) {
            found.append(row.finding.text);
        }
    }
    EXPECT_EQ(found, QStringList{u"the server refuses the card (HTTP 424); the server says: The "
                                 "card *8889 is unknown"_s});
}

QList<Row> clocksThatGoWrong()
{
    QList<Row> rows;
    for (const auto& [seconds, mark] : {std::pair(-3600, u"fails"_s),
                                        {-100, u"warning"_s},
                                        {100, u"warning"_s},
                                        {86400, u"fails"_s}}) {
        const auto clock = std::make_shared<std::unique_ptr<tests::StoppedClock>>();
        rows.append({"a clock",
                     [clock, offset = seconds](Scene&) {
                         *clock = std::make_unique<tests::StoppedClock>(
                             QDateTime::currentDateTime().addSecs(offset));
                     },
                     u"clock "_s + mark,
                     {},
                     [clock](Scene&) { clock->reset(); }});
    }
    return rows;
}

} // namespace

QList<tests::Ways> tests::serverWays()
{
    return {{"answersThatDoNotArrive", answersThatDoNotArrive},
            {"credentialsThatAreRefused", credentialsThatAreRefused},
            {"addressesWithoutTheService", addressesWithoutTheService},
            {"prechecksThatAreNotGranted", prechecksThatAreNotGranted},
            {"clocksThatGoWrong", clocksThatGoWrong}};
}

TEST(Doctor, asksAboutNobodyWithoutACard)
{
    Scene scene;
    scene.subject.card.clear();
    const QMap<QString, QString> marks = Scene::marksOf(scene.examine());
    EXPECT_EQ(marks.value(u"server.credentials"_s), u"ok"_s);
    EXPECT_EQ(marks.value(u"server.endpoint"_s), u"ok"_s);
    EXPECT_EQ(marks.value(u"server.precheck"_s), u"skipped"_s);
}

TEST(Doctor, believesAServerThatDoesNotTellItsTime)
{
    RawServer server(RawServer::answering(RawServer::answer("424 Failed Dependency")));
    Scene scene;
    scene.setAddress(u"http://127.0.0.1:%1/"_s.arg(server.port()));
    EXPECT_EQ(Scene::marksOf(scene.examine()).value(u"clock"_s), u"skipped"_s);
}
