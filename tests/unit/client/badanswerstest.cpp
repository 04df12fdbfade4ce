// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/exception.h"
#include "host/document/document.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/hostilexml.h"
#include "tests/unit/client/steps.h"

#include <random>

using namespace tests;
using ::testing::NiceMock;
using ::testing::Return;

namespace {

const QString missingField =
    u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: %1"_s;

/// A pre-check whose answer is some body.
class BadAnswer : public ::testing::Test
{
protected:
    BadAnswer()
    {
        document->setDocumentType(EDocumentType::Sale);
        ON_CALL(transport, getHttpStatusCode()).WillByDefault(Return(200));
        client.setLastResponse(parse(u"<before/>"_s));
    }

    /// "balance N" when the answer is taken, else the detail of "requestIncorrectAnswer".
    QString outcome(const QByteArray& body)
    {
        ON_CALL(transport, getResponse()).WillByDefault(Return(body));
        record = cardRecord(u"77"_s);
        try {
            client.precheck(document, record);
        } catch (const orva::Exception& caught) {
            EXPECT_EQ(caught.tr().id(), u"requestIncorrectAnswer"_s);
            return caught.detail;
        }
        return u"balance "_s + record->getBonusBalance().toString();
    }
    /// An answer with a balance of 7 and something before it.
    static QByteArray answerWith(const QString& content)
    {
        return (u"<a>"_s + content + balanceOf7 + u"</a>"_s).toUtf8();
    }

    inline static const QString balanceOf7 =
        u"<client><RawCheckClient><account><RawCheckAccount><balance>7</balance>"
        "</RawCheckAccount></account></RawCheckClient></client>"_s;

    QSharedPointer<Document> document = QSharedPointer<Document>::create();
    QSharedPointer<DocumentCardRecord> record;
    NiceMock<MockRestClient> transport;
    Registered<RestClient> registration{transport};
    OpenInterface client;
};

} // namespace

TEST_F(BadAnswer, emptyOneReplacesTheLastResponseAndMissesTheClient)
{
    EXPECT_EQ(outcome(QByteArray()), missingField.arg(u"client"_s));
    EXPECT_TRUE(client.lastResponse.documentElement().isNull());
}

TEST_F(BadAnswer, textInsteadOfXmlMissesTheClient)
{
    for (const QByteArray& body : {QByteArray("Service unavailable"), QByteArray("{\"a\": 1}"),
                                   QByteArray(" \n\t"), QByteArray("\0\0\0\0", 4)}) {
        EXPECT_EQ(outcome(body), missingField.arg(u"client"_s));
        EXPECT_TRUE(client.lastResponse.documentElement().isNull());
    }
}

TEST_F(BadAnswer, htmlErrorPageMissesTheClient)
{
    EXPECT_EQ(outcome("<!DOCTYPE html>\n<html><head><title>502</title></head><body><h1>Bad "
                      "Gateway</h1><hr></body></html>"),
              missingField.arg(u"client"_s));
    // the parser stops at the tag that nobody closes
    EXPECT_EQ(client.lastResponse.documentElement().tagName(), u"html"_s);
    EXPECT_EQ(outcome("<html><head><meta charset=utf-8><title>502</title></head><body>Bad Gateway"
                      "<br>&nbsp;</body></html>"),
              missingField.arg(u"client"_s));
    EXPECT_EQ(outcome("<html><body>Well-formed</body></html>"), missingField.arg(u"client"_s));
}

TEST_F(BadAnswer, cutBehindTheBalanceIsTaken)
{
    EXPECT_EQ(outcome("<a>" + balanceOf7.toUtf8() + "<awards><RawCheckAwards><allowBonus>5"),
              u"balance 7"_s);
    EXPECT_EQ(outcome("<a>" + balanceOf7.toUtf8()), u"balance 7"_s);
    EXPECT_EQ(outcome("<a>" + balanceOf7.toUtf8() + "</b>"), u"balance 7"_s);
}

TEST_F(BadAnswer, cutBeforeTheBalanceMissesIt)
{
    EXPECT_EQ(outcome("<a><client><RawCheckClient><account>"),
              missingField.arg(u"RawCheckAccount"_s));
    EXPECT_EQ(outcome("<a>"), missingField.arg(u"client"_s));
}

TEST_F(BadAnswer, cutAnywhereIsTakenOnlyWithTheWholeBalance)
{
    const QByteArray whole = dataFile(u"answer.xml"_s);
    const qsizetype balanceEnd = whole.indexOf("</balance>");
    const qsizetype balanceStart = whole.indexOf("<balance>");
    ASSERT_GT(balanceStart, 0);
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        const QString seen = outcome(whole.left(length));
        if (length > balanceEnd) {
            EXPECT_EQ(seen, u"balance 250.5"_s) << length;
        } else if (length <= balanceStart) {
            EXPECT_TRUE(seen.startsWith(missingField.arg(QString()))) << length;
        } else {
            EXPECT_NE(seen, u"balance 25"_s) << length;
            EXPECT_NE(seen, u"balance 2"_s) << length;
        }
    }
}

TEST_F(BadAnswer, cutInsideMarkupBehindTheBalanceIsTaken)
{
    const QByteArray start = "<a>" + balanceOf7.toUtf8();
    for (const QByteArray& markup :
         {QByteArray("<!-- comment -->"), QByteArray("<![CDATA[data]]>"), QByteArray("<?pi data?>"),
          QByteArray("<b c=\"1\" d='2'/>"), QByteArray("<e>&amp;</e>")}) {
        for (qsizetype length = 0; length <= markup.size(); ++length) {
            EXPECT_EQ(outcome(start + markup.left(length)), u"balance 7"_s)
                << "cut behind " << markup.left(length).toStdString();
        }
    }
}

TEST_F(BadAnswer, firstOfTwoRootsIsTaken)
{
    EXPECT_EQ(outcome(answerWith(QString()) + answerWith(QString()).replace("7", "8")),
              u"balance 7"_s);
    EXPECT_EQ(outcome("<a/>" + answerWith(QString())), missingField.arg(u"client"_s));
    EXPECT_EQ(outcome(answerWith(QString()) + "rubbish"), u"balance 7"_s);
}

TEST_F(BadAnswer, undeclaredEntityEndsTheReadablePart)
{
    EXPECT_EQ(outcome(answerWith(u"<x>&nbsp;</x>"_s)), missingField.arg(u"client"_s));
    EXPECT_EQ(outcome(answerWith(QString()).replace("</a>", "<x>&nbsp;</x></a>")), u"balance 7"_s);
}

TEST_F(BadAnswer, duplicateAttributeEndsTheReadablePart)
{
    EXPECT_EQ(outcome(answerWith(u"<x y='1' y='2'/>"_s)), missingField.arg(u"client"_s));
}

TEST_F(BadAnswer, of512LevelsIsTakenAndCanBeWritten)
{
    // one level for the root
    EXPECT_EQ(outcome(answerWith(nested(levelLimit - 1))), u"balance 7"_s);
    EXPECT_FALSE(client.getLastResponse().toString(1).isEmpty());
}

TEST_F(BadAnswer, beyondALimitIsUnreadable)
{
    for (const QString& content :
         {nested(levelLimit), withAttributes(attributeLimit + 1),
          withText(u"&amp;"_s, escapeLimit + 1), withValue(u"&#10;"_s, escapeLimit + 1),
          withValue(u"\""_s, escapeLimit + 1, u'\''), withValue(u"]]>"_s, escapeLimit + 1)}) {
        client.setLastResponse(parse(u"<before/>"_s));
        EXPECT_EQ(outcome(answerWith(content)), missingField.arg(u"client"_s))
            << qPrintable(content.left(30));
        EXPECT_TRUE(client.lastResponse.documentElement().isNull());
        EXPECT_FALSE(client.lastResponse.hasChildNodes());
        EXPECT_EQ(record->getCard()->getClient()->getName(), u" "_s);
    }
}

TEST_F(BadAnswer, beyondALimitIsUnreadableEvenBehindTheBalance)
{
    for (const QString& content : {nested(levelLimit), withAttributes(attributeLimit + 1)}) {
        EXPECT_EQ(outcome((u"<a>"_s + balanceOf7 + content + u"</a>"_s).toUtf8()),
                  missingField.arg(u"client"_s));
    }
}

TEST_F(BadAnswer, atTheLimitsIsTaken)
{
    for (const QString& content :
         {withAttributes(attributeLimit), withText(u"&amp;"_s, escapeLimit),
          withValue(u"&#10;"_s, escapeLimit), withValue(u"\""_s, escapeLimit, u'\'')}) {
        EXPECT_EQ(outcome(answerWith(content)), u"balance 7"_s) << qPrintable(content.left(30));
    }
}

TEST_F(BadAnswer, withADocumentTypeWithoutDeclarationsIsTaken)
{
    for (const QByteArray& type :
         {QByteArray("<!DOCTYPE a>"), QByteArray("<!DOCTYPE a SYSTEM \"file:///etc/passwd\">"),
          QByteArray("<?xml version=\"1.0\"?><!-- c --><!DOCTYPE a PUBLIC 'x' 'y'>")}) {
        EXPECT_EQ(outcome(type + answerWith(QString())), u"balance 7"_s) << type.toStdString();
    }
}

TEST_F(BadAnswer, withDeclarationsInItsDocumentTypeIsUnreadable)
{
    for (const QByteArray& declaration :
         {QByteArray("<!DOCTYPE a []>"), QByteArray("<!DOCTYPE a SYSTEM \"x\" [ ]>"),
          QByteArray("<!DOCTYPE a [<!ENTITY b \"c\">]>"),
          QByteArray("<?xml version=\"1.0\"?><!-- c --><!DOCTYPE a [\n]>")}) {
        client.setLastResponse(parse(u"<before/>"_s));
        EXPECT_EQ(outcome(declaration + answerWith(QString())), missingField.arg(u"client"_s));
        EXPECT_TRUE(client.lastResponse.documentElement().isNull());
    }
}

TEST_F(BadAnswer, withHarmlessLookAlikesIsTaken)
{
    EXPECT_EQ(outcome(answerWith(u"<!-- <!DOCTYPE a> & < --><x><![CDATA[<!DOCTYPE a> & <b>]]></x>"
                                 "<?pi <!DOCTYPE a> & < ?>"_s)),
              u"balance 7"_s);
}

TEST_F(BadAnswer, damagedAtRandomNeverCrashes)
{
    const QByteArray whole = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><!-- c --><?pi x?>" +
                             answerWith(u"<x y=\"1\" z='\"&amp;'>&#1102;<![CDATA[ ]] ]]></x>"_s);
    constexpr char characters[] = "<>&\"'/=!-[]?;# \nax\0\xD0\xFF";
    const QByteArray alphabet(characters, sizeof characters - 1);
    std::mt19937 random(20240305); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same damage every run
    int taken = 0;
    for (int round = 0; round < 3000; ++round) {
        QByteArray body = whole;
        for (unsigned damage = random() % 4 + 1; damage > 0; --damage) {
            const auto at = static_cast<qsizetype>(random() % static_cast<unsigned>(body.size()));
            const char with = alphabet.at(
                static_cast<qsizetype>(random() % static_cast<unsigned>(alphabet.size())));
            switch (random() % 3) {
            case 0:
                body[at] = with;
                break;
            case 1:
                body.insert(at, with);
                break;
            default:
                body.remove(at, 1);
                break;
            }
        }
        const QString seen = outcome(body);
        taken += seen.startsWith(u"balance "_s) ? 1 : 0;
        EXPECT_TRUE(seen.startsWith(u"balance "_s) || seen.startsWith(missingField.arg(QString())))
            << qPrintable(seen);
        client.getLastResponse().toString(1);
    }
    // the damage is such that some answers stay readable and some do not
    EXPECT_GT(taken, 0);
    EXPECT_LT(taken, 3000);
}
