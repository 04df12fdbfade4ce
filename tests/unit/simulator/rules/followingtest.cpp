// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The program while its rules change and while a test looks at it and arms faults.

#include "simulator/rules/rulesreader.h"
#include "tests/support/program.h"
#include "tests/unit/simulator/testchecks.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include <httplib.h>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

class RunningProgram : public testing::Test
{
protected:
    void writeRules(const QByteArray& text) const
    {
        QFile file(rulesPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    }

    [[nodiscard]] QString rulesPath() const { return folder.filePath(u"rules.toml"_s); }

    void start(const QStringList& arguments)
    {
        program = std::make_unique<::Program>(
            QStringLiteral(ORVA_SIMULATOR_PROGRAM),
            QStringList{u"--port"_s, u"0"_s, u"--database"_s, folder.filePath(u"books"_s)} +
                arguments,
            folder.path());
        port = QUrl(program->waitForLine(u"Listening on "_s)).port();
    }

    [[nodiscard]] int precheck(const char* host = "127.0.0.1") const
    {
        httplib::Client client(host, port);
        const Request request = post("precheck", goldenFile(u"precheck-request.xml"_s));
        const auto result = client.Post(request.path.toStdString(),
                                        {{"Authorization", request.authorization.toStdString()}},
                                        request.body.toStdString(), "application/xml");
        return result ? result->status : 0;
    }

    QTemporaryDir folder{QDir::tempPath() + u"/RunningProgram-XXXXXX"_s};
    std::unique_ptr<::Program> program;
    int port = 0;
};

TEST_F(RunningProgram, followsItsFileOfRulesAndKeepsTheOldOnesWhenItIsBroken)
{
    writeRules(builtInRules());
    start({u"--config"_s, rulesPath()});
    EXPECT_EQ(precheck(), 200);
    writeRules("[[card]]\nnumber = '1'\n");
    EXPECT_EQ(precheck(), 424); // the card is unknown now
    EXPECT_EQ(program->waitForLine(u"Rules: "_s), rulesPath());
    EXPECT_EQ(program->waitForLine(u"Rules: "_s), u"read anew"_s);
    writeRules(builtInRules() + "[[fault]]\nkind = 'status'\nstatus = 503\n");
    EXPECT_EQ(precheck(), 503);
    writeRules("[[card]]\nnumbr = '1'\n");
    // said without any request
    EXPECT_EQ(program->waitForLine(u"orva-simulator: the rules stay as they were: "_s),
              rulesPath() + u":2: the key \"card.numbr\" is unknown: did you mean "
                            "\"card.number\"?"_s);
    EXPECT_EQ(precheck(), 503);
}

TEST_F(RunningProgram, hasNoAdminAddressUnlessItIsAskedFor)
{
    start({});
    EXPECT_EQ(precheck(), 200);
    EXPECT_FALSE(program->output().contains(u"Admin"_s));
    httplib::Client client("127.0.0.1", port);
    EXPECT_EQ(client.Get("/ledger")->status, 404);
    EXPECT_EQ(client.Get("/faults")->status, 404);
}

TEST_F(RunningProgram, hasAnAdminAddressOnLoopbackOnly)
{
    start({u"--listen"_s, u"0.0.0.0"_s, u"--admin-port"_s, u"0"_s, u"--quiet"_s});
    const QUrl url(program->waitForLine(u"Admin at "_s));
    EXPECT_EQ(url.host(), u"127.0.0.1"_s);
    EXPECT_EQ(precheck("127.0.0.2"), 200); // the server itself listens everywhere
    EXPECT_FALSE(httplib::Client("127.0.0.2", url.port()).Get("/ledger"));
    httplib::Client admin("127.0.0.1", url.port());
    const auto ledger = admin.Get("/ledger");
    ASSERT_TRUE(ledger);
    EXPECT_NE(ledger->body.find("****0024"), std::string::npos);
    EXPECT_EQ(ledger->body.find("2200000000024"), std::string::npos);

    const RunResult second =
        runProgram(QStringLiteral(ORVA_SIMULATOR_PROGRAM),
                   {u"--port"_s, u"0"_s, u"--database"_s, folder.filePath(u"other"_s),
                    u"--admin-port"_s, QString::number(url.port())},
                   folder.path());
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_TRUE(second.output.startsWith(u"orva-simulator: --admin-port: Cannot listen at "_s))
        << second.output.toStdString();

    const std::string fault = R"({"kind": "reply-lost", "endpoint": "precheck"})";
    // with the content type that curl -d sends, and forms of web pages
    EXPECT_EQ(admin.Post("/faults", fault, "application/x-www-form-urlencoded")->status, 415);
    EXPECT_EQ(admin.Post("/faults", {{"Host", "evil.test"}}, fault, "application/json")->status,
              403);
    EXPECT_EQ(
        admin.Post("/faults", {{"Origin", "http://evil.test"}}, fault, "application/json")->status,
        403);
    EXPECT_EQ(admin.Delete("/faults", {{"Origin", "http://evil.test"}})->status, 403);
    EXPECT_EQ(precheck(), 200);
    EXPECT_EQ(admin.Post("/faults", std::string(70'000, ' '), "application/json")->body,
              "The body is larger than 64 KiB\n");
    const auto armed = admin.Post("/faults", fault, "application/json");
    ASSERT_TRUE(armed);
    EXPECT_EQ(armed->status, 200) << armed->body;
    EXPECT_EQ(precheck(), 0);
    EXPECT_EQ(admin.Post("/faults", R"({"kind": "x"})", "application/json")->status, 400);
    EXPECT_EQ(admin.Delete("/faults")->status, 200);
    EXPECT_EQ(precheck(), 200);
}

} // namespace
} // namespace simulator::test
