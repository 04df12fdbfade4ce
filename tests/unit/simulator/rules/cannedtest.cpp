// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Finished answers from the rules, requests that get none, and the strict mode.

#include "simulator/rules/configerror.h"
#include "simulator/rules/rulesreader.h"
#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

class Canned : public ServiceFixture
{
protected:
    /// The built-in rules with more in front of them.
    void follow(const QByteArray& more)
    {
        reopen(readRules(more + builtInRules(), folder.filePath(u"shop.toml"_s)));
    }

    /// An answer in short: status and body.
    static std::string brief(const Answer& answer)
    {
        return std::to_string(answer.status) + ' ' + answer.body.trimmed().toStdString();
    }

    /// Without what a refusal says of the form that was closest.
    static std::string untilForm(const std::string& sentence)
    {
        return sentence.substr(0, sentence.find(". It was held against"));
    }

    [[nodiscard]] QString complaintAbout(const QByteArray& text) const
    {
        try {
            readRules(text, u"shop.toml"_s);
        } catch (const ConfigError& error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }

    const QByteArray sale = document(saleOfTwo(u"sale"_s));
};

TEST_F(Canned, answersAreGivenByOperationCardAndNumberOfTheRequest)
{
    follow("[[answer]]\nendpoint = 'precheck'\ncard = '2200000000017'\nrequest = 2\n"
           "body = '<RawCheck/>'\n"
           "[[answer]]\nendpoint = 'paymenttry'\nstatus = 424\nbody = 'no'\n"
           "[[answer]]\ncard = '2200000000024'\ntimes = 2\nstatus = 503\n");
    TextCheck other = saleOfTwo(u"other"_s);
    other.card = u"2200000000024"_s;
    EXPECT_EQ(precheck(sale).status, 200);
    EXPECT_EQ(brief(precheck(document(other))), "503 ");
    const Answer second = precheck(sale);
    EXPECT_EQ(brief(second), "200 <RawCheck/>");
    EXPECT_EQ(second.contentType, QByteArray("application/xml; charset=utf-8"));
    EXPECT_EQ(second.checkId, u"sale"_s);
    EXPECT_EQ(brief(precheck(document(other))), "503 ");
    EXPECT_EQ(precheck(document(other)).status, 200); // given twice, which is all
    EXPECT_EQ(precheck(sale).body.size() > 1000, true);
    EXPECT_EQ(brief(paymentTry(sale)), "424 no");
    EXPECT_TRUE(ledger().checks.empty());
}

TEST_F(Canned, answersNeedTheCredentialsFirst)
{
    follow("[[answer]]\nrequest = 1\nbody = 'x'\n");
    Request wrong = post("precheck", sale);
    wrong.authorization = "Basic x";
    EXPECT_EQ(service->handle(wrong).status, 401);
    EXPECT_EQ(brief(precheck(sale)), "200 x"); // the refused one was not counted
}

TEST_F(Canned, answersMayStandInAFileBesideTheRules)
{
    QFile file(folder.filePath(u"answer.xml"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<RawCheck><id>из файла</id></RawCheck>");
    file.close();
    follow("[[answer]]\nfile = 'answer.xml'\n");
    EXPECT_EQ(brief(precheck(sale)), "200 <RawCheck><id>из файла</id></RawCheck>");
}

TEST_F(Canned, requestsThatGetNoneAreRefusedWithTheReasonWhereTheRulesSaySo)
{
    follow("unmatched = 'refuse'\n"
           "[[answer]]\nendpoint = 'paymenttry'\n"
           "[[answer]]\ncard = '2200000000024'\n"
           "[[answer]]\nendpoint = 'precheck'\nrequest = 3\n"
           "[[answer]]\nendpoint = 'precheck'\ntimes = 1\n");
    EXPECT_EQ(precheck(sale).status, 200);
    EXPECT_EQ(brief(precheck(sale)),
              "400 No [[answer]] is for this request to precheck, cardNumber *0017: "
              "[[answer]] 1 is for paymenttry, [[answer]] 2 is for cardNumber *0024, "
              "[[answer]] 3 is for request 3, this is number 2, "
              "[[answer]] 4 was given 1 times, which is all");
    follow("unmatched = 'refuse'\n");
    EXPECT_EQ(brief(precheck(sale)), "400 No [[answer]] is for this request to precheck, "
                                     "cardNumber *0017: there is none at all");
}

TEST_F(Canned, answersThatAreNotUnderstoodAreReportedWithLineAndKey)
{
    EXPECT_EQ(complaintAbout("[[answer]]\nendpoint = 'chekconfirm'\n"),
              u"shop.toml:2: the key \"answer.endpoint\" is \"chekconfirm\": did you mean "
              "\"checkconfirm\"?"_s);
    EXPECT_EQ(complaintAbout("[[answer]]\nstatus = 99\n"),
              u"shop.toml:2: the key \"answer.status\" must be a whole number from 200 to 599"_s);
    EXPECT_EQ(complaintAbout("[[answer]]\nbody = ''\nfile = 'x'\n"),
              u"shop.toml:3: the key \"answer.file\" stands beside \"body\": an answer has one of "
              "them"_s);
    EXPECT_TRUE(complaintAbout("[[answer]]\n\nfile = 'none.xml'\n")
                    .startsWith(u"shop.toml:3: the key \"answer.file\" names "_s));
    EXPECT_EQ(complaintAbout("strict = 1\n"),
              u"shop.toml:1: the key \"strict\" must be true or false"_s);
    EXPECT_EQ(complaintAbout("unmatched = 'refused'\n"),
              u"shop.toml:1: the key \"unmatched\" is \"refused\": did you mean \"refuse\"?"_s);
}

TEST_F(Canned, strictRulesRefuseWhatDoesNotFitTheSchemasWithThePath)
{
    const QByteArray loose = QByteArray(sale).replace("<price>10</price>", "<colour>red</colour>");
    EXPECT_EQ(precheck(loose).status, 200);
    follow("strict = true\n[[answer]]\nendpoint = 'checkconfirm'\n");
    const auto refused = [&](const char* from, const char* to) {
        return untilForm(brief(precheck(QByteArray(sale).replace(from, to))));
    };
    EXPECT_EQ(precheck(sale).status, 200);
    EXPECT_EQ(
        brief(precheck(loose)),
        "400 items/RawItem[1]/colour is unknown here: known are quantity, id, sku, price, "
        "total, minTotal, weight. It was held against the form of a sale; there are id, number, "
        "pos, date, chType, merchantId, total, items, cardNumber");
    EXPECT_EQ(refused("<pos>3</pos>", ""), "400 pos is missing");
    EXPECT_EQ(refused("<total>60.00</total>", "<total>60</total>"),
              "400 items/RawItem[2]/total is \"60\": expected an amount such as 12.50");
    EXPECT_EQ(refused("<pos>3</pos>", "<pos>3</pos><pos>4</pos>"),
              "400 pos is there 2 times: expected once");
    EXPECT_EQ(refused("<items>", "<items unit='1'>"), "400 items has an attribute, which no "
                                                      "document has");
    EXPECT_EQ(refused("<items>", "<items>text"),
              "400 items has text beside its elements, which no document has");
    EXPECT_EQ(refused("<pos>3</pos>", "<pos><a/></pos>"),
              "400 pos must hold text: it has the element a");
    EXPECT_EQ(refused("<number>117</number>\n <pos>3</pos>", "<pos>3</pos><number>1</number>"),
              "400 number stands behind pos: expected in the order id, number, pos, date, chType, "
              "merchantId, total, items, cardNumber");
    // before a finished answer, too
    EXPECT_EQ(
        brief(confirm(sale)),
        "400 The address is checkconfirm: the document is that of a pre-check, which belongs to "
        "precheck. client is missing");
}

TEST_F(Canned, otherRulesApplyFromTheNextRequestOn)
{
    EXPECT_EQ(precheck(sale).status, 200);
    service->setRules(readRules("[auth]\nuser = 'u'\n", u"shop.toml"_s));
    EXPECT_EQ(precheck(sale).status, 401);
    service->setRules(readRules("", u"shop.toml"_s));
    EXPECT_EQ(precheck(sale).reason, u"The card *0017 is unknown"_s);
    service->setRules(readRules("[[answer]]\nstatus = 500\n", u"shop.toml"_s));
    EXPECT_EQ(precheck(sale).status, 500);
    service->setRules(builtIn());
    sell(u"sale"_s);
    EXPECT_EQ(service->ledger().checks.size(), 1U);
}

} // namespace
} // namespace simulator::test
