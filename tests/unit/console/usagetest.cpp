// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/usage.h"

#include "tests/unit/console/russian.h"
#include "tests/unit/till/printing.h"

#include <CLI/CLI.hpp>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>
#include <sstream>

using namespace Qt::StringLiterals;

namespace {

struct Outcome
{
    int exitCode;
    QString text;
};

/// A command line such as the programs have, given these words.
Outcome parse(const QStringList& words)
{
    std::string config;
    std::string file;
    int wait = 0;
    bool asCsv = false;
    bool asJson = false;
    CLI::App app("About", "orva-till");
    console::usage::prepare(app);
    app.require_subcommand(1);
    app.add_option("--config", config, "Where the settings are");
    CLI::App* const sell = app.add_subcommand("sell", "Sell");
    sell->fallthrough();
    sell->add_option("FILE", file, "What")->required();
    sell->add_option("--wait", wait, "How long")->check(CLI::Range(0, 9));
    CLI::Option* const csv = sell->add_flag("--csv", asCsv, "Commas");
    sell->add_flag("--json", asJson, "Objects")->excludes(csv);
    CLI::App* const queue = app.add_subcommand("queue", "Queue");
    queue->fallthrough();
    queue->require_subcommand(1);
    queue->add_subcommand("list", "All")->fallthrough();
    queue->add_subcommand("deliver", "Send")->fallthrough();
    std::vector<std::string> arguments;
    for (auto it = words.crbegin(); it != words.crend(); ++it) {
        arguments.push_back(it->toStdString());
    }
    std::stringstream out;
    try {
        app.parse(arguments);
        return {0, {}};
    } catch (const CLI::ParseError& error) {
        const int exitCode = app.exit(error, out, out);
        return {exitCode, QString::fromStdString(out.str())};
    }
}

/// The sentence of a complaint.
QString complaint(const QString& line)
{
    const Outcome outcome = parse(line.split(u' ', Qt::SkipEmptyParts));
    EXPECT_NE(outcome.exitCode, 0) << line.toStdString();
    EXPECT_TRUE(outcome.text.startsWith(u"orva-till: "_s)) << outcome.text.toStdString();
    return outcome.text.section(u'\n', 0, 0).section(u": "_s, 1);
}

} // namespace

TEST(Usage, suggestsTheNearestCommand)
{
    EXPECT_EQ(complaint(u"sel a"_s), u"There is no command \"sel\"; did you mean \"sell\"?"_s);
    EXPECT_EQ(complaint(u"queue lsit"_s),
              u"There is no command \"lsit\"; did you mean \"list\"?"_s);
    EXPECT_EQ(complaint(u"queue del"_s),
              u"There is no command \"del\"; did you mean \"deliver\"?"_s);
    EXPECT_EQ(complaint(u"bogus"_s), u"There is no command \"bogus\"."_s);
}

TEST(Usage, suggestsTheNearestOption)
{
    EXPECT_EQ(complaint(u"sell a --wiat 5"_s),
              u"There is no option \"--wiat\" here; did you mean \"--wait\"?"_s);
    EXPECT_EQ(complaint(u"sell --wiat=5"_s),
              u"There is no option \"--wiat\" here; did you mean \"--wait\"?"_s);
    EXPECT_EQ(complaint(u"queue list --confg c"_s),
              u"There is no option \"--confg\" here; did you mean \"--config\"?"_s);
    EXPECT_EQ(complaint(u"queue list --wait 5"_s), u"There is no option \"--wait\" here."_s);
    EXPECT_EQ(complaint(u"sell a b"_s), u"The word \"b\" is one too many here."_s);
}

TEST(Usage, tellsWhatIsWrongInEnglish)
{
    EXPECT_EQ(complaint({}), u"The command is missing."_s);
    EXPECT_EQ(complaint(u"sell"_s), u"FILE is missing."_s);
    EXPECT_EQ(complaint(u"sell a --wait x"_s), u"--wait cannot be \"x\"; it goes from 0 to 9."_s);
    EXPECT_EQ(complaint(u"sell a --wait -1"_s), u"--wait cannot be \"-1\"; it goes from 0 to 9."_s);
    EXPECT_EQ(complaint(u"sell a --wait"_s), u"--wait needs a value."_s);
    EXPECT_EQ(complaint(u"sell a --wait 1 --wait 2"_s), u"--wait stands here twice."_s);
    EXPECT_EQ(complaint(u"sell a --csv --json"_s), u"--csv does not go together with --json."_s);
    EXPECT_EQ(complaint(u"sell a --csv=x"_s), u"--csv cannot be \"x\"."_s);
}

TEST(Usage, tellsWhatIsWrongInRussian)
{
    const Russian russian;
    EXPECT_EQ(complaint(u"sel a"_s), u"Команды «sel» нет; возможно, имелась в виду «sell»?"_s);
    EXPECT_EQ(complaint(u"sell a --wiat 5"_s),
              u"Ключа «--wiat» здесь нет; возможно, имелся в виду «--wait»?"_s);
    for (const QString& line :
         {u""_s, u"bogus"_s, u"sell"_s, u"sell a b"_s, u"sell a --wait x"_s, u"sell a --wait"_s,
          u"sell a --wait 1 --wait 2"_s, u"sell a --csv --json"_s, u"sell a --csv=x"_s}) {
        const QString text = complaint(line);
        EXPECT_TRUE(text.contains(QRegularExpression(u"[а-я]{4}"_s))) << text.toStdString();
        EXPECT_FALSE(text.contains(QRegularExpression(u" [a-z]{2}"_s))) << text.toStdString();
    }
    EXPECT_TRUE(parse({}).text.endsWith(u"\nПодробнее: «orva-till --help».\n"_s));
}

TEST(Usage, helpIsInTheUsersLanguageWithAlignedColumns)
{
    const Russian russian;
    const Outcome outcome = parse({u"sell"_s, u"--help"_s});
    EXPECT_EQ(outcome.exitCode, 0);
    for (const QString& word :
         {u"Вызов: "_s, u"[КЛЮЧИ]"_s, u"Аргументы:\n"_s, u"(обязательно)"_s, u"Ключи:\n"_s,
          u"--wait ЧИСЛО [0 - 9]"_s, u"не вместе с: --csv"_s, u"Показать эту справку"_s}) {
        EXPECT_TRUE(outcome.text.contains(word)) << word.toStdString() << "\n"
                                                 << outcome.text.toStdString();
    }
    EXPECT_FALSE(outcome.text.contains(u"Options"_s)) << outcome.text.toStdString();
    for (const QString& description : {u"What"_s, u"How long"_s, u"Commas"_s}) {
        const qsizetype at = outcome.text.indexOf(description);
        EXPECT_EQ(at - outcome.text.lastIndexOf(u'\n', at) - 1, 30) << outcome.text.toStdString();
    }
    EXPECT_TRUE(parse({u"--help"_s}).text.contains(u"Команды:\n"_s));
}
