// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

const QString card = u"2200000000017"_s;

class Confirmation : public ServiceFixture
{
protected:
    static QString said(const Answer& answer)
    {
        return QString::number(answer.status) + u' ' + answer.reason;
    }

    /// The answer to the pre-check of a sale of two lines.
    QByteArray granted(const QString& id)
    {
        const Answer answer = precheck(document(saleOfTwo(id)));
        EXPECT_EQ(answer.status, 200) << answer.reason.toStdString();
        return answer.body;
    }

    /// Its confirmation with both discounts and points on the first line.
    QByteArray paid(const QByteArray& answer, const QString& points, const QString& amount)
    {
        return confirmation(answer, {{u"1"_s, {u"5.00"_s, points}}, {u"2"_s, {u"6.00"_s}}}, amount);
    }
};

TEST_F(Confirmation, booksTheSaleInTheLedger)
{
    sell(u"sale"_s);
    // G 160, D 11, P 54, paid 95: 4.75 x 95/149 = 3.03, 2.70 x 95/149 = 1.72
    const LedgerView view = ledger();
    ASSERT_EQ(view.checks.size(), 1U);
    const Booking& booking = view.checks[0];
    EXPECT_EQ(booking.checkId, u"sale"_s);
    EXPECT_EQ(booking.cardNumber, card);
    EXPECT_EQ(booking.number, u"117"_s);
    EXPECT_EQ(booking.date, u"2024-03-05 14:20:31"_s);
    EXPECT_EQ(booking.total, 16'000);
    EXPECT_EQ(booking.discount, 1'100);
    EXPECT_EQ(booking.paid, 9'500);
    EXPECT_EQ(booking.spent, 5'400);
    EXPECT_EQ(booking.earned, 303 + 172);
    EXPECT_EQ(account(card).balance, 50'000 - 5'400 + 475);
    EXPECT_EQ(account(card).expected(), account(card).balance);
    EXPECT_EQ(view.wrongCard(), QString());
    // the next pre-check shows the new balance
    EXPECT_EQ(
        valueAt(granted(u"next"_s), u"client/RawCheckClient/account/RawCheckAccount/balance"_s),
        u"450.75"_s);
}

TEST_F(Confirmation, isAcknowledgedWithTheChecksIdentifier)
{
    const QByteArray body = paid(granted(u"sale"_s), QString(), u"149.00"_s);
    const Answer answer = paymentTry(body);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, "<RawCheck>\n <id>sale</id>\n</RawCheck>\n");
    EXPECT_EQ(confirm(body).body, answer.body);
}

TEST_F(Confirmation, thatIsRepeatedIs409AndBooksNothingMore)
{
    const QByteArray body = paid(granted(u"sale"_s), u"10.00"_s, u"139.00"_s);
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(confirm(body).status, 200);
    const Kopecks balance = account(card).balance;
    EXPECT_EQ(said(confirm(body)), u"409 The check is confirmed already"_s);
    reopen();
    EXPECT_EQ(said(confirm(body)), u"409 The check is confirmed already"_s);
    EXPECT_EQ(account(card).balance, balance);
    EXPECT_EQ(ledger().checks.size(), 1U);
}

TEST_F(Confirmation, isFollowedByTheSameTryOnly)
{
    const QByteArray answer = granted(u"sale"_s);
    const QByteArray body = paid(answer, u"10.00"_s, u"139.00"_s);
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(confirm(body).status, 200);
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(said(paymentTry(paid(answer, u"20.00"_s, u"129.00"_s))),
              u"409 The check is confirmed already"_s);
    reopen();
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(ledger().checks.size(), 1U);
}

TEST_F(Confirmation, booksThePaymentThatWasTriedLast)
{
    const QByteArray answer = granted(u"sale"_s);
    const QByteArray first = paid(answer, u"10.00"_s, u"139.00"_s);
    const QByteArray second = paid(answer, u"20.00"_s, u"129.00"_s);
    EXPECT_EQ(paymentTry(first).status, 200);
    EXPECT_EQ(paymentTry(second).status, 200);
    EXPECT_EQ(said(confirm(first)),
              u"424 This is not the payment that was tried last for this check"_s);
    EXPECT_EQ(confirm(second).status, 200);
    EXPECT_EQ(account(card).spent, 2'000);
}

TEST_F(Confirmation, ofAnUnknownCheckIs424)
{
    const QByteArray body = paid(granted(u"sale"_s), QString(), u"149.00"_s);
    EXPECT_EQ(said(confirm(body)), u"424 No payment was tried for this check"_s);
    QByteArray other = body;
    other.replace("<id>sale</id>", "<id>other</id>");
    EXPECT_EQ(said(paymentTry(other)), u"424 The check was never pre-checked"_s);
    EXPECT_EQ(said(confirm(other)), u"424 The check was never pre-checked"_s);
    EXPECT_TRUE(ledger().checks.empty());
}

TEST_F(Confirmation, whoseSumsDoNotAgreeIs424)
{
    const QByteArray answer = granted(u"sale"_s);
    for (const Answer& rejected : {paymentTry(paid(answer, u"10.00"_s, u"139.01"_s)),
                                   confirm(paid(answer, u"10.00"_s, u"139.01"_s))}) {
        EXPECT_EQ(
            said(rejected),
            u"424 Total 160.00 less discount 11.00 less points 10.00 is 139.00, but the payment is 139.01"_s);
    }
    EXPECT_EQ(said(paymentTry(confirmation(answer, {{u"1"_s, {u"5.01"_s}}}, u"154.99"_s))),
              u"424 Line 1 used 5.01 of discount, but only 5.00 was granted"_s);
    EXPECT_EQ(
        said(paymentTry(confirmation(answer, {{u"2"_s, {QString(), u"27.01"_s}}}, u"132.99"_s))),
        u"424 Line 2 used 27.01 of points, but only 27.00 was granted"_s);
    EXPECT_EQ(said(paymentTry(confirmation(answer, {{u"1"_s, {u"-1.00"_s}}}, u"161.00"_s))),
              u"424 usedDiscount is -1.00: it must not be negative"_s);
}

TEST_F(Confirmation, withoutAPaymentOrWithAnUnreadableOneIs400)
{
    const QByteArray answer = granted(u"sale"_s);
    EXPECT_EQ(
        said(paymentTry(answer)),
        u"400 payments/RawCheckPayment/amount is missing: the confirmation says nothing of the payment"_s);
    EXPECT_EQ(said(paymentTry(paid(answer, QString(), u"all"_s))),
              u"400 amount is \"all\": expected an amount such as 12.50"_s);
}

TEST_F(Confirmation, sumsRepeatedElements)
{
    QByteArray body = paid(granted(u"sale"_s), u"10.00"_s, u"139.00"_s);
    body.replace("<usedDiscount>5.00</usedDiscount>",
                 "<usedDiscount>4.00</usedDiscount><usedDiscount>1.00</usedDiscount>");
    body.replace("<usedBonusInCurrency>10.00</usedBonusInCurrency>",
                 "<usedBonusInCurrency>9.99</usedBonusInCurrency><usedBonusInCurrency>0.01</"
                 "usedBonusInCurrency>");
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(confirm(body).status, 200);
    EXPECT_EQ(account(card).spent, 1'000);
}

TEST_F(Confirmation, sumsItsPayments)
{
    QByteArray body = paid(granted(u"sale"_s), u"10.00"_s, u"100.00"_s);
    EXPECT_EQ(paymentTry(body).status, 424) << "39.00 are missing";
    body.replace("</RawCheckPayment>", "</RawCheckPayment><RawCheckPayment><amount>39.00</amount>"
                                       "<amountType>card</amountType></RawCheckPayment>");
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(confirm(body).status, 200);
    EXPECT_EQ(ledger().checks.at(0).paid, 13'900);
}

TEST_F(Confirmation, ofAnotherCardOrOtherLinesIs424)
{
    const QByteArray body = paid(granted(u"sale"_s), QString(), u"149.00"_s);
    QByteArray changed = body;
    changed.replace("2200000000017", "2200000000024");
    EXPECT_EQ(said(paymentTry(changed)), u"424 The card *0024 is not the pre-checked one"_s);
    changed = body;
    changed.replace("<sku>1000</sku>", "<sku>1009</sku>");
    EXPECT_EQ(said(paymentTry(changed)),
              u"424 The lines are not those that were pre-checked last"_s);
    changed = body;
    changed.replace("<chType>1</chType>", "<chType>2</chType><originalId>x</originalId>")
        .replace("quantity>", "returnedQuantity>");
    EXPECT_EQ(said(paymentTry(changed)), u"424 The type of the check is not the pre-checked one"_s);
}

TEST_F(Confirmation, claimingMoreThanWasGrantedIs424)
{
    QByteArray body = paid(granted(u"sale"_s), u"60.00"_s, u"89.00"_s);
    body.replace("<allowBonusInCurrency>47.50<", "<allowBonusInCurrency>99.00<");
    EXPECT_EQ(said(paymentTry(body)),
              u"424 Line 1 used 60.00 of points, but only 47.50 was granted"_s);
}

TEST_F(Confirmation, mayFollowAnEarlierAnswerWhenALaterOneWasLost)
{
    // the till has the first answer; meanwhile the card is spent elsewhere and the reply to a
    // second pre-check is lost
    Rules generous = builtIn();
    generous.earn.general = 1'000;
    reopen(generous);
    const QByteArray first = granted(u"sale"_s);
    reopen();
    const QByteArray second = granted(u"sale"_s);
    ASSERT_NE(first, second);
    const QByteArray body = paid(first, QString(), u"149.00"_s);
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(confirm(body).status, 200);
    EXPECT_EQ(account(card).earned, 950 + 540);
}

TEST_F(Confirmation, withoutTheWholeAnswerIsCheckedAgainstTheLastOne)
{
    Rules generous = builtIn();
    generous.earn.general = 1'000;
    reopen(generous);
    granted(u"sale"_s);
    reopen();
    QByteArray body = paid(granted(u"sale"_s), QString(), u"149.00"_s);
    body.replace("<surname>", "<surname>x");
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(confirm(body).status, 200);
    EXPECT_EQ(account(card).earned, 475 + 270);
}

TEST_F(Confirmation, isBookedEvenWhenTheBalanceGoesBelowZero)
{
    const QString poor = u"2200000000024"_s; // 75.50
    std::vector<QByteArray> bodies;
    for (const QString& id : {u"a"_s, u"b"_s}) {
        const Answer answer =
            precheck(document({id, poor, u"200.00"_s, {{u"1"_s, u"1000"_s, u"1"_s, u"200.00"_s}}}));
        EXPECT_EQ(valueAt(answer.body, u"awards/RawCheckAwards/allowBonus"_s), u"75.50"_s);
        bodies.push_back(
            confirmation(answer.body, {{u"1"_s, {u"10.00"_s, u"75.00"_s}}}, u"115.00"_s));
    }
    for (const QByteArray& body : bodies) {
        EXPECT_EQ(paymentTry(body).status, 200);
        EXPECT_EQ(confirm(body).status, 200);
    }
    // each earns 9.50 x 115/190 = 5.75
    EXPECT_EQ(account(poor).balance, 7'550 - 15'000 + 2 * 575);
    const Answer next = precheck(document({u"c"_s, poor, u"0.00"_s, {}}));
    EXPECT_EQ(valueAt(next.body, u"client/RawCheckClient/account/RawCheckAccount/balance"_s),
              u"-63.00"_s);
    EXPECT_EQ(valueAt(next.body, u"awards/RawCheckAwards/allowBonus"_s), u"0.00"_s);
}

TEST_F(Confirmation, isBookedForACardThatTheRulesHaveDropped)
{
    const QByteArray body = paid(granted(u"sale"_s), QString(), u"149.00"_s);
    EXPECT_EQ(paymentTry(body).status, 200);
    Rules rules = builtIn();
    rules.cards.clear();
    reopen(rules);
    EXPECT_EQ(confirm(body).status, 200);
    EXPECT_EQ(account(card).earned, 745);
}

TEST_F(Confirmation, survivesAStopAfterEveryStep)
{
    const QByteArray answer = granted(u"sale"_s);
    reopen();
    const QByteArray body = paid(answer, u"10.00"_s, u"139.00"_s);
    EXPECT_EQ(paymentTry(body).status, 200);
    reopen();
    EXPECT_EQ(confirm(body).status, 200);
    reopen();
    EXPECT_EQ(account(card).spent, 1'000);
    EXPECT_EQ(ledger().checks.size(), 1U);
}

TEST_F(Confirmation, keepsTheOpeningBalanceOfTheFirstSight)
{
    granted(u"sale"_s);
    Rules rules = builtIn();
    rules.cards[0].opening = 99'999;
    reopen(rules);
    EXPECT_EQ(
        valueAt(granted(u"sale"_s), u"client/RawCheckClient/account/RawCheckAccount/balance"_s),
        u"500.00"_s);
}

} // namespace
} // namespace simulator::test
