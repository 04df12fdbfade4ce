// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The sentences with which a strict server explains a refusal.

#include "simulator/rules/rulesreader.h"
#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

class StrictServer : public ServiceFixture
{
protected:
    StrictServer() { follow(); }

    /// The built-in rules, strict, with more in front of them.
    void follow(const QByteArray& more = {})
    {
        reopen(readRules("strict = true\n" + more + builtInRules(), u"shop.toml"_s));
    }

    static std::string brief(const Answer& answer)
    {
        return std::to_string(answer.status) + ' ' + answer.reason.toStdString();
    }

    /// The confirmation of saleOfTwo, as ServiceFixture::sell makes it.
    QByteArray confirmationOfSale()
    {
        return confirmation(precheck(sale).body,
                            {{u"1"_s, {u"5.00"_s, u"47.00"_s}}, {u"2"_s, {u"6.00"_s, u"7.00"_s}}},
                            u"95.00"_s);
    }

    const QByteArray sale = document(saleOfTwo(u"sale"_s));
};

TEST_F(StrictServer, namesTheFieldOfAConfirmationThatIsNotAsItWasTried)
{
    QByteArray body = confirmationOfSale();
    ASSERT_EQ(brief(paymentTry(body)), "200 ");
    body.replace("<usedDiscount>6.00<", "<usedDiscount>5.99<");
    EXPECT_EQ(
        brief(confirm(body)),
        "424 items/RawItem[2]/usedAwards/RawItemUsedAwards/usedDiscount is 5.99: expected "
        "6.00, 1 kopeck too little. The closest is the payment try of this check: id, number, "
        "pos, date, chType, merchantId, total, cardNumber, client, awards, informing, payments "
        "match, and 1 of 2 lines. Total 160.00 less discount 10.99 less points 54.00 is "
        "95.01, but the payment is 95.00");
}

TEST_F(StrictServer, namesTheFieldThatIsNotAsItWasAnswered)
{
    QByteArray body = confirmationOfSale();
    body.replace("<total>60.00<", "<total>60.10<");
    EXPECT_EQ(
        brief(paymentTry(body)).substr(0, 123),
        "424 items/RawItem[2]/total is 60.10: expected 60.00, 10 kopecks too much. The closest "
        "is the answer to check sale: id, numb");
    body = confirmationOfSale().replace("<id>sale<", "<id>sole<");
    EXPECT_EQ(brief(paymentTry(body)).substr(0, 73),
              "424 id is sole: expected sale. The closest is the answer to check sale: n");
    body = confirmationOfSale().replace("<cardNumber>2200000000017<", "<cardNumber>2300000000017<");
    EXPECT_EQ(brief(paymentTry(body)).substr(0, 66),
              "424 cardNumber is *0017 (from character 2 on): expected *0017. The");
}

TEST_F(StrictServer, saysByHowMuchAPaymentIsWrong)
{
    const QByteArray body = confirmationOfSale().replace("<amount>95.00<", "<amount>94.50<");
    EXPECT_EQ(
        brief(paymentTry(body)).substr(0, 85),
        "424 payments/RawCheckPayment/amount is 94.50: expected 95.00, 50 kopecks too little. ");
}

TEST_F(StrictServer, namesTheClosestCardAndTheShareOfAReturn)
{
    TextCheck unknown = saleOfTwo(u"other"_s);
    unknown.card = u"2200000000018"_s;
    EXPECT_EQ(brief(precheck(document(unknown))),
              "424 cardNumber is *0018: expected *0017, the closest card, of which 1 characters "
              "differ. The card *0018 is unknown");
    sell(u"sale"_s);
    const TextCheck part{u"r"_s,
                         u"2200000000017"_s,
                         u"33.34"_s,
                         {{u"1"_s, u"1000"_s, u"1.000"_s, u"33.34"_s, u"0.00"_s, u"15.67"_s}},
                         u"sale"_s};
    EXPECT_EQ(brief(precheck(document(part))),
              "424 items/RawItem[1]/total is 33.34: expected 33.33, 1 kopeck too much. The closest "
              "is the sale sale. Line 1: the total is 33.34, but the returned part of the sale's "
              "line is 33.33");
}

TEST_F(StrictServer, namesTheClosestFinishedAnswerOfThoseThatAreNotForARequest)
{
    follow("unmatched = 'refuse'\n"
           "[[answer]]\nendpoint = 'paymenttry'\ncard = '2200000000024'\n"
           "[[answer]]\nendpoint = 'precheck'\ncard = '2200000000031'\n");
    EXPECT_EQ(
        brief(precheck(sale)),
        "400 cardNumber is *0017: expected *0031. The closest is [[answer]] 2, endpoint match. "
        "No [[answer]] is for this request to precheck, cardNumber *0017: [[answer]] 1 is for "
        "paymenttry, [[answer]] 2 is for cardNumber *0031");
    follow("unmatched = 'refuse'\n[[answer]]\nendpoint = 'precheck'\ntimes = 1\n");
    EXPECT_EQ(precheck(sale).status, 200);
    EXPECT_EQ(
        brief(precheck(sale)).substr(0, 99),
        "400 request is number 2: [[answer]] 1 was given 1 times, which is all. The closest is "
        "[[answer]] 1,");
}

TEST_F(StrictServer, namesTheAddressThatADocumentBelongsTo)
{
    const QByteArray body = confirmationOfSale();
    EXPECT_EQ(brief(precheck(body)).substr(0, 99),
              "400 The address is precheck: the document is a confirmation, which belongs to "
              "paymenttry and checkc");
    EXPECT_EQ(
        brief(paymentTry(sale)).substr(0, 90),
        "400 The address is paymenttry: the document is that of a pre-check, which belongs to "
        "prech");
}

TEST_F(StrictServer, explainsNothingUnlessItIsStrict)
{
    reopen();
    TextCheck unknown = saleOfTwo(u"other"_s);
    unknown.card = u"2200000000018"_s;
    EXPECT_EQ(brief(precheck(document(unknown))), "424 The card *0018 is unknown");
}

} // namespace
} // namespace simulator::test
