// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Texts that want to steer the terminal, or to look like the till's own lines, through every
// command: from the server's answer and its refusal, from a check file and from the command line.

#include "tests/support/grantingserver.h"
#include "tests/support/keptoutput.h"
#include "tests/unit/till/tilltest.h"
#include "till/commands/program.h"
#include "till/screen/output.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

#include <iostream>
#include <sstream>

using namespace Qt::StringLiterals;
using till::Command;
using till::ExitCode;
using till::Options;

namespace {

/// What XML lets through: line breaks, DEL, C1, directions, separators.
const QString fromServer =
    u"\nerror: lost\r\nok\nnote: x \u007f\u0085\u009b2J\u202e\u2066\u2028ok"_s;
/// What a file may hold besides.
const QString fromFile = u"\033[2J\033]0;title\a\b\nerror: lost\nok"_s;

class HostileServer : public tests::GrantingServer
{
public:
    QByteArray getResponse() override
    {
        if (status >= 400) {
            return (fromFile + fromServer).toUtf8();
        }
        const QByteArray message = "<communicationChannel>pos</communicationChannel><info>" +
                                   fromServer.toUtf8() +
                                   "</info></RawCheckInforming><RawCheckInforming>"
                                   "<communicationChannel>check</communicationChannel><info>" +
                                   fromServer.toUtf8() + "</info>";
        return GrantingServer::getResponse()
            .replace("<communicationChannel>check</communicationChannel><info>Спасибо</info>",
                     message)
            .replace("Соколова", "Соколова" + fromServer.toUtf8());
    }
};

/// Found independently of what makes texts printable.
bool steers(QChar character)
{
    static const QString directions =
        u"\u061c\u200e\u200f\u202a\u202b\u202c\u202d\u202e\u2066\u2067\u2068\u2069\u2028\u2029"_s;
    return (character.category() == QChar::Other_Control && character != u'\n') ||
           directions.contains(character);
}

QString quoted(const QString& text)
{
    const QByteArray json = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(json.chopped(1).sliced(1)); // TOML has the same escapes
}

class HostileText : public ::testing::Test
{
protected:
    HostileText()
    {
        QLoggingCategory::setFilterRules(u"orva=false\nposhost.*=false"_s);
        folder.write(u"orva.toml"_s,
                     u"[Orva]\nserverUrl = \"http://127.0.0.1:1/\"\nuser = \"till\"\n"
                     "password = \"secret\"\napikey = \"demo\"\n[till]\n"
                     "database = \"till.sqlite\"\nplugin = \"%1\"\n[recording]\n"
                     "folder = \"records\"\n"_s.arg(QString::fromUtf8(ORVA_PLUGIN_FILE)));
        folder.write(
            u"sale.toml"_s,
            u"type = \"sale\"\ncard = \"2200000000017\"\n[[line]]\ncode = \"1001\"\n"
            "name = %1\nprice = 100.00\nquantity = 2\n"_s.arg(quoted(u"Чай"_s + fromFile)));
        folder.write(u"return.toml"_s, u"type = \"return\"\nsale = \"last\"\n[[line]]\n"
                                       "position = 1\nquantity = 1\n"_s);
        options.configFile = folder.file(u"orva.toml"_s);
        options.configNamed = true;
    }
    ~HostileText() override { QLoggingCategory::setFilterRules(QString()); }

    ExitCode run(Command command, const QString& file = {})
    {
        options.command = command;
        options.file = file.isEmpty() ? QString() : folder.file(file);
        out.written.clear();
        errors.written.clear();
        return till::Program(options, out, errors).run();
    }
    QString said() const { return out.written + errors.written; }
    void expectHarmless(const char* what) const
    {
        const QString text = said();
        EXPECT_FALSE(text.isEmpty()) << what;
        for (const QChar character : text) {
            ASSERT_FALSE(steers(character))
                << what << " prints " << int(character.unicode()) << " in\n"
                << text.toStdString();
        }
    }
    /// No line looks like one that ends a command or notes something, but the program's own.
    void expectOwnLinesOnly(const char* what) const
    {
        const QStringList lines = said().split(u'\n');
        for (const QString& line : lines) {
            EXPECT_FALSE(line == u"ok"_s || line.startsWith(u"error:"_s) ||
                         line.startsWith(u"note: x"_s))
                << what << ":\n"
                << said().toStdString();
        }
    }
    /// Runs a cashier's commands. @return what each printed, its last line included
    QStringList work(const QStringList& commands)
    {
        std::istringstream input(commands.join(u'\n').toStdString());
        std::streambuf* const former = std::cin.rdbuf(input.rdbuf());
        EXPECT_EQ(run(Command::Work), ExitCode::Ok) << said().toStdString();
        std::cin.rdbuf(former);
        std::cin.clear();
        QStringList answers{QString()};
        const QStringList lines = out.written.split(u'\n', Qt::SkipEmptyParts);
        for (const QString& line : lines) {
            answers.last() += line + u'\n';
            if (line == u"ok"_s || line.startsWith(u"error: "_s)) {
                answers.append(QString());
            }
        }
        return answers;
    }

    TestFolder folder;
    HostileServer server;
    Options options;
    tests::KeptOutput out;
    tests::KeptOutput errors;
};

struct Row
{
    const char* what;
    Command command;
    QString file;
    bool hasJson = true;
    /// Whether whole documents are shown, which have lines of their own.
    bool showsDocuments = false;
};

} // namespace

TEST_F(HostileText, steersNothingInWhatACommandPrints)
{
    options.points = till::PointsChoice::all();
    ASSERT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::Ok) << said().toStdString();
    options.points = {};
    server.status = 400; // what the queue keeps of a refusal
    ASSERT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::WithoutLoyalty);
    run(Command::QueueDeliver);
    server.status = 200;
    options.message = 1;
    const QList<Row> rows{
        {"check", Command::Check, u"sale.toml"_s},
        {"sell", Command::Sell, u"sale.toml"_s},
        {"return", Command::Return, u"return.toml"_s},
        {"checks", Command::Checks, {}},
        {"ledger", Command::Ledger, {}},
        {"doctor", Command::Doctor, {}},
        {"queue list", Command::QueueList, {}},
        {"queue show", Command::QueueShow, {}, true, true},
        {"log list", Command::LogList, {}},
        {"log show", Command::LogShow, {}, false},
        {"log replay", Command::LogReplay, {}},
        {"explain", Command::Explain, {}},
        {"erase", Command::Erase, {}},
    };
    options.card = u"2200000000017"_s;
    for (const Row& row : rows) {
        options.all = true;
        options.record = row.command == Command::Explain ? u"1"_s : u"all"_s;
        for (const bool json : {false, true}) {
            options.json = json && row.hasJson;
            run(row.command, row.file);
            expectHarmless(row.what);
            if (!row.showsDocuments) {
                expectOwnLinesOnly(row.what);
            }
            if (options.json) {
                EXPECT_FALSE(QJsonDocument::fromJson(out.written.toUtf8()).isNull())
                    << row.what << ":\n"
                    << out.written.toStdString();
            }
        }
        options.json = false;
    }
}

TEST_F(HostileText, isTheSameInJson)
{
    options.json = true;
    ASSERT_EQ(run(Command::Check, u"sale.toml"_s), ExitCode::Ok) << said().toStdString();
    const QJsonObject check = QJsonDocument::fromJson(out.written.toUtf8()).object();
    // XML makes one line break of every kind that it knows
    const QString read = QString(fromServer).replace(u"\r\n"_s, u"\n"_s);
    EXPECT_EQ(check.value(u"toCustomer"_s).toArray().first().toString(), read);
    const QJsonObject line = check.value(u"lines"_s).toArray().first().toObject();
    EXPECT_EQ(line.value(u"name"_s).toString(), u"Чай"_s + fromFile);
}

TEST_F(HostileText, isNeverTakenForAnAnswerToTheCashier)
{
    const QStringList commands{u"open "_s + folder.file(u"sale.toml"_s),
                               u"request"_s,
                               u"show"_s,
                               u"suspend"_s,
                               u"restore last"_s,
                               u"points all"_s,
                               u"close"_s,
                               u"queue"_s,
                               u"return "_s + folder.file(u"return.toml"_s),
                               u"close"_s,
                               u"open \033[2J\u202e\r.toml"_s,
                               u"points \033[2J"_s,
                               u"bog\033us\u2028"_s,
                               u"quit"_s};
    const QStringList answers = work(commands);
    expectHarmless("work");
    ASSERT_EQ(answers.size(), commands.size() + 1) << said().toStdString();
    EXPECT_TRUE(answers.last().isEmpty());
    for (qsizetype i = 0; i < commands.size(); ++i) {
        const bool fails = i >= 10 && i <= 12;
        EXPECT_EQ(answers.at(i).endsWith(u"\nok\n"_s) || answers.at(i) == u"ok\n"_s, !fails)
            << commands.at(i).toStdString() << ":\n"
            << answers.at(i).toStdString();
    }
    EXPECT_TRUE(answers.at(6).contains(u"\n   error: lost ok note: x"_s))
        << "a message on the slip is one indented line:\n"
        << answers.at(6).toStdString();
}

TEST_F(HostileText, isWrappedOnASlip)
{
    ASSERT_EQ(run(Command::Sell, u"sale.toml"_s), ExitCode::Ok) << said().toStdString();
    EXPECT_TRUE(out.written.contains(
        u"\n\n  error: lost\n  ok\n  note: x \\u007f\n  \\u009b2J\\u202e\\u2066\n  ok\n"_s))
        << out.written.toStdString();
}

TEST_F(HostileText, inAnArgumentIsShownAndNotObeyed)
{
    for (const Command command : {Command::Sell, Command::Check, Command::Return}) {
        EXPECT_EQ(run(command, u"\033[2J\nerror: lost\u202e.toml"_s), ExitCode::Usage);
        expectHarmless("a missing file");
        expectOwnLinesOnly("a missing file");
        EXPECT_TRUE(errors.written.contains(u"\\u001b[2J error: lost\\u202e.toml"_s))
            << errors.written.toStdString();
    }
    options.record = u"\033[2J\n7"_s;
    for (const Command command : {Command::Explain, Command::LogExport}) {
        EXPECT_NE(run(command), ExitCode::Ok);
        expectHarmless("a record's name");
    }
}
