// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/servicefixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

class LedgerOutput : public ServiceFixture
{
protected:
    /// A sale with points and the return of a third of its first line.
    void fill()
    {
        sell(u"sale"_s);
        const QByteArray body =
            document({u"return"_s,
                      u"2200000000017"_s,
                      u"33.33"_s,
                      {{u"1"_s, u"1000"_s, u"1.000"_s, u"33.33"_s, u"0.00"_s, u"15.67"_s}},
                      u"sale"_s});
        EXPECT_EQ(precheck(body).status, 200);
        EXPECT_EQ(paymentTry(body).status, 200);
        EXPECT_EQ(confirm(body).status, 200);
    }
};

TEST_F(LedgerOutput, isTwoAlignedTables)
{
    fill();
    EXPECT_EQ(ledgerTables(ledger(), 100).toStdString(),
              "Card      Owner          Opening  Earned  Spent  Given back  Taken back  Balance\n"
              "****0017  Анна Соколова   500.00    4.75  54.00       15.67        1.01   465.41\n"
              "****0024  Борис Орлов      75.50    0.00   0.00        0.00        0.00    75.50\n"
              "****0031  Вера Лисицына     0.00    0.00   0.00        0.00        0.00     0.00\n"
              "\n"
              "Check   Type    Card       Total  Discount   Paid  Earned  Spent  Given back  Taken "
              "back\n"
              "sale    sale    ****0017  160.00     11.00  95.00    4.75  54.00        0.00        "
              "0.00\n"
              "return  return  ****0017   33.33      0.00   0.00    0.00   0.00       15.67        "
              "1.01\n");
}

TEST_F(LedgerOutput, asCsvIsSortedByTimeThenCheckAndHidesTheCard)
{
    fill();
    EXPECT_EQ(ledgerCsv(ledger()).toStdString(), "check,card,earned,spent,givenBack,takenBack\n"
                                                 "return,****0017,0.00,0.00,15.67,1.01\n"
                                                 "sale,****0017,4.75,54.00,0.00,0.00\n");
}

TEST(LedgerView, hasALineForEachCheckWhateverItIsCalled)
{
    Booking booking;
    booking.checkId = u"a,\"b\"\nTotal\033[2J\u202e"_s;
    LedgerView view;
    view.checks.push_back(booking);
    view.cards.push_back({{}, u"Анна\n\u2028Орлова"_s});
    EXPECT_EQ(ledgerCsv(view).toStdString(),
              "check,card,earned,spent,givenBack,takenBack\n"
              "\"a,\"\"b\"\" Total\\u001b[2J\\u202e\",****,0.00,0.00,0.00,0.00\n");
    const QString tables = ledgerTables(view, 120);
    EXPECT_EQ(tables.count(u'\n'), 5) << tables.toStdString();
    EXPECT_TRUE(tables.contains(u"\na,\"b\" Total\\u001b[2J\\u202e  sale "_s))
        << tables.toStdString();
    EXPECT_TRUE(tables.contains(u"  Анна Орлова "_s)) << tables.toStdString();
}

TEST_F(LedgerOutput, ofNoCheckSaysSo)
{
    EXPECT_TRUE(ledgerTables(ledger(), 100).endsWith(u"\n\nNo check is confirmed yet.\n"));
}

TEST_F(LedgerOutput, isJsonWithAmountsAsATillWritesThem)
{
    fill();
    const QJsonObject root = QJsonDocument::fromJson(ledgerJson(ledger())).object();
    const QJsonArray cards = root.value(u"cards"_s).toArray();
    ASSERT_EQ(cards.size(), 3);
    EXPECT_EQ(cards[0].toObject(), (QJsonObject{{u"number"_s, u"****0017"_s},
                                                {u"owner"_s, u"Анна Соколова"_s},
                                                {u"opening"_s, u"500.00"_s},
                                                {u"earned"_s, u"4.75"_s},
                                                {u"spent"_s, u"54.00"_s},
                                                {u"givenBack"_s, u"15.67"_s},
                                                {u"takenBack"_s, u"1.01"_s},
                                                {u"balance"_s, u"465.41"_s}}));
    const QJsonArray checks = root.value(u"checks"_s).toArray();
    ASSERT_EQ(checks.size(), 2);
    EXPECT_EQ(checks[1].toObject(), (QJsonObject{{u"id"_s, u"return"_s},
                                                 {u"type"_s, u"return"_s},
                                                 {u"card"_s, u"****0017"_s},
                                                 {u"number"_s, u"117"_s},
                                                 {u"date"_s, u"2024-03-05 14:20:31"_s},
                                                 {u"originalId"_s, u"sale"_s},
                                                 {u"total"_s, u"33.33"_s},
                                                 {u"discount"_s, u"0.00"_s},
                                                 {u"paid"_s, u"0.00"_s},
                                                 {u"earned"_s, u"0.00"_s},
                                                 {u"spent"_s, u"0.00"_s},
                                                 {u"givenBack"_s, u"15.67"_s},
                                                 {u"takenBack"_s, u"1.01"_s}}));
    EXPECT_EQ(checks[0].toObject().value(u"paid"_s), u"95.00"_s);
}

TEST_F(LedgerOutput, isInTheOrderOfTheChecksTimes)
{
    LedgerView view;
    const auto add = [&view](const QString& id, const QString& date) {
        Booking booking;
        booking.checkId = id;
        booking.date = date;
        view.checks.push_back(booking);
    };
    add(u"c"_s, u"2024-03-05 14:20:31"_s);
    add(u"a"_s, u"2024-03-05 14:20:32"_s);
    add(u"b"_s, u"2024-03-05 14:20:31"_s);
    add(u"d"_s, u"2024-03-04 23:59:59"_s);
    EXPECT_EQ(ledgerCsv(view).remove(QRegularExpression(u",[^\\n]*"_s)), u"check\nd\nb\nc\na\n"_s);
}

TEST_F(LedgerOutput, fitsTheWidthThatItIsGiven)
{
    fill();
    for (const int width : {80, 60}) {
        const QStringList lines = ledgerTables(ledger(), width).split(u'\n');
        for (const QString& line : lines) {
            EXPECT_LE(line.size(), width) << line.toStdString();
        }
        EXPECT_GT(lines.size(), 8);
    }
}

TEST_F(LedgerOutput, namesACardWhoseBalanceDoesNotAddUp)
{
    fill();
    EXPECT_EQ(ledger().wrongCard(), QString());
    Database(databasePath()).execute(u"UPDATE cards SET balance=balance+1"_s);
    EXPECT_EQ(ledger().wrongCard(), u"****0017"_s);
}

} // namespace
} // namespace simulator::test
