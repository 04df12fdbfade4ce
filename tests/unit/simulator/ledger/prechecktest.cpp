// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

class Precheck : public ServiceFixture
{
protected:
    /// Sends a pre-check that is rejected and returns the status with the reason.
    QString rejection(const QByteArray& body)
    {
        const Answer answer = precheck(body);
        EXPECT_EQ(answer.body, answer.reason.toUtf8() + '\n');
        EXPECT_EQ(answer.contentType, "text/plain; charset=utf-8");
        return QString::number(answer.status) + u' ' + answer.reason;
    }
};

TEST_F(Precheck, isAnsweredAsTypedByHand)
{
    const Answer answer = precheck(goldenFile(u"precheck-request.xml"_s));
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.contentType, "application/xml; charset=utf-8");
    EXPECT_EQ(answer.body.toStdString(), goldenFile(u"precheck-answer.xml"_s).toStdString());
    EXPECT_EQ(answer.checkId, u"5f0c7a52-8d0b-4f39-9a8e-1c2d3e4f5a6b"_s);
    EXPECT_EQ(answer.cardNumber, u"2200000000024"_s);
}

TEST_F(Precheck, isAnsweredTheSameBytesUntilSomethingChanges)
{
    const QByteArray request = goldenFile(u"precheck-request.xml"_s);
    const QByteArray first = precheck(request).body;
    EXPECT_EQ(precheck(request).body, first);
    reopen();
    EXPECT_EQ(precheck(request).body, first);
    precheck(document(saleOfTwo(u"other"_s)));
    EXPECT_EQ(precheck(request).body, first);
}

TEST_F(Precheck, ofAChangedCheckIsAnsweredAnewUntilItIsConfirmed)
{
    TextCheck check{
        u"c"_s, u"2200000000031"_s, u"10.00"_s, {{u"1"_s, u"1009"_s, u"1"_s, u"10.00"_s}}};
    EXPECT_EQ(valueAt(precheck(document(check)).body, u"awards/RawCheckAwards/awardBonus"_s),
              u"0.00"_s);
    check.lines[0].sku = u"1000"_s;
    const Answer answer = precheck(document(check));
    EXPECT_EQ(valueAt(answer.body, u"items/RawItem/awards/RawItemAwards/discount"_s), u"0.50"_s);
    // 9.50 is rounded down to 9.00, of which 5 % are earned
    EXPECT_EQ(valueAt(answer.body, u"awards/RawCheckAwards/awardBonus"_s), u"0.45"_s);
    const QByteArray body = confirmation(answer.body, {{u"1"_s, {u"1.00"_s}}}, u"9.00"_s);
    EXPECT_EQ(paymentTry(body).status, 200);
    EXPECT_EQ(precheck(document(check)).status, 200);
    EXPECT_EQ(confirm(body).status, 200);
    EXPECT_EQ(rejection(document(check)), u"409 The check is confirmed already"_s);
}

TEST_F(Precheck, carriesUnknownElementsBackAndDropsClaimedAwards)
{
    const Answer answer = precheck(
        "<RawCheck><id>c</id><chType>1</chType><extra><deep a='1'>x</deep></extra>"
        "<total>10.00</total><items><RawItem><quantity>1</quantity><id>1</id><total>10.00</total>"
        "<note>n</note><awards><RawItemAwards><discount>9.00</discount></RawItemAwards></awards>"
        "<usedAwards/></RawItem></items><cardNumber>2200000000031</cardNumber>"
        "<awards><RawCheckAwards><allowBonus>999</allowBonus></RawCheckAwards></awards>"
        "<client/><informing/><payments/></RawCheck>");
    ASSERT_EQ(answer.status, 200);
    EXPECT_EQ(valueAt(answer.body, u"extra/deep"_s), u"x"_s);
    EXPECT_EQ(valueAt(answer.body, u"items/RawItem/note"_s), u"n"_s);
    EXPECT_EQ(valueAt(answer.body, u"items/RawItem/awards/RawItemAwards/discount"_s), u"0.50"_s);
    EXPECT_EQ(valueAt(answer.body, u"items/RawItem/awards[1]"_s), u"(none)"_s);
    EXPECT_EQ(valueAt(answer.body, u"items/RawItem/usedAwards"_s), u"(none)"_s);
    EXPECT_EQ(valueAt(answer.body, u"awards/RawCheckAwards/allowBonus"_s), u"0.00"_s);
    EXPECT_EQ(valueAt(answer.body, u"awards[1]"_s), u"(none)"_s);
    EXPECT_EQ(valueAt(answer.body, u"client[1]"_s), u"(none)"_s);
    EXPECT_EQ(valueAt(answer.body, u"payments"_s), u"(none)"_s);
    EXPECT_FALSE(answer.body.contains('=')); // no attribute anywhere
}

TEST_F(Precheck, ofAnEmptyCheckShowsTheCard)
{
    const Answer answer = precheck(document({u"c"_s, u"2200000000017"_s, u"0.00"_s, {}}));
    ASSERT_EQ(answer.status, 200);
    EXPECT_EQ(valueAt(answer.body, u"client/RawCheckClient/account/RawCheckAccount/balance"_s),
              u"500.00"_s);
    EXPECT_EQ(valueAt(answer.body, u"items"_s), QString());
    EXPECT_EQ(valueAt(answer.body, u"awards/RawCheckAwards/allowBonus"_s), u"0.00"_s);
}

TEST_F(Precheck, doesNotLookAtThePrice)
{
    QByteArray body = document({u"c"_s,
                                u"2200000000031"_s,
                                u"1234567.50"_s,
                                {{u"1"_s, u"1000"_s, u"1.000"_s, u"1234567.50"_s}}});
    body.replace("<price>10</price>", "<price>1.23457e+06</price>");
    EXPECT_EQ(precheck(body).status, 200);
}

TEST_F(Precheck, escapesWhatItCarriesBack)
{
    QByteArray body = document({u"a&lt;b&amp;c"_s, u"2200000000031"_s, u"0.00"_s, {}});
    const Answer answer = precheck(body);
    EXPECT_EQ(valueAt(answer.body, u"id"_s), u"a<b&c"_s);
}

TEST_F(Precheck, whoseDataDoNotAgreeIs424)
{
    const TextCheck good{
        u"c"_s,
        u"2200000000017"_s,
        u"30.00"_s,
        {{u"1"_s, u"a"_s, u"1"_s, u"10.00"_s}, {u"2"_s, u"a"_s, u"1"_s, u"20.00"_s}}};
    TextCheck check = good;
    check.card = u"2200000099999"_s;
    EXPECT_EQ(rejection(document(check)), u"424 The card *9999 is unknown"_s);
    check = good;
    check.total = u"30.01"_s;
    EXPECT_EQ(rejection(document(check)),
              u"424 The lines add up to 30.00, but the total is 30.01"_s);
    check = good;
    check.lines[1].id = u"01"_s;
    EXPECT_EQ(rejection(document(check)), u"424 Two lines have the id 1"_s);
    check = good;
    check.lines[0].total = u"-10.00"_s;
    EXPECT_EQ(rejection(document(check)),
              u"424 items/RawItem[1]/total is -10.00: it must not be negative"_s);
    check = good;
    check.lines[1].quantity = u"-1"_s;
    EXPECT_EQ(rejection(document(check)),
              u"424 items/RawItem[2]/quantity is -1: it must be above 0"_s);
    EXPECT_EQ(precheck(document(good)).status, 200);
}

TEST_F(Precheck, thatIsNoCheckIs400WithTheElementsPath)
{
    const TextCheck good{
        u"c"_s, u"2200000000017"_s, u"10.00"_s, {{u"1"_s, u"a"_s, u"1"_s, u"10.00"_s}}};
    const auto without = [&](const char* name) {
        QByteArray body = document(good);
        const qsizetype start = body.indexOf("<" + QByteArray(name) + ">");
        const QByteArray end = "</" + QByteArray(name) + ">";
        body.remove(start, body.indexOf(end) + end.size() - start);
        return body;
    };
    EXPECT_EQ(rejection("<Other/>"), u"400 The root element is \"Other\": expected RawCheck"_s);
    EXPECT_EQ(rejection("<RawCheck"),
              u"400 The XML is not well-formed at line 1, column 9: Premature end of document."_s);
    EXPECT_EQ(rejection(""), u"400 The body is empty: a RawCheck document is expected"_s);
    EXPECT_EQ(rejection(without("chType")), u"400 chType is missing"_s);
    EXPECT_EQ(rejection(without("items")), u"400 items is missing"_s);
    EXPECT_EQ(rejection(without("cardNumber")), u"400 cardNumber is missing"_s);
    EXPECT_EQ(rejection(without("quantity")), u"400 items/RawItem[1]/quantity is missing"_s);
    TextCheck check = good;
    check.id = QString();
    EXPECT_EQ(rejection(document(check)), u"400 id must have 1 to 256 characters"_s);
    check.id = QString(257, u'x');
    EXPECT_EQ(rejection(document(check)), u"400 id must have 1 to 256 characters"_s);
    check = good;
    check.total = u"ten"_s;
    EXPECT_EQ(rejection(document(check)),
              u"400 total is \"ten\": expected an amount such as 12.50"_s);
    check = good;
    check.lines[0].id = u"x"_s;
    EXPECT_EQ(rejection(document(check)),
              u"400 items/RawItem[1]/id is \"x\": expected a whole number"_s);
    check = good;
    check.lines[0].quantity = u"1,000"_s;
    EXPECT_EQ(rejection(document(check)),
              u"400 items/RawItem[1]/quantity is \"1,000\": expected a quantity such as 1.000"_s);
    QByteArray body = document(good);
    body.replace("<chType>1<", "<chType>3<");
    EXPECT_EQ(rejection(body), u"400 chType is \"3\": expected 1 (sale) or 2 (return)"_s);
}

TEST_F(Precheck, ofVastAmountsIsRejectedNotWrapped)
{
    QByteArray body = "<RawCheck><id>c</id><chType>1</chType><cardNumber>1</cardNumber>"
                      "<total>0</total><items>";
    for (int i = 1; i <= 95'000; ++i) {
        body += "<RawItem><id>" + QByteArray::number(i) +
                "</id><quantity>1</quantity><total>1000000000000.00</total></RawItem>";
    }
    EXPECT_EQ(rejection(body + "</items></RawCheck>"),
              u"424 The amounts of the check are too large"_s);
}

TEST_F(Precheck, isRefusedBeforeItIsReadWhenAddressMethodOrCredentialsAreWrong)
{
    Request request = post("precheck", "not even XML");
    request.path = "/api/1.x/precheck/";
    EXPECT_EQ(service->handle(request).status, 404);
    request = post("refund", "x");
    EXPECT_EQ(service->handle(request).status, 404);
    request = post("precheck", "x");
    request.method = "PUT";
    EXPECT_EQ(service->handle(request).status, 405);
    request = post("precheck", "x");
    request.authorization.clear();
    EXPECT_EQ(service->handle(request).reason, u"The Authorization header is missing"_s);
    for (const char* header :
         {"Basic", "Basic ", "Bearer x", "Basic dGlsbDpzZWNyZXQ6ZGVtbw==",
          "Basic dGlsbDplNWU5ZmExYmEzMWVjZDFhZTg0Zjc1Y2FhYTQ3NGYzYTY2M2YwNWY0OmRlbW"}) {
        request.authorization = header;
        const Answer answer = service->handle(request);
        EXPECT_EQ(answer.status, 401) << header;
        EXPECT_EQ(answer.reason, u"The user, the password or the key is wrong"_s);
    }
    request.authorization = post("precheck", {}).authorization.replace("Basic", "basic ");
    EXPECT_EQ(service->handle(request).status, 400);
}

TEST_F(Precheck, followsTheCredentialsOfTheRules)
{
    Rules rules = builtIn();
    rules.user = u"касса"_s;
    rules.password = QString();
    rules.apiKey = QString();
    reopen(rules);
    Request request = post("precheck", document({u"c"_s, u"2200000000017"_s, u"0.00"_s, {}}));
    EXPECT_EQ(service->handle(request).status, 401);
    // SHA-1 of nothing
    request.authorization =
        "Basic " + QByteArray("касса:da39a3ee5e6b4b0d3255bfef95601890afd80709:").toBase64();
    EXPECT_EQ(service->handle(request).status, 200);
}

TEST_F(Precheck, isServedToManyThreadsAtOnce)
{
    std::vector<std::thread> threads;
    std::atomic<int> good = 0;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&, i] {
            for (int j = 0; j < 10; ++j) {
                const QString id = u"%1-%2"_s.arg(i).arg(j);
                good += precheck(document(saleOfTwo(id))).status == 200 ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(good, 80);
}

} // namespace
} // namespace simulator::test
