// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Why something is as it is: the rule of each booked amount, and what strict mode objects to.

#include "tests/unit/simulator/page/pagefixture.h"

#include <QFile>
#include <QRegularExpression>

#include <cstring>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

/// A line each: to what an amount belongs, its rule, the amount, and whether the rule gives it.
QStringList reasonsIn(const QJsonValue& check)
{
    QStringList list;
    for (const auto& reason : check[u"reasons"_s].toArray()) {
        list.append(u"%1 %2: %3: %4 %5"_s.arg(reason[u"line"_s].toInt())
                        .arg(reason[u"what"_s].toString(), reason[u"rule"_s].toString(),
                             reason[u"amount"_s].toString(),
                             reason[u"fits"_s].toBool() ? u"yes"_s : u"no"_s));
    }
    return list;
}

TEST_F(PageTest, bookedAmountsHaveTheirRulesAsLongAsTheseGiveThem)
{
    sell(u"one"_s);
    const QStringList now = reasonsIn(object("/checks/one"));
    ASSERT_EQ(now.size(), 5 + 6);
    EXPECT_EQ(now.first(8),
              (QStringList{u"0 total: sum(lines.total): 160.00 yes"_s,
                           u"0 discount: sum(lines.discount): 11.00 yes"_s,
                           u"0 paid: total - discount - spent: 95.00 yes"_s,
                           u"0 earned: sum(lines.earned): 4.75 yes"_s,
                           u"0 spent: sum(lines.spent): 54.00 yes"_s,
                           u"1 discount: discount.percent = 5.00 %: 5.00 yes"_s,
                           u"1 spent: spend.percent = 50.00 %: 47.00 yes"_s,
                           u"1 earned: earn.percent = 5.00 %, x 95.00 / 149.00: 3.03 yes"_s}));
    EXPECT_EQ(now[8], u"2 discount: discount.sku.\"1001\" = 10.00 %: 6.00 yes"_s);
    Rules other = builtIn();
    other.discount.general = 700;
    service->setRules(other);
    EXPECT_EQ(reasonsIn(object("/checks/one"))[5],
              u"1 discount: discount.percent = 7.00 %: 5.00 no"_s);
}

TEST_F(PageTest, returnedAmountsHaveTheShareThatTheyCameFrom)
{
    sell(u"sale"_s); // 3 pieces for 100.00, of it 47.00 points, and 3.03 earned
    giveBack(u"r1"_s, u"33.33"_s, u"15.67"_s);
    giveBack(u"r2"_s, u"33.34"_s, u"15.66"_s);
    const QStringList second{u"0 total: sum(lines.total): 33.34 yes"_s,
                             u"0 givenBack: sum(lines.givenBack): 15.66 yes"_s,
                             u"0 takenBack: sum(lines.takenBack): 1.01 yes"_s,
                             u"1 total: sale.total 100.00 x 2.000 / 3.000 - 33.33: 33.34 yes"_s,
                             u"1 givenBack: sale.spent 47.00 x 2.000 / 3.000 - 15.67: 15.66 yes"_s,
                             u"1 takenBack: sale.earned 3.03 x 2.000 / 3.000 - 1.01: 1.01 yes"_s};
    EXPECT_EQ(reasonsIn(object("/checks/sale")[u"returns"_s][1]), second);
    EXPECT_EQ(reasonsIn(object("/checks/r2")), second);
    Database(databasePath())
        .execute(u"UPDATE ledger_lines SET given_back=given_back+1 WHERE check_id='r2'"_s);
    ASSERT_EQ(reasonsIn(object("/checks/r2")).size(), 6);
    EXPECT_EQ(reasonsIn(object("/checks/r2"))[4].section(u": "_s, 2), u"15.67 no"_s);
}

TEST_F(PageTest, everythingThatStrictModeObjectsToIsNamedInTheOrderOfTheDocument)
{
    QFile file(QStringLiteral(ORVA_SIMULATOR_TEST_DATA) + u"/precheck-request.xml"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    const auto findingsOf = [this](const QByteArray& body) {
        exchange(post("precheck", body));
        const QJsonObject opened =
            object("/exchanges/" + QByteArray::number(page.exchanges.span().last));
        QStringList sentences;
        for (const auto& finding : opened[u"findings"_s].toArray()) {
            sentences.append(finding[u"sentence"_s].toString().section(u": expected"_s, 0, 0));
            EXPECT_TRUE(sentences.last().startsWith(finding[u"path"_s].toString()));
        }
        return sentences.join(u'\n');
    };
    ASSERT_EQ(findingsOf(whole), QString());
    const auto spoiled = [&](const char* was, const char* is) {
        QByteArray body = whole;
        const qsizetype at = body.indexOf(was);
        EXPECT_GE(at, 0) << was;
        return body.replace(at, qsizetype(strlen(was)), is);
    };
    EXPECT_EQ(findingsOf(spoiled("<chType>1</chType>", "<chType>7</chType>")),
              u"chType is \"7\""_s);
    QByteArray much = spoiled("<chType>1</chType>", "<surprise/>");
    const qsizetype line = much.lastIndexOf("<RawItem>") + qsizetype(strlen("<RawItem>"));
    much.insert(line, "<total>1.00</total><note>1</note>");
    much.replace("<quantity>", "<quantity>about ");
    EXPECT_EQ(findingsOf(much).remove(QRegularExpression(u": known are [^\n]*"_s)),
              u"surprise is unknown here\n"
              "chType is missing\n"
              "items/RawItem[1]/quantity is \"about 2.000\"\n"
              "items/RawItem[2]/note is unknown here\n"
              "items/RawItem[2]/total is there 2 times\n"
              "items/RawItem[2]/quantity is \"about 0.250\""_s);
}

} // namespace
} // namespace simulator::test
