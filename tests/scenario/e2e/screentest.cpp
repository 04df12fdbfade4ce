// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The screens of both programs: they fit the terminal, break between words, and ask for a command.

#include "tests/support/environmentvariable.h"
#include "tests/support/shop.h"
#include "tests/support/terminal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

const QString screenTill = QStringLiteral(ORVA_TILL);
const QString screenSimulator = QStringLiteral(ORVA_SIMULATOR);

class Screen : public Shop, public ::testing::WithParamInterface<std::tuple<const char*, int>>
{
protected:
    const EnvironmentVariable locale{"LC_ALL", std::get<0>(GetParam())};
    const EnvironmentVariable language{"LANGUAGE", ""};
    const EnvironmentVariable terminal{"TERM", "dumb"};

    void expectFits(const QString& program, const QStringList& arguments)
    {
        const int columns = std::get<1>(GetParam());
        const RunResult shown = runOnTerminal(program, arguments, folder(), columns);
        const QStringList lines = shown.output.split(u"\r\n"_s);
        EXPECT_GT(lines.size(), 3) << qPrintable(shown.output);
        EXPECT_FALSE(shown.output.contains(u'\033')) << qPrintable(shown.output);
        for (const QString& line : lines) {
            // a word that has no room stays whole: who copies it gets all of it
            // and so does what is to be pasted
            if (line.trimmed().contains(u' ') && !line.contains(u"-> "_s)) {
                EXPECT_LE(line.size(), columns) << qPrintable(arguments.join(u' ')) << ":\n"
                                                << qPrintable(line);
            }
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Widths, Screen,
                         ::testing::Combine(::testing::Values("C.UTF-8", "ru_RU.UTF-8"),
                                            ::testing::Values(80, 60)),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param)[0] == 'C' ? "english"
                                                                                 : "russian") +
                                    std::to_string(std::get<1>(row.param));
                         });

class Terminal : public Shop
{};

} // namespace

TEST_P(Screen, fitsTheTerminalAndIsPlainOnADumbOne)
{
    done({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"50"_s, u"--wait"_s, u"60"_s});
    expectFits(screenTill, {u"sell"_s, u"sale.toml"_s, u"--points"_s, u"20"_s, u"--tender"_s,
                            u"1000"_s, u"--wait"_s, u"60"_s});
    expectFits(screenTill, {u"return"_s, u"return.toml"_s, u"--wait"_s, u"60"_s});
    for (const QString& command : {u"checks"_s, u"ledger"_s}) {
        expectFits(screenTill, {command});
    }
    expectFits(screenTill, {u"queue"_s, u"list"_s, u"--all"_s});
    expectFits(screenTill, {u"doctor"_s});
    expectFits(screenSimulator,
               {u"ledger"_s, u"--database"_s, u"server.sqlite"_s, u"--config"_s, u"strict.toml"_s});
    closeWithoutServer();
    till({u"queue"_s, u"retry"_s, u"4"_s});
    till({u"queue"_s, u"deliver"_s});
    expectFits(screenTill, {u"queue"_s, u"list"_s});
    expectFits(screenTill, {u"doctor"_s});
}

TEST_F(Terminal, ofACashierAtWorkHasAPromptAndAPipeHasNone)
{
    const RunResult typed = runOnTerminal(screenTill, {u"work"_s}, folder(), 80, "show\nquit\n");
    EXPECT_EQ(typed.exitCode, 0) << qPrintable(typed.output);
    EXPECT_EQ(typed.output.count(u"> "_s), 2) << qPrintable(typed.output);
    const auto piped = startTill();
    EXPECT_FALSE(piped->command(u"show"_s).contains(u'>'));
}

TEST_F(Terminal, ofAnOwnerWithoutANameShowsNoLoneComma)
{
    writeFile(u"rules.toml"_s,
              readFile(u"strict.toml"_s)
                  .replace(u"name = \"Анна\"\nsurname = \"Соколова\"\n"_s, QString()));
    stopServer();
    startServer(path(u"rules.toml"_s));
    const QString shown = done({u"check"_s, u"sale.toml"_s});
    EXPECT_TRUE(shown.contains(u"****0017, balance before this check 500.00"_s))
        << qPrintable(shown);
    EXPECT_FALSE(shown.contains(u" ,"_s)) << qPrintable(shown);
    EXPECT_TRUE(shown.contains(u": На карте 500.00"_s)) << qPrintable(shown);
    EXPECT_TRUE(shown.contains(u": За эту покупку"_s)) << qPrintable(shown);
}

TEST_F(Terminal, tellsTheVersionOfBothPrograms)
{
    const RunResult simulator = runProgram(screenSimulator, {u"--version"_s}, folder());
    EXPECT_EQ(simulator.exitCode, 0);
    EXPECT_EQ(simulator.output, till({u"--version"_s}).output);
}

TEST_F(Terminal, getsJsonOfEveryCommandThatTheReadmeSays)
{
    const QStringList without{u"work"_s, u"log show"_s, u"log export"_s};
    for (const QString& command : QStringList{
             u"check"_s,       u"sell"_s,       u"return"_s,       u"work"_s,
             u"checks"_s,      u"ledger"_s,     u"explain"_s,      u"doctor"_s,
             u"init"_s,        u"log list"_s,   u"log show"_s,     u"log export"_s,
             u"log replay"_s,  u"queue list"_s, u"queue show"_s,   u"queue deliver"_s,
             u"queue retry"_s, u"queue park"_s, u"queue settle"_s, u"queue reauthorize"_s}) {
        const QString help = done(command.split(u' ') + QStringList{u"--help"_s});
        EXPECT_EQ(help.contains(u"  --json "_s), !without.contains(command)) << qPrintable(command);
    }
}

TEST_F(Terminal, showsBothLedgersInTheOrderInWhichTheirChecksWereMade)
{
    const auto idsOf = [](const QJsonArray& rows, const QString& key) {
        QStringList ids;
        for (const auto& row : rows) {
            ids.append(row.toObject().value(key).toString());
        }
        return ids;
    };
    for (int i = 0; i < 5; ++i) { // several within a second
        done({u"sell"_s, u"sale.toml"_s});
    }
    done({u"queue"_s, u"deliver"_s});
    QStringList made = idsOf(list({u"checks"_s}), u"id"_s);
    ASSERT_EQ(made.size(), 5);
    std::reverse(made.begin(), made.end()); // the newest stands first there
    EXPECT_EQ(idsOf(list({u"ledger"_s}), u"check"_s), made);
    const RunResult books = runProgram(
        screenSimulator, {u"ledger"_s, u"--json"_s, u"--database"_s, u"server.sqlite"_s}, folder());
    const QJsonObject server = QJsonDocument::fromJson(books.output.toUtf8()).object();
    EXPECT_EQ(idsOf(server.value(u"checks"_s).toArray(), u"id"_s), made);
}

TEST_F(Terminal, showsAmountsInOneFormInTheJsonOfBothPrograms)
{
    done({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"60"_s});
    const RunResult ledger = runProgram(
        screenSimulator, {u"ledger"_s, u"--json"_s, u"--database"_s, u"server.sqlite"_s}, folder());
    const QJsonObject books = QJsonDocument::fromJson(ledger.output.toUtf8()).object();
    const QJsonArray tills = list({u"ledger"_s});
    ASSERT_EQ(tills.size(), 1);
    const QJsonObject booked = books.value(u"checks"_s).toArray().first().toObject();
    for (const QString& amount : {u"earned"_s, u"spent"_s, u"givenBack"_s, u"takenBack"_s}) {
        EXPECT_TRUE(booked.value(amount).isString()) << qPrintable(amount);
        EXPECT_EQ(booked.value(amount), tills.first().toObject().value(amount))
            << qPrintable(amount);
    }
}
