// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What people and a monitoring see of a store: right, clean, and nobody's name.

#include "tests/support/program.h"
#include "tests/support/testfolder.h"
#include "tests/unit/store/storefixture.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const QString hostile = u"Ivanova\n\x1b[31m\"} 1\n\u202e\u0441\u0432"_s;

class Eyes : public storetest::StoreTest
{
protected:
    /// A check whose every text could tell of a person.
    void handOverPersonal(const QString& identifier)
    {
        orvastore::HandedCheck check = storetest::checkOf(identifier, u"2200000000017"_s);
        check.till = hostile;
        check.content = "card 2200000000017 of Anna Petrova";
        check.messages.first().payload = "<card>2200000000017</card>";
        check.messages.first().queue = u"queue of Petrova"_s;
        check.messages.first().authorization = u"Basic 2200000000017"_s;
        orvastore::handOver(owner, check);
        orvastore::noteTill(owner, check.shop, check.till);
    }

    QStringList arguments(const QStringList& words) const
    {
        return QStringList{
                   u"--config"_s,
                   folder.write(u"store.toml"_s,
                                u"[store]\ndatabase = \"%1\"\ntimeout = 2\n"_s.arg(connection))} +
               words;
    }

    RunResult store(const QStringList& words) const
    {
        return runProgram(QStringLiteral(ORVA_STORE), arguments(words), folder.file({}));
    }

    /// What a program says is wrong with metrics; empty: nothing.
    QString objectionsTo(const QString& metrics) const
    {
        return runProgram(u"sh"_s,
                          {u"-c"_s, u"promtool check metrics <'%1'"_s.arg(
                                        folder.write(u"metrics"_s, metrics))},
                          folder.file({}))
            .output;
    }

    static QString at(const QString& address)
    {
        return runProgram(u"curl"_s, {u"-sS"_s, address}, u"/"_s).output;
    }

    TestFolder folder;
};

QString addressOf(Program& metrics)
{
    return metrics.waitForLine(u"Metrics: "_s).section(u',', 0, 0);
}

} // namespace

TEST_F(Eyes, theMetricsAreSoundAndNameNobody)
{
    handOverPersonal(u"1c0ffee0-petrova"_s);
    handOverPersonal(u"2c0ffee0-petrova"_s);
    const auto task = book.claim();
    ASSERT_TRUE(task);
    ASSERT_TRUE(book.finish(*task,
                            storetest::resultOf(poshost::deliverypolicy::Meaning::Refused, 400),
                            false)
                    .isWritten);
    sql(u"INSERT INTO orva.outcomes (day, message, attempt, meaning, status, certainly_refused, "
        "error) VALUES (current_date, 999, 1, 'Petrova', 0, false, '')"_s);
    Program metrics(QStringLiteral(ORVA_STORE),
                    arguments({u"metrics"_s, u"--listen"_s, u"127.0.0.1:0"_s}), folder.file({}));
    const QString text = at(addressOf(metrics));
    for (const QString& line :
         {u"orva_store_up 1"_s, u"orva_store_messages_waiting 1"_s, u"orva_store_tills 1"_s,
          u"orva_store_parked_messages{state=\"to_be_looked_at\"} 1"_s,
          u"orva_store_recent_failures{reason=\"refused\"} 1"_s,
          u"orva_store_recent_failures{reason=\"other\"} 1"_s,
          u"orva_store_silent_tills{longer_than_seconds=\"900\"} 0"_s}) {
        EXPECT_TRUE(text.contains(u'\n' + line + u'\n')) << qPrintable(line + u"\nin:\n"_s + text);
    }
    EXPECT_EQ(objectionsTo(text), QString());
    static const QRegularExpression known(
        u"^(#.*|orva_store_[a-z_]+(\\{(state|reason|longer_than_seconds)=\"[a-z_0-9]+\"\\})? "
        "[0-9.e+-]+|exposer_.*)?$"_s);
    for (const QString& line : text.split(u'\n')) {
        EXPECT_TRUE(known.match(line).hasMatch()) << qPrintable(line);
    }
    for (const QString& secret :
         {u"2200000000017"_s, u"etrova"_s, u"Ivanova"_s, u"c0ffee"_s, u"shop\""_s, u"Basic"_s}) {
        EXPECT_FALSE(text.contains(secret)) << qPrintable(secret);
    }
    metrics.terminate();
    EXPECT_EQ(metrics.waitForEnd(), 0);
}

TEST_F(Eyes, aStoreThatIsAwayIsToldAndFoundAgain)
{
    sql(u"ALTER TABLE orva.ready RENAME TO hidden"_s);
    Program metrics(QStringLiteral(ORVA_STORE),
                    arguments({u"metrics"_s, u"--listen"_s, u"127.0.0.1:0"_s}), folder.file({}));
    const QString address = addressOf(metrics);
    EXPECT_TRUE(at(address).contains(u"\norva_store_up 0\n"_s));
    EXPECT_FALSE(at(address).contains(u"orva_store_lanes_waiting"_s));
    sql(u"ALTER TABLE orva.hidden RENAME TO ready"_s);
    EXPECT_TRUE(at(address).contains(u"\norva_store_up 1\n"_s));
}

TEST_F(Eyes, metricsAreForThisMachineAlone)
{
    for (const QString& address : {u"0.0.0.0:9188"_s, u"[::]:9188"_s, u"9188"_s, u"+9188"_s,
                                   u"127.0.0.1:99999"_s, u"127.0.0.1:1,0.0.0.0:2"_s}) {
        const RunResult result = store({u"metrics"_s, u"--listen"_s, address});
        EXPECT_EQ(result.exitCode, 1) << qPrintable(address);
        EXPECT_TRUE(result.output.contains(u"is not an address of this machine alone"_s))
            << qPrintable(result.output);
    }
}

TEST_F(Eyes, theStatusShowsHostileNamesOnCleanLines)
{
    handOverPersonal(u"a"_s);
    const RunResult result = store({u"status"_s});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.output.contains(u"Messages that wait: 1.\n"_s)) << qPrintable(result.output);
    EXPECT_TRUE(result.output.contains(u"Ivanova"_s));
    static const QRegularExpression dirty(u"[^\\P{C}\\n]"_s);
    EXPECT_FALSE(result.output.contains(dirty)) << qPrintable(result.output);
    EXPECT_FALSE(result.output.contains(u"2200000000017"_s));
    EXPECT_FALSE(result.output.contains(u"\n\"} 1"_s)) << "a line of its own";
}

TEST_F(Eyes, theStatusIsJsonForProgramsOnceOrEachTimeALine)
{
    handOverPersonal(u"a"_s);
    const QJsonObject once =
        QJsonDocument::fromJson(store({u"status"_s, u"--json"_s}).output.toUtf8()).object();
    EXPECT_EQ(once.value("messages"_L1).toInt(), 1);
    EXPECT_EQ(once.value("tills"_L1).toArray().first().toObject().value("till"_L1).toString(),
              hostile);
    Program watching(QStringLiteral(ORVA_STORE),
                     arguments({u"status"_s, u"--json"_s, u"--watch"_s}), folder.file({}));
    for (int i = 0; i < 2; ++i) {
        const QString line = watching.waitForLine(u"{"_s);
        EXPECT_TRUE(QJsonDocument::fromJson((u'{' + line).toUtf8()).isObject()) << qPrintable(line);
    }
    ::kill(watching.processId(), SIGINT);
    EXPECT_EQ(watching.waitForEnd(), 0);
}

TEST_F(Eyes, anOlderStoreIsToldToBeBroughtUpToDate)
{
    sql(u"DROP FUNCTION orva.figures(int)"_s);
    const RunResult result = store({u"status"_s});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.output.contains(u"orva-store migrate"_s)) << qPrintable(result.output);
}

/// Each alert of the rules that are installed is in both kinds of tests, and these hold.
TEST(Alerts, fireWhereTheyShallAndAreSilentElsewhere)
{
    const auto textOf = [](const char* name) {
        QFile file(QString::fromUtf8(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return QString::fromUtf8(file.readAll());
    };
    const TestFolder folder;
    const QString rules = textOf(ORVA_ALERTS);
    const QString tests = textOf(ORVA_ALERTS_TEST);
    folder.write(u"alerts.yml"_s, rules);
    folder.write(u"alertstest.yml"_s, tests);
    const RunResult result =
        runProgram(u"promtool"_s, {u"test"_s, u"rules"_s, u"alertstest.yml"_s}, folder.file({}));
    EXPECT_EQ(result.exitCode, 0) << qPrintable(result.output);
    static const QRegularExpression alert(u"- alert: (\\w+)\\n"_s);
    int alerts = 0;
    for (const QRegularExpressionMatch& match : alert.globalMatch(rules)) {
        const QString name = match.captured(1);
        EXPECT_TRUE(tests.contains(u"alertname: %1\n        exp_alerts:\n          - "_s.arg(name)))
            << "never fires: " << qPrintable(name);
        EXPECT_TRUE(tests.contains(u"alertname: %1, exp_alerts: []"_s.arg(name)))
            << "never silent: " << qPrintable(name);
        ++alerts;
    }
    EXPECT_GE(alerts, 10);
    EXPECT_EQ(rules.count(u"          action: \""_s), alerts);
}
