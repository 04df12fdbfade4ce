// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/commandline.h"

#include "tests/unit/till/tilltest.h"

#include <vector>

using namespace Qt::StringLiterals;
using tests::refusalOf;
using till::Command;
using till::Options;
using till::PointsChoice;

namespace {

std::optional<int> parse(const std::vector<const char*>& words, Options& options)
{
    std::vector<const char*> arguments{"orva-till"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    return till::readCommandLine(int(arguments.size()), arguments.data(), options);
}

Options parsed(const std::vector<const char*>& words)
{
    Options options;
    EXPECT_EQ(parse(words, options), std::nullopt);
    return options;
}

} // namespace

TEST(CommandLine, everyCommandIsKnown)
{
    const std::vector<std::pair<std::vector<const char*>, Command>> commands{
        {{"check", "a.toml"}, Command::Check},
        {{"sell", "a.toml"}, Command::Sell},
        {{"return", "a.toml"}, Command::Return},
        {{"work"}, Command::Work},
        {{"checks"}, Command::Checks},
        {{"ledger"}, Command::Ledger},
        {{"doctor"}, Command::Doctor},
        {{"init"}, Command::Init},
        {{"queue", "list"}, Command::QueueList},
        {{"queue", "show", "1"}, Command::QueueShow},
        {{"queue", "deliver"}, Command::QueueDeliver},
        {{"queue", "retry", "1"}, Command::QueueRetry},
        {{"queue", "park", "1"}, Command::QueuePark},
        {{"queue", "settle", "1"}, Command::QueueSettle},
        {{"queue", "reauthorize"}, Command::QueueReauthorize},
        {{"log", "list"}, Command::LogList},
        {{"log", "show", "3.2"}, Command::LogShow},
        {{"log", "export", "all", "case.jsonl"}, Command::LogExport},
        {{"log", "export", "3", "--html", "case.html"}, Command::LogExport},
        {{"log", "replay", "case.jsonl"}, Command::LogReplay},
        {{"explain", "last"}, Command::Explain},
        {{"support", "case.tar"}, Command::Support},
        {{"erase", "2200000000017"}, Command::Erase},
        {{"verify", "http://127.0.0.1:8710/"}, Command::Verify},
        {{"verify", "--list"}, Command::Verify}};
    for (const auto& [words, command] : commands) {
        EXPECT_EQ(parsed(words).command, command) << words.front();
    }
}

TEST(CommandLine, optionsOfASale)
{
    const Options options =
        parsed({"sell", "чек.toml", "--points", "12.50", "--tender", "500", "--wait", "5"});
    EXPECT_EQ(options.file, u"чек.toml"_s);
    EXPECT_EQ(options.points, PointsChoice::sum(12'50));
    EXPECT_EQ(options.tenderKopecks, 500'00);
    EXPECT_EQ(options.waitSeconds, 5);
    EXPECT_EQ(parsed({"sell", "a", "--points", "all"}).points, PointsChoice::all());
    EXPECT_EQ(parsed({"sell", "a"}).points, PointsChoice());
    EXPECT_EQ(parsed({"sell", "a"}).tenderKopecks, std::nullopt);
}

TEST(CommandLine, optionsOfAPage)
{
    const Options page = parsed({"log", "export", "3", "--html", "case.html", "--with-cards"});
    EXPECT_EQ(page.record, u"3"_s);
    EXPECT_EQ(page.target, u"case.html"_s);
    EXPECT_TRUE(page.asPage);
    EXPECT_TRUE(page.withCards);
    EXPECT_FALSE(parsed({"log", "export", "3", "--html", "case.html"}).withCards);
    EXPECT_FALSE(parsed({"log", "export", "3", "case.jsonl"}).asPage);
}

TEST(CommandLine, globalOptionsStandBeforeOrAfterTheCommand)
{
    for (const Options& options : {parsed({"--config", "c.toml", "--plugin", "p.so", "--database",
                                           "d", "--verbose", "queue", "list", "--json"}),
                                   parsed({"queue", "list", "--json", "--config", "c.toml",
                                           "--plugin", "p.so", "--database", "d", "--verbose"})}) {
        EXPECT_EQ(options.configFile, u"c.toml"_s);
        EXPECT_TRUE(options.configNamed);
        EXPECT_EQ(options.plugin, u"p.so"_s);
        EXPECT_EQ(options.database, u"d"_s);
        EXPECT_TRUE(options.verbose);
        EXPECT_TRUE(options.json);
    }
    EXPECT_EQ(parsed({"work"}).configFile, u"orva.toml"_s);
    EXPECT_FALSE(parsed({"work"}).configNamed);
}

TEST(CommandLine, whatIsNotUnderstoodIsAUsageError)
{
    ::testing::internal::CaptureStderr();
    for (const std::vector<const char*>& words :
         std::vector<std::vector<const char*>>{{},
                                               {"bogus"},
                                               {"sell"},
                                               {"queue"},
                                               {"queue", "show"},
                                               {"queue", "show", "x"},
                                               {"ledger", "--csv", "--json"},
                                               {"log", "export", "3"},
                                               {"log", "export", "3", "a", "--html", "b"},
                                               {"log", "export", "3", "a", "--with-cards"},
                                               {"sell", "a", "--wait", "-1"},
                                               {"work", "--bogus"}}) {
        Options options;
        EXPECT_EQ(parse(words, options), 2) << (words.empty() ? "nothing" : words.back());
    }
    EXPECT_FALSE(::testing::internal::GetCapturedStderr().empty());
}

TEST(CommandLine, everyCommandButWorkTakesJson)
{
    for (const std::vector<const char*>& words :
         std::vector<std::vector<const char*>>{{"check", "a"},
                                               {"sell", "a"},
                                               {"return", "a"},
                                               {"checks"},
                                               {"ledger"},
                                               {"queue", "list"},
                                               {"queue", "show", "1"},
                                               {"queue", "deliver"},
                                               {"queue", "retry", "1"},
                                               {"queue", "park", "1"},
                                               {"queue", "settle", "1"},
                                               {"queue", "reauthorize"}}) {
        std::vector<const char*> more = words;
        more.insert(more.end(), {"--json", "--quiet"});
        const Options options = parsed(more);
        EXPECT_TRUE(options.json && options.quiet) << words.back();
    }
}

TEST(CommandLine, aUsageErrorNamesTheNearestCommandOrOption)
{
    Options options;
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(parse({"queue", "lsit"}, options), 2);
    EXPECT_EQ(parse({"sell", "a", "--piont", "5"}, options), 2);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "orva-till: There is no command \"lsit\"; did you mean \"list\"?\n"
              "\"orva-till --help\" tells more.\n"
              "orva-till: There is no option \"--piont\" here; did you mean \"--points\"?\n"
              "\"orva-till --help\" tells more.\n");
}

TEST(CommandLine, helpAndVersionAreNoErrors)
{
    ::testing::internal::CaptureStdout();
    Options options;
    EXPECT_EQ(parse({"--help"}, options), 0);
    EXPECT_EQ(parse({"--version"}, options), 0);
    const std::string text = ::testing::internal::GetCapturedStdout();
    EXPECT_NE(text.find("Exit codes: 0 done"), std::string::npos) << text;
}

TEST(CommandLine, sumsAreExactToTheKopeck)
{
    EXPECT_EQ(till::readSum(u"49.90"_s), 49'90);
    EXPECT_EQ(till::readPoints(u"0"_s), PointsChoice());
    EXPECT_EQ(refusalOf([] { till::readPoints(u"many"_s); }),
              u"\"many\" is not a sum from 0 with at most two decimals, such as 49.90."_s);
    EXPECT_EQ(refusalOf([] { till::readSum(u"-1"_s); }),
              u"\"-1\" is not a sum from 0 with at most two decimals, such as 49.90."_s);
}
