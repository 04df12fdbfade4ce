// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/messagetext.h"
#include "simulator/rules/configerror.h"
#include "simulator/rules/rulesreader.h"
#include "tests/unit/input/hostiletoml.h"
#include "tests/unit/simulator/testchecks.h"

#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// What is said about a text of rules; empty when it is accepted.
QString complaintAbout(const QByteArray& text)
{
    try {
        readRules(text, u"shop.toml"_s);
    } catch (const ConfigError& error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

TEST(Rules, builtInOnesHaveCardsAndCredentials)
{
    const Rules rules = test::builtIn();
    EXPECT_EQ(rules.user, u"till"_s);
    EXPECT_EQ(rules.password, u"secret"_s);
    EXPECT_EQ(rules.apiKey, u"demo"_s);
    EXPECT_EQ(rules.discount.of(u"1000"_s), 500);
    EXPECT_EQ(rules.discount.of(u"1001"_s), 1000);
    EXPECT_EQ(rules.discount.of(u"1009"_s), 0);
    EXPECT_EQ(rules.roundDownTo, 100);
    EXPECT_EQ(rules.earn.of(u"1001"_s), 500);
    EXPECT_EQ(rules.spend.of(u"1001"_s), 5000);
    ASSERT_EQ(rules.cards.size(), 3U);
    EXPECT_EQ(rules.cards[1].number, u"2200000000024"_s);
    EXPECT_EQ(rules.cards[1].opening, 7550);
    EXPECT_EQ(rules.messages.size(), 2U);
}

TEST(Rules, thatSayNothingGrantNothing)
{
    const Rules rules = readRules("", u"empty.toml"_s);
    EXPECT_EQ(rules.user, u"till"_s);
    EXPECT_EQ(rules.discount.of(u"1"_s), 0);
    EXPECT_EQ(rules.roundDownTo, 0);
    EXPECT_TRUE(rules.cards.empty());
}

TEST(Rules, takeNumbersAsTyped)
{
    const Rules rules = readRules("[earn]\npercent = 0.07\n[spend]\npercent = '33.33'\n"
                                  "[[card]]\nnumber = '1'\nbalance = 1234567.89\n"
                                  "[[card]]\nnumber = '2'\nbalance = -5\n",
                                  u"shop.toml"_s);
    EXPECT_EQ(rules.earn.general, 7);
    EXPECT_EQ(rules.spend.general, 3333);
    EXPECT_EQ(rules.cards[0].opening, 123456789);
    EXPECT_EQ(rules.cards[1].opening, -500);
}

TEST(Rules, errorsNameFileLineAndKey)
{
    const std::vector<std::pair<QByteArray, QString>> cases{
        {"\na = = 1\n", u"shop.toml:2: this is not TOML: "_s},
        {"\n[auth\n", u"shop.toml:2: this is not TOML: "_s},
        {"[auth]\nuser = 5\n", u"shop.toml:2: the key \"auth.user\" must be a text in quotes"_s},
        {"[discount]\n\npercent = 'x'\n",
         u"shop.toml:3: the key \"discount.percent\" must be a percentage from 0 to 100 with at "
         "most two decimals"_s},
        {"[earn]\npercent = 100.01\n",
         u"shop.toml:2: the key \"earn.percent\" must be a percentage from 0 to 100 with at most "
         "two decimals"_s},
        {"[earn.sku]\n12 = -1\n",
         u"shop.toml:2: the key \"earn.sku.12\" must be a percentage from 0 to 100 with at most "
         "two decimals"_s},
        {"[spend]\npercent = true\n", u"shop.toml:2: the key \"spend.percent\" must be a number"_s},
        {"[discount]\nroundDownTo = 0.001\n",
         u"shop.toml:2: the key \"discount.roundDownTo\" must be an amount with at most two "
         "decimals, such as 12.50"_s},
        {"[discount]\nroundDownTo = -1\n",
         u"shop.toml:2: the key \"discount.roundDownTo\" must not be negative"_s},
        {"[discount]\nroundDownTo = nan\n",
         u"shop.toml:2: the key \"discount.roundDownTo\" must be an amount with at most two "
         "decimals, such as 12.50"_s},
        {"card = 1\n",
         u"shop.toml:1: the key \"card\" must be an array of tables, written [[card]]"_s},
        {"auth = 1\n", u"shop.toml:1: the key \"auth\" must be a table"_s},
        {"\n[[card]]\nname = 'x'\n", u"shop.toml:2: the key \"card.number\" is missing"_s},
        {"[[card]]\nnumber = ''\n", u"shop.toml:2: the key \"card.number\" must not be empty"_s},
        {"[[card]]\nnumber = '1'\n[[card]]\nnumber = '1'\n",
         u"shop.toml:4: the key \"card.number\" is \"1\", which an earlier card has too"_s},
        {"[[card]]\nnumber = '1'\nname = \"a\\u0001\"\n",
         u"shop.toml:3: the key \"card.name\" must not hold control characters"_s},
        {"[[message]]\nchannel = 'chek'\ntext = ''\n",
         u"shop.toml:2: the key \"message.channel\" is \"chek\": did you mean \"check\"?"_s},
        {"[[message]]\nchannel = 'telegram'\n",
         u"shop.toml:2: the key \"message.channel\" is \"telegram\": it must be \"pos\" or "
         "\"check\""_s},
        {"[[message]]\nchannel = 'pos'\ntext = 'Hi {nam}'\n",
         u"shop.toml:3: the key \"message.text\" has the unknown placeholder {nam}: known are "
         "{name}, {surname}, {balance}, {spend}, {earn}, {discount}, {total}"_s},
    };
    for (const auto& [text, expected] : cases) {
        const QString complaint = complaintAbout(text);
        if (expected.endsWith(u' ')) { // what follows is the TOML library's own text
            EXPECT_TRUE(complaint.startsWith(expected)) << complaint.toStdString();
            EXPECT_GT(complaint.size(), expected.size());
        } else {
            EXPECT_EQ(complaint, expected);
        }
    }
}

TEST(Rules, thatTheParserCannotBearAreRefused)
{
    for (const QByteArray& deep : tests::deepToml()) {
        EXPECT_EQ(
            complaintAbout('\n' + deep),
            u"shop.toml:2: tables and lists are nested deeper than 64 levels; look at the dots "
            "and brackets"_s);
    }
    EXPECT_EQ(complaintAbout(QByteArray(4'194'305, '#')),
              u"shop.toml is larger than 4194304 bytes, the most that rules may have; put long "
              "answers into files of their own"_s);
}

TEST(Rules, fromWhatIsNoRegularFileAreRefusedAtOnce)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(u"pipe"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& file : {u"/dev/zero"_s, pipe}) {
        try {
            readRulesFile(file);
            ADD_FAILURE() << file.toStdString() << " was read";
        } catch (const ConfigError& error) {
            EXPECT_EQ(QString::fromUtf8(error.what()),
                      file + u" is no regular file; name a file of rules"_s);
        }
        EXPECT_EQ(
            complaintAbout("[[answer]]\nfile = '" + file.toUtf8() + "'\n"),
            u"shop.toml:2: the key \"answer.file\" names %1, which is no regular file"_s.arg(file));
    }
}

TEST(Rules, unknownKeysAreRefusedWithTheNearestKnownOne)
{
    EXPECT_EQ(complaintAbout("[auth]\nusr = 'x'\n"),
              u"shop.toml:2: the key \"auth.usr\" is unknown: did you mean \"auth.user\"?"_s);
    EXPECT_EQ(complaintAbout("\n[disconut]\n"),
              u"shop.toml:2: the key \"disconut\" is unknown: did you mean \"discount\"?"_s);
    EXPECT_EQ(
        complaintAbout("[earn]\nroundDownTo = 1\n"),
        u"shop.toml:2: the key \"earn.roundDownTo\" is unknown: known here are percent, sku"_s);
}

TEST(Rules, thatCannotBeReadNameTheFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"none.toml"_s);
    try {
        readRulesFile(path);
        FAIL() << "a missing file was read";
    } catch (const ConfigError& error) {
        EXPECT_TRUE(QString::fromUtf8(error.what())
                        .startsWith(path + u": the file of rules cannot be read: "_s))
            << error.what();
    }
}

TEST(Rules, areReadFromAFile)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"rules.toml"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(builtInRules());
    file.close();
    EXPECT_EQ(readRulesFile(file.fileName()).cards.size(), 3U);
}

TEST(MessageText, replacesPlaceholdersOnce)
{
    const QHash<QString, QString> values{{u"name"_s, u"{earn}"_s}, {u"earn"_s, u"5.00"_s}};
    EXPECT_EQ(messageText(u"{name}: {earn} {earn}!"_s, values), u"{earn}: 5.00 5.00!"_s);
    EXPECT_EQ(messageText(u"none"_s, values), u"none"_s);
    EXPECT_EQ(unknownPlaceholder(u"{name} {balance}"_s), QString());
    EXPECT_EQ(unknownPlaceholder(u"{name} {Balance}"_s), u"Balance"_s);
}

} // namespace
} // namespace simulator
