// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/database.h"
#include "simulator/rules/rulesreader.h"
#include "tests/unit/simulator/programfixture.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUrl>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <future>
#include <httplib.h>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

TEST_F(Program, isReadyWithoutAConfigurationAndStopsOnSigterm)
{
    const int port = serve();
    EXPECT_EQ(statusOf(send(port, "precheck", goldenFile(u"precheck-request.xml"_s))), 200);
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    const QStringList lines = output.split(u'\n');
    ASSERT_EQ(lines.size(), 5) << output.toStdString();
    EXPECT_EQ(lines[0], u"Rules: built-in"_s);
    EXPECT_EQ(lines[1], u"Database: %1/orva/simulator.sqlite"_s.arg(folder.path()));
    EXPECT_TRUE(lines[2].startsWith(u"Try: curl -s -H 'Content-Type: application/xml'"));
    EXPECT_TRUE(
        lines[3].endsWith(u" /api/1.x/precheck 5f0c7a52-8d0b-4f39-9a8e-1c2d3e4f5a6b *0024 200"))
        << lines[3].toStdString();
    EXPECT_TRUE(QFile::exists(folder.filePath(u"orva/simulator.sqlite"_s)));
}

TEST_F(Program, printsALineToPasteThatWorks)
{
    serve();
    QByteArray output;
    while (!output.contains("Try: ") || !output.endsWith('\n')) {
        ASSERT_TRUE(process.bytesAvailable() > 0 || process.waitForReadyRead(patience));
        output += process.readAllStandardOutput();
    }
    QProcess shell;
    shell.start(u"/bin/sh"_s,
                {u"-c"_s, QString::fromUtf8(output.mid(output.indexOf("Try: ") + 5))});
    ASSERT_TRUE(shell.waitForFinished(patience));
    EXPECT_EQ(valueAt(shell.readAllStandardOutput(), u"awards/RawCheckAwards/awardBonus"_s),
              u"4.50"_s);
}

TEST_F(Program, printsTheAddressOnlyWhenQuiet)
{
    const int port = serve({u"--quiet"_s});
    EXPECT_EQ(statusOf(send(port, "precheck", "x")), 400);
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.readAllStandardOutput(), QByteArray());
}

TEST_F(Program, goesOnWhenNobodyReadsItsLinesAnyMoreAndSaysSoAtTheEnd)
{
    const QString lines = folder.filePath(u"lines"_s);
    ASSERT_EQ(::mkfifo(lines.toUtf8().constData(), 0600), 0);
    pollfd reader{::open(lines.toUtf8().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC), POLLIN, 0};
    ASSERT_GE(reader.fd, 0);
    configure(process, {u"--port"_s, u"0"_s});
    process.setStandardOutputFile(lines);
    process.start();
    QByteArray line;
    for (char byte = 0; !line.endsWith('\n') && ::poll(&reader, 1, patience) == 1 &&
                        ::read(reader.fd, &byte, 1) == 1;) {
        line += byte;
    }
    ::close(reader.fd);
    const int port = QUrl(QString::fromUtf8(line).trimmed().section(u' ', -1)).port();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(statusOf(send(port, "precheck", goldenFile(u"precheck-request.xml"_s))), 200);
    }
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
}

TEST_F(Program, doesNotShowConfiguredCredentials)
{
    const QString rules =
        write(u"rules.toml"_s, "[auth]\nuser = 'u'\npassword = 'p'\napiKey = 'k'\n"
                               "[[card]]\nnumber = '1'\n");
    serve({u"--config"_s, rules});
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(patience));
    const QByteArray output = process.readAllStandardOutput();
    EXPECT_TRUE(output.contains("Rules: " + rules.toUtf8()));
    EXPECT_FALSE(output.contains("Basic")) << output.toStdString();
}

TEST_F(Program, keepsWhatItAnsweredThroughAKill)
{
    int port = serve();
    const auto restart = [&] {
        process.kill();
        ASSERT_TRUE(process.waitForFinished(patience));
        process.readAll();
        port = serve();
    };
    const auto answer = send(port, "precheck", goldenFile(u"precheck-request.xml"_s));
    ASSERT_EQ(statusOf(answer), 200);
    const QByteArray body =
        confirmation(QByteArray::fromStdString(answer->body),
                     {{u"1"_s, {u"5.30"_s, u"40.00"_s}}, {u"2"_s, {u"7.50"_s}}}, u"122.00"_s);
    restart();
    ASSERT_EQ(statusOf(send(port, "paymenttry", body)), 200);
    restart();
    ASSERT_EQ(statusOf(send(port, "checkconfirm", body)), 200);
    restart();
    EXPECT_EQ(statusOf(send(port, "checkconfirm", body)), 409);
    const Outcome ledger = run({u"ledger"_s, u"--json"_s});
    EXPECT_EQ(ledger.exitCode, 0) << ledger.errors.toStdString();
    const QJsonObject root = QJsonDocument::fromJson(ledger.output.toUtf8()).object();
    ASSERT_EQ(root.value(u"checks"_s).toArray().size(), 1);
    // 4.73 and 3.38, each x 122/162, are 3.56 and 2.55; 75.50 less the 40.00 spent
    EXPECT_EQ(root.value(u"checks"_s).toArray()[0].toObject().value(u"earned"_s), u"6.11"_s);
    EXPECT_EQ(root.value(u"cards"_s).toArray()[1].toObject().value(u"balance"_s), u"41.61"_s);
}

TEST_F(Program, tellsTheLedgerOfANamedDatabase)
{
    const QString database = folder.filePath(u"other.sqlite"_s);
    Outcome outcome = run({u"ledger"_s, u"--database"_s, database});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.errors,
              u"orva-simulator: There is no database %1: start orva-simulator first "
              "or name another file with --database\n"_s.arg(database));
    serve({u"--database"_s, database});
    outcome = run({u"ledger"_s, u"--database"_s, database});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.output.startsWith(u"Card      Owner          Opening"));
    EXPECT_TRUE(outcome.output.endsWith(u"No check is confirmed yet.\n"));
}

TEST_F(Program, failsOnBooksThatDoNotAddUp)
{
    const int port = serve();
    ASSERT_EQ(statusOf(send(port, "precheck", goldenFile(u"precheck-request.xml"_s))), 200);
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(patience));
    Database(folder.filePath(u"orva/simulator.sqlite"_s)).execute(u"UPDATE cards SET balance=1"_s);
    const Outcome outcome = run({u"ledger"_s});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.errors.startsWith(
        u"orva-simulator: the balance of card ****0024 is not its opening balance"))
        << outcome.errors.toStdString();
}

TEST_F(Program, printsTheBuiltInRulesAsAFileThatItReads)
{
    const Outcome outcome = run({u"rules"_s});
    EXPECT_EQ(outcome.exitCode, 0);
    const int port = serve({u"--config"_s, write(u"rules.toml"_s, outcome.output.toUtf8())});
    const auto answer = send(port, "precheck", goldenFile(u"precheck-request.xml"_s));
    ASSERT_EQ(statusOf(answer), 200);
    EXPECT_EQ(answer->body, goldenFile(u"precheck-answer.xml"_s).toStdString());
}

TEST_F(Program, exitsWith2OnAWrongCommandLineOrRules)
{
    for (const QStringList& arguments :
         {QStringList{u"lodger"_s}, QStringList{u"--port"_s, u"65536"_s},
          QStringList{u"--port"_s, u"x"_s}, QStringList{u"--unknown"_s},
          QStringList{u"--config"_s}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.exitCode, 2) << arguments.join(u' ').toStdString();
        EXPECT_FALSE(outcome.errors.isEmpty()) << arguments.join(u' ').toStdString();
    }
    EXPECT_EQ(run({u"lodger"_s}).errors,
              u"orva-simulator: There is no command \"lodger\"; did you mean \"ledger\"?\n"
              "\"orva-simulator --help\" tells more.\n"_s);
    const QString file = write(u"bad.toml"_s, "[earn]\nprecent = 5\n");
    const Outcome outcome = run({u"--config"_s, file});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.errors, u"orva-simulator: %1:2: the key \"earn.precent\" is unknown: did you "
                              "mean \"earn.percent\"?\n"_s.arg(file));
}

TEST_F(Program, letsHappenWhatItsRulesSay)
{
    const QString rules =
        write(u"rules.toml"_s, builtInRules() + "[[fault]]\nkind = 'reply-lost'\n"
                                                "request = 2\n[[fault]]\nkind = 'status'\n"
                                                "request = 3\nstatus = 307\n");
    const int port = serve({u"--config"_s, rules});
    const QByteArray request = goldenFile(u"precheck-request.xml"_s);
    EXPECT_EQ(statusOf(send(port, "precheck", request)), 200);
    EXPECT_EQ(statusOf(send(port, "precheck", request)), 0);
    const auto moved = send(port, "precheck", request);
    ASSERT_EQ(statusOf(moved), 307);
    EXPECT_EQ(moved->get_header_value("Location"), "/api/1.x/precheck/moved");
    EXPECT_EQ(statusOf(send(port, "precheck", request)), 200);
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(patience));
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    EXPECT_TRUE(output.contains(u" *0024 200 [fault reply-lost]\n")) << output.toStdString();
    EXPECT_TRUE(output.contains(u" 307 [fault status]\n")) << output.toStdString();
}

/// The most memory that a process has had, in MiB.
qint64 peakOf(qint64 process)
{
    QFile file(u"/proc/%1/status"_s.arg(process));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    static const QRegularExpression peak(u"VmHWM:\\s+(\\d+) kB"_s);
    constexpr qint64 kibibytes = 1024;
    return peak.match(QString::fromLatin1(file.readAll())).captured(1).toLongLong() / kibibytes;
}

// What instrumentation adds to every allocation is not the program's.
#ifdef __SANITIZE_ADDRESS__
constexpr qint64 instrumentation = 6;
#else
constexpr qint64 instrumentation = 1;
#endif

TEST_F(Program, bearsTwelveOfTheLargestBodiesAtOnce)
{
    const int port = serve({u"--quiet"_s});
    constexpr int clients = 12;
    const QByteArray before = "<RawCheck><id>";
    const QByteArray between = "</id><pos>";
    const QByteArray behind = "</pos></RawCheck>";
    // two texts, since one alone would be refused before it is kept
    const qsizetype text = 16 * 1024 * 1024 - before.size() - between.size() - behind.size();
    const QByteArray largest =
        before + QByteArray(text / 2, 'x') + between + QByteArray(text - text / 2, 'x') + behind;
    const auto sendAll = [&](const std::string& authorization) {
        std::vector<std::future<int>> statuses;
        for (int i = 0; i < clients; ++i) {
            statuses.push_back(std::async(std::launch::async, [&, authorization] {
                httplib::Client client("127.0.0.1", port);
                client.set_read_timeout(100);
                client.set_write_timeout(100);
                return statusOf(client.Post("/api/1.x/precheck", {{"Authorization", authorization}},
                                            largest.toStdString(), "application/xml"));
            }));
        }
        QMap<int, int> counts;
        for (std::future<int>& status : statuses) {
            ++counts[status.get()];
        }
        return counts;
    };
    const qint64 atFirst = peakOf(process.processId());
    ASSERT_GT(atFirst, 0);
    EXPECT_EQ(sendAll("Basic dGlsbA=="), (QMap<int, int>{{401, clients}}));
    EXPECT_LT(peakOf(process.processId()) - atFirst, 32 * instrumentation)
        << "bodies of strangers are not kept";
    const QMap<int, int> counts = sendAll(post("precheck", {}).authorization.toStdString());
    EXPECT_EQ(counts.value(400) + counts.value(503), clients);
    EXPECT_GT(counts.value(400), 0);
    const qint64 peak = peakOf(process.processId());
    EXPECT_LT(peak, 400 * instrumentation);
    std::printf("peak with 12 bodies of 16 MiB: %lld MiB\n", static_cast<long long>(peak));
}

TEST_F(Program, servesHttpsWithTheCertificateOfItsRules)
{
    QProcess openssl;
    openssl.start(u"openssl"_s,
                  {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                   u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s, u"-days"_s, u"2"_s, u"-subj"_s,
                   u"/CN=localhost"_s, u"-keyout"_s, folder.filePath(u"server.key"_s), u"-out"_s,
                   folder.filePath(u"server.pem"_s)});
    ASSERT_TRUE(openssl.waitForFinished(patience));
    ASSERT_EQ(openssl.exitCode(), 0) << openssl.readAllStandardError().toStdString();
    const QByteArray tls = "[tls]\ncertificate = 'server.pem'\nkey = 'server.key'\n";
    configure(process, {u"--port"_s, u"0"_s, u"--config"_s, write(u"rules.toml"_s, tls)});
    process.start();
    while (!process.canReadLine()) {
        ASSERT_TRUE(process.waitForReadyRead(patience))
            << process.readAllStandardError().toStdString();
    }
    const QUrl url(QString::fromUtf8(process.readLine()).trimmed().section(u' ', -1));
    EXPECT_EQ(url.scheme(), u"https"_s);
    httplib::SSLClient client("localhost", url.port());
    client.set_ca_cert_path(folder.filePath(u"server.pem"_s).toStdString().c_str());
    EXPECT_EQ(statusOf(client.Post("/api/1.x/precheck", "x", "application/xml")), 401);
    httplib::Client plain("localhost", url.port());
    EXPECT_EQ(statusOf(plain.Post("/api/1.x/precheck", "x", "application/xml")), 0);
}

TEST_F(Program, exitsWith1WhenItsCertificateCannotBeUsed)
{
    const QString rules =
        write(u"rules.toml"_s, "[tls]\ncertificate = 'none.pem'\nkey = 'none.key'\n");
    const Outcome outcome = run({u"--port"_s, u"0"_s, u"--config"_s, rules});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.errors,
              u"orva-simulator: The certificate %1/none.pem with the key %1/none.key cannot be "
              "used: both must be PEM files that belong together\n"_s.arg(folder.path()));
}

TEST_F(Program, exitsWith1WhenThePortIsTaken)
{
    const int port = serve();
    const Outcome outcome = run({u"--port"_s, QString::number(port)});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.errors,
              u"orva-simulator: Cannot listen at 127.0.0.1, port %1: %2; choose another with "
              "--listen or --port\n"_s.arg(port)
                  .arg(QString::fromStdString(std::generic_category().message(EADDRINUSE))));
}

TEST_F(Program, explainsItselfOnHelp)
{
    const Outcome outcome = run({u"--help"_s});
    EXPECT_EQ(outcome.exitCode, 0);
    for (const char* word : {"--config", "--listen", "--port", "--database", "--quiet", "ledger",
                             "rules", "Exit codes"}) {
        EXPECT_TRUE(outcome.output.contains(QLatin1StringView(word))) << word;
    }
}

} // namespace
} // namespace simulator::test
