// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "input/tomlguard.h"
#include "tests/unit/input/hostiletoml.h"

#include <QString>

#include <algorithm>

#include <gtest/gtest.h>

using namespace tests;
using input::maximumTomlBytes;
using input::maximumTomlLevels;
using input::parseToml;
using input::TomlRefused;

namespace {

/// The line that is refused; 0 where the parser has the text, whatever it says to it.
qint64 refusedLine(const QByteArray& text)
{
    try {
        parseToml(text);
    } catch (const TomlRefused& refused) {
        EXPECT_EQ(refused.limit(), TomlRefused::Limit::Levels);
        return refused.line();
    } catch (const toml::parse_error&) {
        return 0;
    }
    return 0;
}

/// Tables and lists within one another, walked without recursion.
int levelsOf(const toml::table& root)
{
    int deepest = 0;
    std::vector<std::pair<const toml::node*, int>> open{{&root, 0}};
    while (!open.empty()) {
        const auto [node, level] = open.back();
        open.pop_back();
        deepest = std::max(deepest, level);
        if (const toml::table* table = node->as_table()) {
            for (const auto& [key, value] : *table) {
                open.emplace_back(&value, level + 1);
            }
        } else if (const toml::array* array = node->as_array()) {
            for (const toml::node& value : *array) {
                open.emplace_back(&value, level + 1);
            }
        }
    }
    return deepest;
}

} // namespace

TEST(TomlGuard, refusesFortyThousandLevelsHoweverTheyAreWritten)
{
    for (const QByteArray& text : deepToml()) {
        EXPECT_EQ(refusedLine(text), 1) << text.left(20).toStdString();
    }
}

TEST(TomlGuard, takes64PartsOfAKeyAndRefusesOneMore)
{
    for (const auto& [before, behind] : {std::pair{"", " = 1\n"}, {"[", "]\n"}, {"[[", "]]\n"}}) {
        EXPECT_EQ(refusedLine(before + dotted(maximumTomlLevels) + behind), 0) << before;
        EXPECT_EQ(refusedLine(before + dotted(maximumTomlLevels + 1) + behind), 1) << before;
    }
    EXPECT_EQ(levelsOf(parseToml(dotted(maximumTomlLevels) + " = 1\n")), maximumTomlLevels);
}

TEST(TomlGuard, addsUpTheTableTheKeyAndTheBrackets)
{
    const QByteArray table = '[' + dotted(20) + "]\n";
    EXPECT_EQ(refusedLine(table + dotted(44) + " = 1\n"), 0);
    EXPECT_EQ(refusedLine(table + dotted(45) + " = 1\n"), 2);
    const QByteArray within = table + dotted(20) + " = { " + dotted(22);
    EXPECT_EQ(refusedLine(within + " = [] }\n"), 0);
    EXPECT_EQ(refusedLine(within + " = [[[]]] }\n"), 0);
    EXPECT_EQ(refusedLine(within + " = [[[[]]]] }\n"), 2);
    EXPECT_EQ(refusedLine(table + dotted(20) + " = [\n1.5,\n{ " + dotted(24) + " = 1 } ]\n"), 4);
}

TEST(TomlGuard, countsWhatIsOpenAndNotWhatThereIs)
{
    EXPECT_EQ(
        refusedLine(QByteArray("[[line]]\nprice = 1.5\nlist = [1.5, [2.5]]\n").repeated(5000)), 0);
    EXPECT_EQ(refusedLine("a = [" + QByteArray("1.5, ").repeated(5000) + "]\n"), 0);
    EXPECT_EQ(refusedLine("a = [" + QByteArray("[[[1.5]]],\n").repeated(5000) + "]\n"), 0);
    EXPECT_EQ(refusedLine("a = [" + QByteArray("{ b.c = { d.e = 1 } }, ").repeated(5000) + "]\n"),
              0);
    EXPECT_EQ(refusedLine('[' + dotted(40) + "]\n[b]\n" + dotted(40) + " = 1\n"), 0);
}

TEST(TomlGuard, countsNothingInTextsAndComments)
{
    const QByteArray dots = QByteArray(".[{").repeated(1000);
    for (const QByteArray& text :
         {"a = \"" + dots + "\"\n", "a = '" + dots + "'\n", "a = \"\"\"\n" + dots + "\n\"\"\"\n",
          "a = '''\n" + dots + "\n'''\n", '#' + dots + '\n', "a = 1 # \"'" + dots + '\n',
          "\"" + dots + "\" = 1\n", "a = \"\\\"" + dots + "\"\n",
          "a = \"\"\"\"\" " + dots + " \\\"\"\"\"\"\n", "a = '''''" + dots + "'''''\n"}) {
        EXPECT_EQ(refusedLine(text), 0) << text.left(20).toStdString();
    }
}

TEST(TomlGuard, seesTheLevelsBehindTextsAndComments)
{
    const QByteArray deep = dotted(maximumTomlLevels + 1) + " = 1\n";
    for (const char* text :
         {"a = \"\"\n", "a = ''\n", "a = \"\\\\\"\n", "a = '\\'\n", "a = \"'\"\n", "a = '\"'\n",
          "# \" ' [ {\n", "a = \"\"\"\"\"\"\n", "a = ''''''\n", "a = \"\"\"b\"\"\"\"\"\n",
          "a = '''b'''''\n", "a = \"\"\"\\\"\"\"\"\n", "a = '''\\'''\n", "a = [ '[' ]\n",
          "\xEF\xBB\xBF", "a = 1\r\n", "[[a]]\n[[a]]\n", "a = [ # [\n1 ]\n"}) {
        const QByteArray before(text);
        const qint64 line = 1 + before.count('\n');
        EXPECT_EQ(refusedLine(before + deep), line) << before.toStdString();
    }
    EXPECT_EQ(refusedLine("a = \"\"\"\n\\\n\n\"\"\"\n" + deep), 5);
}

TEST(TomlGuard, leavesTextsThatAreNoTomlToTheParser)
{
    for (const char* text :
         {"", "a", "a =", "a = \"", "a = \"\"\"", "a = 'b\n", "]", "}}", "[a", "[[a]", "a = [",
          "a = {", "a = \"\\", "# c", "a.", ".a = 1", "a = ]"}) {
        EXPECT_EQ(refusedLine(text), 0) << text;
    }
}

TEST(TomlGuard, takesFourMebibytesAndRefusesOneByteMore)
{
    const QByteArray most(maximumTomlBytes, '#');
    EXPECT_TRUE(parseToml(most).empty());
    try {
        parseToml(most + '#');
        FAIL() << "too many bytes were parsed";
    } catch (const TomlRefused& refused) {
        EXPECT_EQ(refused.limit(), TomlRefused::Limit::Bytes);
    }
}
