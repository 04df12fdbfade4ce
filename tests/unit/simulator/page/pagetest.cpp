// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the page asks for, held against the document that describes it.

#include "simulator/http/httpserver.h"
#include "tests/unit/simulator/page/pagefixture.h"
#include "tests/unit/simulator/wire.h"

#include <QFile>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

QJsonObject apiDocument()
{
    QFile file(QStringLiteral(ORVA_ADMIN_API));
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::invalid_argument("no description of the addresses");
    }
    return QJsonDocument::fromJson(file.readAll()).object();
}

/// "GET /exchanges" and so on, as the document and as the program have them.
TEST_F(PageTest, everyAddressIsDescribedAndNoOther)
{
    QStringList described;
    const QJsonObject paths = apiDocument()[u"paths"_s].toObject();
    for (auto path = paths.begin(); path != paths.end(); ++path) {
        for (const QString& method : path.value().toObject().keys()) {
            described.append(method.toUpper() + u' ' + path.key());
        }
    }
    QStringList there;
    for (const AdminRoute& route : desk.routes()) {
        there.append(QString::fromLatin1(route.method + ' ' + route.path));
    }
    described.sort();
    there.sort();
    ASSERT_GT(there.size(), 15);
    EXPECT_EQ(there.join(u'\n'), described.join(u'\n'));
}

/// What is asked, and under which path the document describes it.
struct Asked
{
    QByteArray method;
    QByteArray address;
    QString path;
    QByteArray body = {};
};

QList<Asked> everythingAsked()
{
    const QByteArray fault = R"({"kind": "status", "card": "17", "times": 2})";
    const QByteArray trial = R"({"card": "2200000000017", "points": "5",
        "lines": [{"sku": "1001", "total": "100.10", "minTotal": "99.00"}]})";
    return {{"GET", "/exchanges", u"/exchanges"_s},
            {"GET", "/exchanges?text=FIRST", u"/exchanges"_s},
            {"GET", "/exchanges/3", u"/exchanges/{number}"_s},
            {"GET", "/exchanges/4", u"/exchanges/{number}"_s},
            {"GET", "/exchanges/5", u"/exchanges/{number}"_s},
            {"POST", "/exchanges/1/send", u"/exchanges/{number}/send"_s, "{}"},
            {"POST", "/faults", u"/faults"_s, fault},
            {"GET", "/faults", u"/faults"_s},
            {"DELETE", "/faults/1", u"/faults/{id}"_s},
            {"DELETE", "/faults", u"/faults"_s},
            {"POST", "/server", u"/server"_s, R"({"away": true})"},
            {"GET", "/server", u"/server"_s},
            {"GET", "/rules", u"/rules"_s},
            {"GET", "/cards", u"/cards"_s},
            {"GET", "/cards/2200000000017", u"/cards/{number}"_s},
            {"GET", "/checks", u"/checks"_s},
            {"GET", "/checks/sale", u"/checks/{id}"_s},
            {"GET", "/checks/back", u"/checks/{id}"_s},
            {"POST", "/try", u"/try"_s, trial},
            {"GET", "/ledger", u"/ledger"_s}};
}

/// What a schema objects to in a list; empty for nothing.
QString judgement(const QTemporaryDir& folder, const QJsonObject& schema, const QJsonArray& list)
{
    const auto write = [&folder](const QString& name, const QJsonDocument& content) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content.toJson());
        return file.fileName();
    };
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(ORVA_JSONSCHEMA),
                  {u"-i"_s, write(u"answers.json"_s, QJsonDocument(list)),
                   write(u"schema.json"_s, QJsonDocument(schema))});
    EXPECT_TRUE(process.waitForFinished(60'000));
    return process.exitCode() == 0 ? QString()
                                   : u"refused: "_s + QString::fromUtf8(process.readAll());
}

TEST_F(PageTest, answersHaveTheShapesThatAreDescribed)
{
    someExchanges();
    giveBack(u"back"_s, u"33.33"_s, u"15.67"_s);
    ASSERT_EQ(object("/checks/sale")[u"returns"_s].toArray().size(), 1);
    const QJsonObject described = apiDocument();
    QJsonArray shapes;
    QJsonArray answers;
    for (const Asked& asked : everythingAsked()) {
        const Answer answer = ask(asked.method, asked.address, asked.body);
        ASSERT_EQ(answer.status, 200) << asked.address.toStdString() << answer.body.toStdString();
        const QString method = QString::fromLatin1(asked.method.toLower());
        const QJsonValue done = described[u"paths"_s][asked.path][method][u"responses"_s][u"200"_s];
        const QJsonValue shape = done[u"content"_s][u"application/json"_s][u"schema"_s];
        ASSERT_TRUE(shape.isObject()) << asked.address.toStdString();
        shapes.append(shape);
        const QJsonDocument document = QJsonDocument::fromJson(answer.body);
        answers.append(document.isArray() ? QJsonValue(document.array())
                                          : QJsonValue(document.object()));
    }
    const QJsonObject schema{{u"$schema"_s, u"https://json-schema.org/draft/2020-12/schema"_s},
                             {u"type"_s, u"array"_s},
                             {u"components"_s, described[u"components"_s]},
                             {u"prefixItems"_s, shapes}};
    EXPECT_EQ(judgement(folder, schema, answers).left(2000), QString());
    for (const qsizetype i : {qsizetype(0), answers.size() - 1}) { // each is looked at
        QJsonArray spoiled = answers;
        spoiled[i] = 1;
        EXPECT_TRUE(judgement(folder, schema, spoiled).startsWith(u"refused"_s)) << i;
    }
}

TEST_F(PageTest, listsGoOnWhereTheLastEnded)
{
    someExchanges();
    EXPECT_EQ(listed(""), (QList<qint64>{1, 2, 3, 4, 5}));
    EXPECT_EQ(listed("?after=3"), (QList<qint64>{4, 5}));
    EXPECT_EQ(object("/exchanges?after=1&most=2")[u"next"_s].toInt(), 3);
    EXPECT_EQ(object("/exchanges?after=1&most=20")[u"next"_s].toInt(), 5);
    EXPECT_EQ(object("/exchanges?after=5")[u"next"_s].toInt(), 5);
    EXPECT_EQ(listed("?text=%3Cid%3Efirst"), (QList<qint64>{1, 3}));
    EXPECT_EQ(listed("?text=SECOND"), QList<qint64>{2});
    EXPECT_EQ(ask("GET", "/exchanges?after=-1").status, 400);
    EXPECT_EQ(ask("GET", "/exchanges?after=x").status, 400);
    EXPECT_EQ(ask("GET", "/exchanges/99").status, 404);
    EXPECT_EQ(ask("GET", "/exchanges/x").status, 404);
}

TEST_F(PageTest, openedExchangeNamesThePrecheckBeforeAndTheFinding)
{
    someExchanges();
    EXPECT_EQ(object("/exchanges/3")[u"earlierPrecheck"_s].toInt(), 1);
    EXPECT_EQ(object("/exchanges/2")[u"earlierPrecheck"_s].toInt(), 0);
    const QJsonObject finding = object("/exchanges/4")[u"findings"_s][0].toObject();
    EXPECT_EQ(finding[u"path"_s].toString(), u"surprise"_s);
    EXPECT_TRUE(finding[u"sentence"_s].toString().startsWith(u"surprise is unknown here"_s));
    ASSERT_EQ(object("/exchanges/5")[u"findings"_s].toArray().size(), 1);
    EXPECT_EQ(object("/exchanges/5")[u"findings"_s][0][u"path"_s].toString(), QString());
}

TEST_F(PageTest, sendsAgainWithTheCredentialsOfTheMoment)
{
    someExchanges();
    const Answer answer = ask("POST", "/exchanges/1/send", "{}");
    EXPECT_EQ(QJsonDocument::fromJson(answer.body)[u"status"_s].toInt(), 200);
    EXPECT_EQ(object("/exchanges/6")[u"request"_s], object("/exchanges/1")[u"request"_s]);
    EXPECT_EQ(object("/exchanges/6")[u"earlierPrecheck"_s].toInt(), 3);
}

TEST_F(PageTest, triesACheckLineByLineAndBooksNothing)
{
    sell(u"sale"_s);
    const Answer answer =
        ask("POST", "/try", R"({"card": "2200000000017", "points": "10.00", "lines": [
            {"sku": "1000", "total": "99.99"}, {"sku": "1001", "total": "50.05", "minTotal": "49.00"}]})");
    const QJsonObject tried = QJsonDocument::fromJson(answer.body).object();
    // 5 % of 99.99 is 4.9995 and rounds up; 10 % of 50.05 would be 5.01, but only 1.05 is free; of
    // the 143.99 that is left 0.99 goes to the dearer line
    EXPECT_EQ(tried[u"discount"_s].toString(), writeKopecks(500 + 105 + 99));
    EXPECT_EQ(tried[u"toPay"_s].toString(), u"133.00"_s);
    const QJsonArray first = tried[u"lines"_s][0][u"grants"_s].toArray();
    EXPECT_EQ(first[0][u"rule"_s].toString(), u"discount.percent = 5.00 %"_s);
    EXPECT_EQ(first[0][u"exact"_s].toString(), u"4.9995"_s);
    EXPECT_EQ(first[0][u"granted"_s].toString(), u"5.00"_s);
    EXPECT_EQ(first[1][u"what"_s].toString(), u"discountOnChange"_s);
    EXPECT_EQ(first[1][u"granted"_s].toString(), u"0.99"_s);
    const QJsonArray second = tried[u"lines"_s][1][u"grants"_s].toArray();
    EXPECT_EQ(second[0][u"rule"_s].toString(), u"discount.sku.\"1001\" = 10.00 %"_s);
    EXPECT_EQ(second[0][u"limit"_s].toString(), u"minTotal"_s);
    Kopecks earned = 0;
    for (const auto& line : tried[u"lines"_s].toArray()) {
        earned +=
            readKopecks(line[u"grants"_s].toArray().last()[u"granted"_s].toString()).value_or(-1);
    }
    EXPECT_EQ(tried[u"earned"_s].toString(), writeKopecks(earned));
    EXPECT_EQ(ledger().checks.size(), 1U);
    EXPECT_EQ(ask("POST", "/try", R"({"card": "1", "lines": [{"sku": "1", "total": "1"}]})").status,
              424);
    for (const char* wrong : {"[]", "{}", R"({"card": "2200000000017", "lines": []})",
                              R"({"card": "2200000000017", "lines": [{"total": 1}]})",
                              R"({"card": "2200000000017", "lines": [{"total": "-1"}]})"}) {
        EXPECT_EQ(ask("POST", "/try", wrong).status, 400) << wrong;
    }
}

TEST_F(PageTest, cardHasTheCourseOfItsBalance)
{
    sell(u"one"_s);
    const Kopecks between = account(u"2200000000017"_s).balance;
    sell(u"two"_s);
    const QJsonObject card = object("/cards/2200000000017");
    const QJsonArray course = card[u"course"_s].toArray();
    ASSERT_EQ(course.size(), 2);
    EXPECT_EQ(course[0][u"check"_s].toString(), u"one"_s);
    EXPECT_EQ(course[0][u"balance"_s].toString(), writeKopecks(between));
    EXPECT_EQ(course[1][u"balance"_s], card[u"balance"_s]);
    EXPECT_EQ(ask("GET", "/cards/1").status, 404);
}

TEST_F(PageTest, booksThatWereChangedFromOutsideDoNotAgree)
{
    sell(u"one"_s);
    EXPECT_TRUE(object("/cards")[u"agree"_s].toBool());
    Database(databasePath()).execute(u"UPDATE ledger_lines SET earned=earned+1 WHERE position=1"_s);
    EXPECT_FALSE(object("/cards")[u"agree"_s].toBool());
    EXPECT_EQ(object("/cards")[u"wrongCheck"_s].toString(), u"one"_s);
    Database(databasePath()).execute(u"UPDATE ledger_lines SET earned=earned-1 WHERE position=1"_s);
    Database(databasePath()).execute(u"UPDATE cards SET balance=balance+1"_s);
    EXPECT_FALSE(object("/cards")[u"agree"_s].toBool());
}

TEST_F(PageTest, pageAndItsFilesAreServedAndNothingBeside)
{
    const Answer start = ask("GET", "/");
    EXPECT_EQ(start.contentType, QByteArray("text/html; charset=utf-8"));
    EXPECT_TRUE(start.body.contains(desk.pageToken()));
    EXPECT_FALSE(start.body.contains("@TOKEN@"));
    EXPECT_EQ(ask("GET", "/page/app.js").contentType, QByteArray("text/javascript; charset=utf-8"));
    EXPECT_EQ(ask("GET", "/page/page.css").status, 200);
    for (const char* path : {"/page/", "/page/..", "/page/../protocol", "/page/none.js", "/page/.",
                             "/page/../../etc/passwd"}) {
        EXPECT_EQ(ask("GET", path).status, 404) << path;
    }
}

TEST_F(PageTest, switchTakesTrueOrFalseAlone)
{
    EXPECT_EQ(ask("POST", "/server", R"({"away": true})").status, 200);
    EXPECT_TRUE(page.server.isAway());
    for (const char* wrong :
         {"", "[]", "{}", R"({"away": 1})", R"({"away": "no"})", R"({"away": false, "more": 1})"}) {
        EXPECT_EQ(ask("POST", "/server", wrong).status, 400) << wrong;
        EXPECT_TRUE(page.server.isAway());
    }
    EXPECT_EQ(ask("POST", "/server", R"({"away": false})").status, 200);
    EXPECT_FALSE(page.server.isAway());
}

/// The events over a connection.
class PageEvents : public PageTest
{
protected:
    /// Reads the next event's data.
    static QJsonObject next(Wire& wire)
    {
        std::string event;
        while (!event.ends_with("\n\n")) {
            const std::string byte = wire.read(1);
            if (byte.empty()) {
                ADD_FAILURE() << "no whole event: " << event;
                return {};
            }
            event += byte;
        }
        EXPECT_TRUE(event.starts_with("data: ")) << event;
        return QJsonDocument::fromJson(QByteArray::fromStdString(event).sliced(6)).object();
    }

    const HttpServer server{u"127.0.0.1"_s, 0,
                            [this](const Request& request) { return desk.handle(request); }};
};

TEST_F(PageEvents, tellWhatHasChangedAndLeaveOutWhatIsMuch)
{
    exchange(post("precheck", document(saleOfTwo(u"before"_s))));
    Wire wire(server.port());
    wire.send("GET /events HTTP/1.1\r\nHost: localhost\r\n\r\n");
    const std::string head = wire.readHead();
    EXPECT_NE(head.find("text/event-stream"), std::string::npos) << head;
    EXPECT_EQ(head.find("Content-Length"), std::string::npos) << head;
    const QJsonObject first = next(wire);
    EXPECT_EQ(first[u"last"_s].toInt(), 1);
    EXPECT_TRUE(first[u"rows"_s].toArray().isEmpty()); // what was before is asked for

    exchange(post("checkconfirm", "none"));
    const QJsonObject second = next(wire);
    ASSERT_EQ(second[u"rows"_s].toArray().size(), 1);
    EXPECT_EQ(second[u"rows"_s][0][u"number"_s].toInt(), 2);
    EXPECT_EQ(second[u"confirmations"_s].toInt(), first[u"confirmations"_s].toInt() + 1);

    ask("POST", "/faults", R"({"kind": "delay"})");
    const QJsonObject third = next(wire);
    EXPECT_NE(third[u"faults"_s].toInteger(), second[u"faults"_s].toInteger());
    page.rules.refuse(u"rules.toml:7: wrong"_s);
    EXPECT_NE(next(wire)[u"rules"_s].toInt(), third[u"rules"_s].toInt());
    ask("POST", "/server", R"({"away": true})");
    EXPECT_TRUE(next(wire)[u"away"_s].toBool());
}

TEST_F(PageEvents, clientThatReadsNothingKeepsNobodyWaitingAndIsToldTheNumberAfterwards)
{
    Wire wire(server.port());
    wire.send("GET /events HTTP/1.1\r\nHost: localhost\r\n\r\n");
    wire.readHead();
    next(wire);
    constexpr int many = 2000;
    Request request = post("precheck", "none");
    Answer answer;
    for (int i = 0; i < many; ++i) {
        page.exchanges.add(request, answer);
    }
    QJsonObject event = next(wire);
    while (event[u"last"_s].toInt() < many) { // some may be told while they are written down
        event = next(wire);
    }
    EXPECT_EQ(event[u"last"_s].toInt(), many);
    EXPECT_EQ(object("/exchanges?most=9999")[u"exchanges"_s].toArray().size(), many);
}

TEST_F(PageTest, rulesNameTheLineOfAMistake)
{
    EXPECT_TRUE(object("/rules")[u"followed"_s].toBool());
    EXPECT_TRUE(object("/rules")[u"text"_s].toString().contains(u"[discount]"_s));
    page.rules.refuse(u"rules.toml:7: the key \"x\" is unknown"_s);
    EXPECT_FALSE(object("/rules")[u"followed"_s].toBool());
    EXPECT_EQ(object("/rules")[u"line"_s].toInt(), 7);
    page.rules.follow();
    EXPECT_TRUE(object("/rules")[u"followed"_s].toBool());
    EXPECT_EQ(object("/rules")[u"line"_s].toInt(), 0);
}

} // namespace
} // namespace simulator::test
