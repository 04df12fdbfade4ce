// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

const QString card = u"2200000000017"_s;

class Return : public ServiceFixture
{
protected:
    static QString said(const Answer& answer)
    {
        return QString::number(answer.status) + u' ' + answer.reason;
    }

    /// A return of part of the first line of the sale: 3 pieces for 100.00, 47.00 of it points.
    static TextCheck partOfFirst(const QString& id, const QString& quantity, const QString& total,
                                 const QString& points)
    {
        return {
            id, card, total, {{u"1"_s, u"1000"_s, quantity, total, u"0.00"_s, points}}, u"sale"_s};
    }

    /// Sends a return to all three addresses, each of which must accept it.
    void giveBack(const TextCheck& check)
    {
        const QByteArray body = document(check);
        for (const char* endpoint : {"precheck", "paymenttry", "checkconfirm"}) {
            const Answer answer = service->handle(post(endpoint, body));
            EXPECT_EQ(answer.status, 200) << endpoint << ": " << answer.reason.toStdString();
        }
    }
};

TEST_F(Return, isAnsweredWithThePointsTakenBack)
{
    sell(u"sale"_s); // the first line earned 3.03
    const Answer answer =
        precheck(document(partOfFirst(u"r"_s, u"1.000"_s, u"33.33"_s, u"15.67"_s)));
    ASSERT_EQ(answer.status, 200) << answer.reason.toStdString();
    EXPECT_EQ(valueAt(answer.body, u"originalId"_s), u"sale"_s);
    EXPECT_EQ(valueAt(answer.body, u"items/RawItem/returnedQuantity"_s), u"1.000"_s);
    EXPECT_EQ(valueAt(answer.body, u"items/RawItem/awards/RawItemAwards/awardBonus"_s), u"-1.01"_s);
    EXPECT_EQ(valueAt(answer.body, u"items/RawItem/awards/RawItemAwards/allowBonusInCurrency"_s),
              u"(none)"_s);
    EXPECT_EQ(valueAt(answer.body, u"awards/RawCheckAwards/awardBonus"_s), u"-1.01"_s);
    EXPECT_EQ(valueAt(answer.body, u"awards/RawCheckAwards/allowBonus"_s), u"0.00"_s);
    EXPECT_EQ(valueAt(answer.body, u"client/RawCheckClient/name"_s), u"Анна"_s);
    EXPECT_EQ(valueAt(answer.body, u"client/RawCheckClient/account/RawCheckAccount/balance"_s),
              u"450.75"_s);
    EXPECT_EQ(valueAt(answer.body, u"informing"_s), u"(none)"_s);
}

TEST_F(Return, inPartsGivesBackExactlyWhatTheSaleBooked)
{
    sell(u"sale"_s);
    // 100.00, 47.00 and 3.03 in thirds
    giveBack(partOfFirst(u"r1"_s, u"1.000"_s, u"33.33"_s, u"15.67"_s));
    giveBack(partOfFirst(u"r2"_s, u"1.000"_s, u"33.34"_s, u"15.66"_s));
    giveBack({u"r3"_s,
              card,
              u"93.33"_s,
              {{u"1"_s, u"1000"_s, u"1.000"_s, u"33.33"_s, u"0.00"_s, u"15.67"_s},
               {u"2"_s, u"1001"_s, u"1.000"_s, u"60.00"_s, u"0.00"_s, u"7.00"_s}},
              u"sale"_s});
    const Account books = account(card);
    EXPECT_EQ(books.spent, 5'400);
    EXPECT_EQ(books.givenBack, 5'400);
    EXPECT_EQ(books.earned, 475);
    EXPECT_EQ(books.takenBack, 475);
    EXPECT_EQ(books.balance, 50'000);
    const LedgerView view = ledger();
    ASSERT_EQ(view.checks.size(), 4U);
    EXPECT_EQ(view.checks[1].checkId, u"r1"_s);
    EXPECT_EQ(view.checks[1].type, Check::Type::Return);
    EXPECT_EQ(view.checks[1].originalId, u"sale"_s);
    EXPECT_EQ(view.checks[1].givenBack, 1'567);
    EXPECT_EQ(view.checks[1].takenBack, 101);
    EXPECT_EQ(said(precheck(document(partOfFirst(u"r4"_s, u"0.001"_s, u"0.03"_s, u"0.02"_s)))),
              u"424 Line 1: more is returned than was sold"_s);
}

TEST_F(Return, isBookedOnceAtItsConfirmationOnly)
{
    sell(u"sale"_s);
    const Kopecks before = account(card).balance;
    const QByteArray body = document(partOfFirst(u"r"_s, u"1.000"_s, u"33.33"_s, u"15.67"_s));
    EXPECT_EQ(precheck(body).status, 200);
    EXPECT_EQ(precheck(body).status, 200);
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(account(card).balance, before);
    EXPECT_EQ(confirm(body).status, 200);
    EXPECT_EQ(account(card).balance, before + 1'567 - 101);
    reopen();
    EXPECT_EQ(said(confirm(body)), u"409 The check is confirmed already"_s);
    EXPECT_EQ(said(precheck(body)), u"409 The check is confirmed already"_s);
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(said(paymentTry(document(partOfFirst(u"r"_s, u"1.000"_s, u"33.34"_s, u"15.66"_s)))),
              u"409 The check is confirmed already"_s);
    EXPECT_EQ(account(card).balance, before + 1'567 - 101);
}

TEST_F(Return, outOfItsOrderIs424)
{
    sell(u"sale"_s);
    const QByteArray body = document(partOfFirst(u"r"_s, u"1.000"_s, u"33.33"_s, u"15.67"_s));
    EXPECT_EQ(said(paymentTry(body)), u"424 The check was never pre-checked"_s);
    EXPECT_EQ(precheck(body).status, 200);
    EXPECT_EQ(said(confirm(body)), u"424 No payment was tried for this check"_s);
}

TEST_F(Return, ofAnotherSaleThanThePreCheckedOneIs424)
{
    sell(u"sale"_s);
    sell(u"other"_s);
    TextCheck part = partOfFirst(u"r"_s, u"1.000"_s, u"33.33"_s, u"15.67"_s);
    EXPECT_EQ(precheck(document(part)).status, 200);
    part.originalId = u"other"_s;
    EXPECT_EQ(said(paymentTry(document(part))),
              u"424 The type of the check is not the pre-checked one"_s);
}

TEST_F(Return, ofASaleThatIsNotConfirmedIs424)
{
    EXPECT_EQ(said(precheck(document(partOfFirst(u"r"_s, u"1"_s, u"33.33"_s, u"15.67"_s)))),
              u"424 The returned sale sale is not known as a confirmed one"_s);
    EXPECT_EQ(precheck(document(saleOfTwo(u"sale"_s))).status, 200);
    EXPECT_EQ(precheck(document(partOfFirst(u"r"_s, u"1"_s, u"33.33"_s, u"15.67"_s))).status, 424);
}

TEST_F(Return, ofAReturnIs424)
{
    sell(u"sale"_s);
    giveBack(partOfFirst(u"r1"_s, u"1.000"_s, u"33.33"_s, u"15.67"_s));
    TextCheck check = partOfFirst(u"r2"_s, u"1.000"_s, u"33.33"_s, u"15.67"_s);
    check.originalId = u"r1"_s;
    EXPECT_EQ(said(precheck(document(check))),
              u"424 The returned sale r1 is not known as a confirmed one"_s);
}

TEST_F(Return, whoseDataDoNotAgreeWithTheSaleIs424)
{
    sell(u"sale"_s);
    TextCheck check = partOfFirst(u"r"_s, u"1.000"_s, u"33.33"_s, u"15.67"_s);
    check.card = u"2200000000024"_s;
    EXPECT_EQ(said(precheck(document(check))),
              u"424 The card *0024 is not the one of the returned sale"_s);
    check = partOfFirst(u"r"_s, u"0.000"_s, u"0.00"_s, QString());
    EXPECT_EQ(said(precheck(document(check))),
              u"424 items/RawItem[1]/returnedQuantity is 0.000: it must be above 0"_s);
    EXPECT_EQ(
        said(precheck(document(partOfFirst(u"r"_s, u"1.000"_s, u"33.34"_s, u"15.67"_s)))),
        u"424 Line 1: the total is 33.34, but the returned part of the sale's line is 33.33"_s);
    EXPECT_EQ(said(precheck(document(partOfFirst(u"r"_s, u"1.000"_s, u"33.33"_s, QString())))),
              u"424 Line 1: 0.00 points are given back, but the returned part had spent 15.67"_s);
    QByteArray body = document(partOfFirst(u"r"_s, u"1.000"_s, u"33.33"_s, u"15.67"_s));
    body.replace("<originalId>sale</originalId>", "");
    EXPECT_EQ(said(precheck(body)), u"400 originalId is missing"_s);
}

TEST_F(Return, thatAnotherReturnOvertookIsCheckedAgain)
{
    sell(u"sale"_s);
    const QByteArray slow = document(partOfFirst(u"slow"_s, u"2.000"_s, u"66.67"_s, u"31.33"_s));
    EXPECT_EQ(precheck(slow).status, 200);
    EXPECT_EQ(paymentTry(slow).status, 200);
    giveBack(partOfFirst(u"fast"_s, u"2.000"_s, u"66.67"_s, u"31.33"_s));
    EXPECT_EQ(said(confirm(slow)), u"424 Line 1: more is returned than was sold"_s);
    EXPECT_EQ(account(card).givenBack, 3'133);
}

TEST_F(Return, ofACardThatTheRulesHaveDroppedIsBooked)
{
    sell(u"sale"_s);
    Rules rules = builtIn();
    rules.cards.clear();
    reopen(rules);
    giveBack(partOfFirst(u"r"_s, u"3.000"_s, u"100.00"_s, u"47.00"_s));
    EXPECT_EQ(account(card).givenBack, 4'700);
}

} // namespace
} // namespace simulator::test
