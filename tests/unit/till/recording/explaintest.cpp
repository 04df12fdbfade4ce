// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Where the amounts on closed checks come from, by the program.

#include "host/database/database.h"
#include "host/database/statement.h"
#include "tests/unit/till/recording/recordedshop.h"
#include "till/checks/check.h"
#include "till/checks/checkcodec.h"
#include "till/recording/record.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

class ExplainTest : public RecordedShop
{
protected:
    QJsonObject explained(const QString& check, int exitCode = 0) const
    {
        const RunResult result = till({u"explain"_s, check, u"--json"_s});
        EXPECT_EQ(result.exitCode, exitCode) << qPrintable(result.output);
        return QJsonDocument::fromJson(result.output.toUtf8()).object();
    }
    static QList<QJsonObject> amounts(const QJsonObject& explanation, const QString& what)
    {
        QList<QJsonObject> found;
        const QJsonArray all = explanation.value(u"amounts"_s).toArray();
        for (const auto& amount : all) {
            if (amount.toObject().value(u"what"_s) == what) {
                found.append(amount.toObject());
            }
        }
        return found;
    }
    static qint64 kopecks(const QJsonObject& amount)
    {
        return amount.value(u"amount"_s).toString().remove(u'.').toLongLong();
    }
    /// What the lines have, and what the whole check has: both must be the same.
    static qint64 summed(const QJsonObject& explanation, const QString& what)
    {
        qint64 lines = 0;
        qint64 whole = 0;
        const auto all = amounts(explanation, what);
        for (const QJsonObject& amount : all) {
            (amount.value(u"position"_s).toInt() > 0 ? lines : whole) += kopecks(amount);
        }
        EXPECT_EQ(lines, whole) << qPrintable(what);
        return whole;
    }
    /// Changes the check in the till's database behind everybody's back.
    void change(const std::function<void(till::Check&)>& edit) const
    {
        poshost::Database database(path(u"till.sqlite"_s));
        QString id;
        till::Check check;
        {
            poshost::Statement read(database,
                                    u"SELECT id, data FROM checks WHERE state = 'closed'"_s);
            ASSERT_TRUE(read.next());
            id = read.value(0).toString();
            check = till::checkcodec::decode(read.value(1).toByteArray(), id);
        }
        edit(check);
        poshost::Statement write(database, u"UPDATE checks SET data = ? WHERE id = ?"_s);
        write.bind(till::checkcodec::encode(check)).bind(id).execute();
    }
    QString textOf(const QString& check, int exitCode) const
    {
        const RunResult result = till({u"explain"_s, check});
        EXPECT_EQ(result.exitCode, exitCode) << qPrintable(result.output);
        return result.output;
    }
};

} // namespace

TEST_F(ExplainTest, EveryAmountOfASaleIsTracedToItsElementAndLine)
{
    sellWithPoints();

    const QJsonObject explanation = explained(u"last"_s);

    EXPECT_TRUE(explanation.value(u"agrees"_s).toBool());
    EXPECT_TRUE(explanation.value(u"recorded"_s).toBool());
    EXPECT_EQ(summed(explanation, u"discount"_s), 34'07);
    EXPECT_EQ(summed(explanation, u"pointsSpent"_s), 167'26);
    EXPECT_EQ(summed(explanation, u"pointsEarned"_s), 8'55);
    EXPECT_EQ(amounts(explanation, u"messageToCashier"_s).size(), 1);
    EXPECT_EQ(amounts(explanation, u"messageToCustomer"_s).size(), 1);
    EXPECT_EQ(kopecks(amounts(explanation, u"balance"_s).value(0)), 500'00);
    EXPECT_EQ(kopecks(amounts(explanation, u"paid"_s).value(0)), 174'74);

    // what is named must stand where it is said to stand
    const auto records = till::Record::read(path(recordFile(1)));
    QStringList answer;
    for (const QJsonObject& call : records.first().calls) {
        const QJsonArray events = call.value(u"events"_s).toArray();
        for (const auto& event : events) {
            const QJsonObject exchange = event.toObject().value(u"exchange"_s).toObject();
            if (!exchange.isEmpty()) {
                answer = exchange.value(u"answer"_s).toString().split(u'\n');
            }
        }
    }
    int sources = 0;
    const QJsonArray all = explanation.value(u"amounts"_s).toArray();
    for (const auto& amount : all) {
        const QJsonArray from = amount.toObject().value(u"sources"_s).toArray();
        for (const auto& entry : from) {
            const QJsonObject source = entry.toObject();
            if (source.value(u"document"_s) == u"answer"_s) {
                const QString line = answer.value(source.value(u"line"_s).toInt() - 1);
                const QString element =
                    source.value(u"path"_s).toString().section(u'/', -1).section(u'[', 0, 0);
                EXPECT_EQ(line.trimmed(),
                          u"<%1>%2</%1>"_s.arg(element, source.value(u"text"_s).toString()));
                ++sources;
            }
        }
    }
    EXPECT_EQ(sources, 3 + 2 + 2 + 1 + 2 + 1 + 2);
}

TEST_F(ExplainTest, ManySalesWithAllKindsOfPointsAgree)
{
    const auto work = startTill();
    for (int i = 1; i <= 8; ++i) {
        work->command(u"open sale.toml"_s);
        work->command(u"quantity 2 %1"_s.arg(0.137 * i, 0, 'f', 3));
        work->command(u"price 1 %1"_s.arg(17.31 * i, 0, 'f', 2));
        work->command(u"request"_s);
        work->command(i % 4 == 0 ? u"points none"_s : u"points %1"_s.arg(3.33 * i, 0, 'f', 2));
        EXPECT_TRUE(work->command(u"close"_s).endsWith(u"ok\n"_s)) << qPrintable(work->output());
    }
    for (int number = 1; number <= 8; ++number) {
        const QString text = textOf(QString::number(number), 0);
        EXPECT_TRUE(text.contains(u"are explained; the sums agree"_s)) << qPrintable(text);
    }
}

TEST_F(ExplainTest, AReturnIsTracedToTheAnswerToItsSale)
{
    sellWithPoints();
    ASSERT_EQ(till({u"return"_s, u"return.toml"_s}).exitCode, 0);

    const QJsonObject explanation = explained(u"last"_s);

    EXPECT_EQ(explanation.value(u"kind"_s), u"return"_s);
    EXPECT_EQ(summed(explanation, u"discount"_s), 15'32);
    EXPECT_EQ(summed(explanation, u"pointsGivenBack"_s), 67'30);
    EXPECT_EQ(summed(explanation, u"pointsTakenBack"_s), 3'44);
    const QString text = textOf(u"last"_s, 0);
    EXPECT_TRUE(text.contains(u"answer to the sale, line 20: "
                              "/RawCheck/items/RawItem[1]/awards/RawItemAwards/discount"_s))
        << qPrintable(text);
    EXPECT_TRUE(text.contains(u"awardBonus: \"-3.44\""_s)) << qPrintable(text);
}

TEST_F(ExplainTest, ARestoredSaleIsExplainedByTheRecordBeforeIt)
{
    {
        const auto work = startTill();
        work->command(u"open sale.toml"_s);
        work->command(u"points 20"_s);
        work->command(u"quantity 1 3"_s);
        work->command(u"points 10"_s);
        work->command(u"points 33.33"_s);
        work->command(u"suspend"_s);
    }
    {
        const auto work = startTill();
        work->command(u"restore last"_s);
        EXPECT_TRUE(work->command(u"close"_s).endsWith(u"ok\n"_s)) << qPrintable(work->output());
    }

    const QJsonObject explanation = explained(u"last"_s);

    EXPECT_EQ(summed(explanation, u"pointsSpent"_s), 33'33);
    EXPECT_TRUE(explanation.value(u"answer"_s).toString().startsWith(u"record 1"_s));
    EXPECT_TRUE(explanation.value(u"confirmation"_s).toString().startsWith(u"record 2"_s));
}

TEST_F(ExplainTest, WithoutARecordTheCheckItselfExplainsAndItIsSaidWhatToSwitchOn)
{
    writeConfig();
    sellWithPoints();

    const QString text = textOf(u"1"_s, 0);

    EXPECT_TRUE(text.contains(u"No readable answer to this check was recorded"_s))
        << qPrintable(text);
    EXPECT_TRUE(text.contains(u"[recording]"_s)) << qPrintable(text);
    EXPECT_TRUE(text.contains(u"/RawCheck/items/RawItem[2]/awards/RawItemAwards/discount"_s))
        << qPrintable(text);
}

TEST_F(ExplainTest, WhatIsNeitherRecordedNorKeptCannotBeExplained)
{
    writeConfig();
    sellWithPoints();
    change([](till::Check& check) { check.document->setPluginData({}); });

    const QString text = textOf(u"1"_s, 1);

    EXPECT_TRUE(text.contains(u"Nothing was recorded for check"_s)) << qPrintable(text);
    EXPECT_TRUE(text.contains(u"[recording]"_s)) << qPrintable(text);
}

TEST_F(ExplainTest, ASaleWithoutLoyaltyHasNothingToExplain)
{
    stopServer();
    EXPECT_EQ(till({u"sell"_s, u"sale.toml"_s}).exitCode, 3);

    EXPECT_TRUE(textOf(u"last"_s, 0).contains(u"Closed without the loyalty system"_s));
    EXPECT_TRUE(till({u"explain"_s, u"99"_s}).output.contains(u"no closed check"_s));
}

TEST_F(ExplainTest, AChangedAnswerIsPointedOutWithTheKopecksThatAreOff)
{
    sellWithPoints();
    writeFile(recordFile(1),
              readFile(recordFile(1))
                  .replace(u"<discount>29.98</discount>"_s, u"<discount>29.97</discount>"_s));

    const QString text = textOf(u"1"_s, 4);

    EXPECT_TRUE(text.contains(
        u"! Not explained: the answer grants 30.62, the check has 30.63: 0.01 too much."_s))
        << qPrintable(text);
    EXPECT_TRUE(text.contains(
        u"! the recorded answer is not the one that the check keeps: "
        "/RawCheck/items/RawItem[1]/awards/RawItemAwards/discount (line 20) is \"29.97\" and was "
        "\"29.98\"."_s))
        << qPrintable(text);
    EXPECT_TRUE(text.contains(u"2 do not agree."_s)) << qPrintable(text);
}

TEST_F(ExplainTest, AChangedCheckIsPointedOutEvenWhereItsSumsStillAgree)
{
    sellWithPoints();
    change([](till::Check& check) {
        check.lines[0].earnedKopecks += 1;
        check.lines[1].earnedKopecks -= 1;
        check.lines[0].spentKopecks -= 5;
        check.lines[1].spentKopecks += 5;
        check.clientMessages[0] += u'!';
    });

    const QJsonObject explanation = explained(u"1"_s, 4);

    EXPECT_FALSE(explanation.value(u"agrees"_s).toBool());
    EXPECT_EQ(summed(explanation, u"pointsEarned"_s), 8'55);
    EXPECT_EQ(summed(explanation, u"pointsSpent"_s), 167'26);
    QStringList wrong;
    const QJsonArray all = explanation.value(u"amounts"_s).toArray();
    for (const auto& amount : all) {
        if (!amount.toObject().value(u"explained"_s).toBool()) {
            wrong.append(amount.toObject().value(u"what"_s).toString() +
                         QString::number(amount.toObject().value(u"position"_s).toInt()));
        }
    }
    EXPECT_EQ(wrong, (QStringList{u"pointsSpent1"_s, u"pointsEarned1"_s, u"pointsSpent2"_s,
                                  u"pointsEarned2"_s, u"messageToCustomer0"_s}));
    EXPECT_EQ(explanation.value(u"problems"_s).toArray().size(), 1)
        << "the answer's own message is not on the check";
}
