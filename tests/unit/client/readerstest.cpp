// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/exception.h"
#include "tests/support/logcapture.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/steps.h"

using namespace Qt::StringLiterals;

namespace {

class Readers : public ::testing::Test
{
protected:
    QDomElement root(const QString& xml)
    {
        answer = tests::parse(xml);
        return answer.documentElement();
    }
    QString nameIn(const QString& clientContent)
    {
        return client
            .getClient(root(u"<a><client><RawCheckClient>"_s + clientContent +
                            u"</RawCheckClient></client></a>"_s))
            ->getName();
    }
    double balance(const QString& text)
    {
        return client.getBalance(root(u"<a><client><RawCheckClient><account><RawCheckAccount>"
                                      "<balance>"_s +
                                      text +
                                      u"</balance></RawCheckAccount></account></RawCheckClient>"
                                      "</client></a>"_s));
    }
    double toSpend(const QString& text)
    {
        return client.getPointsForSpend(root(u"<a><awards><RawCheckAwards><allowBonus>"_s + text +
                                             u"</allowBonus></RawCheckAwards></awards></a>"_s));
    }
    double toEarn(const QString& text)
    {
        return client.getPointsForEarn(root(u"<a><awards><RawCheckAwards><awardBonus>"_s + text +
                                            u"</awardBonus></RawCheckAwards></awards></a>"_s));
    }
    /// The detail of the exception for an answer without a balance, or "nothing thrown".
    QString missing(const QString& xml)
    {
        try {
            client.getBalance(root(xml));
        } catch (const orva::Exception& caught) {
            EXPECT_EQ(typeid(caught), typeid(orva::Exception));
            EXPECT_EQ(caught.tr().id(), u"requestIncorrectAnswer"_s);
            EXPECT_EQ(caught.tr().ru(), u"Некорректный ответ от сервера"_s);
            return caught.detail;
        }
        return u"nothing thrown"_s;
    }

    QDomDocument answer;
    orva::Interface client;
};

/// Texts of numbers and what they are read as.
QList<QPair<QString, double>> numbers()
{
    return {{u"12.50"_s, 12.5},
            {u"12,50"_s, 0},
            {u" 12.5 "_s, 12.5},
            {u"\n\t7\n"_s, 7},
            {u"-3.5"_s, -3.5},
            {u"+3.5"_s, 3.5},
            {u"1e2"_s, 100},
            {u"2.5E-1"_s, 0.25},
            {u""_s, 0},
            {u"много"_s, 0},
            {u"1 000"_s, 0},
            {u"1,000.00"_s, 0},
            {u"12.5 руб"_s, 0},
            {u"0x10"_s, 0},
            {u".5"_s, 0.5},
            {u"5."_s, 5},
            {u"0.123456789"_s, 0.123456789}};
}

} // namespace

TEST_F(Readers, joinFirstNameAndSurnameWithOneBlank)
{
    EXPECT_EQ(nameIn(u"<name>Анна</name><surname>Орлова</surname>"_s), u"Анна Орлова"_s);
    EXPECT_EQ(nameIn(u"<surname>Орлова</surname><name>Анна</name>"_s), u"Анна Орлова"_s);
}

TEST_F(Readers, keepTheBlankWhereAPartOfTheNameIsMissing)
{
    EXPECT_EQ(nameIn(u"<name>Анна</name>"_s), u"Анна "_s);
    EXPECT_EQ(nameIn(u"<surname>Орлова</surname>"_s), u" Орлова"_s);
    EXPECT_EQ(nameIn(u""_s), u" "_s);
    EXPECT_EQ(nameIn(u"<name/><surname/>"_s), u" "_s);
}

TEST_F(Readers, nameAClientByABlankInAnAnswerWithoutOne)
{
    EXPECT_EQ(client.getClient(root(u"<a/>"_s))->getName(), u" "_s);
    EXPECT_EQ(client.getClient(QDomElement())->getName(), u" "_s);
}

TEST_F(Readers, makeANewClientEveryTime)
{
    const QDomElement element = root(u"<a/>"_s);
    EXPECT_NE(client.getClient(element), client.getClient(element));
}

TEST_F(Readers, substituteTheNameBeforeTheSurname)
{
    EXPECT_EQ(nameIn(u"<name>%2</name><surname>X</surname>"_s), u"X X"_s);
    EXPECT_EQ(nameIn(u"<name>%1</name><surname>X</surname>"_s), u"X %2"_s);
    EXPECT_EQ(nameIn(u"<name>A</name><surname>%1 %2</surname>"_s), u"A %1 %2"_s);
}

TEST_F(Readers, takeTheFirstOfSeveralElements)
{
    EXPECT_EQ(nameIn(u"<name>A</name><name>B</name><surname>C</surname>"_s), u"A C"_s);
    EXPECT_EQ(missing(u"<a><client><RawCheckClient/><RawCheckClient><account><RawCheckAccount>"
                      "<balance>1</balance></RawCheckAccount></account></RawCheckClient></client>"
                      "</a>"_s),
              u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: account"_s);
}

TEST_F(Readers, readNumbersInTheCLocale)
{
    const auto table = numbers();
    for (const auto& [text, value] : table) {
        EXPECT_EQ(balance(text), value) << qPrintable(text);
        EXPECT_EQ(toSpend(text), value) << qPrintable(text);
        EXPECT_EQ(toEarn(text), value) << qPrintable(text);
    }
}

TEST_F(Readers, reportTheElementOfTheBalancesPathThatIsMissing)
{
    const QString text =
        u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: %1"_s;
    EXPECT_EQ(missing(u"<a/>"_s), text.arg(u"client"_s));
    EXPECT_EQ(missing(u"<a><client/></a>"_s), text.arg(u"RawCheckClient"_s));
    EXPECT_EQ(missing(u"<a><client><RawCheckClient/></client></a>"_s), text.arg(u"account"_s));
    EXPECT_EQ(missing(u"<a><client><RawCheckClient><account/></RawCheckClient></client></a>"_s),
              text.arg(u"RawCheckAccount"_s));
    EXPECT_EQ(missing(u"<a><client><RawCheckClient><account><RawCheckAccount/></account>"
                      "</RawCheckClient></client></a>"_s),
              text.arg(u"balance"_s));
}

TEST_F(Readers, reportTheClientMissingInAnEmptyAnswer)
{
    try {
        client.getBalance(QDomDocument().documentElement());
        ADD_FAILURE() << "nothing was thrown";
    } catch (const orva::Exception& caught) {
        EXPECT_EQ(caught.detail,
                  u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: client"_s);
    }
}

TEST_F(Readers, readZeroPointsFromAnAnswerWithoutAwards)
{
    for (const QString& xml :
         {u"<a/>"_s, u"<a><awards/></a>"_s, u"<a><awards><RawCheckAwards/></awards></a>"_s}) {
        EXPECT_EQ(client.getPointsForSpend(root(xml)), 0) << qPrintable(xml);
        EXPECT_EQ(client.getPointsForEarn(root(xml)), 0) << qPrintable(xml);
    }
}

TEST_F(Readers, keepSpendingAndEarningApart)
{
    EXPECT_EQ(client.getPointsForEarn(root(u"<a><awards><RawCheckAwards><allowBonus>1</allowBonus>"
                                           "</RawCheckAwards></awards></a>"_s)),
              0);
    EXPECT_EQ(client.getPointsForSpend(root(u"<a><awards><RawCheckAwards><awardBonus>1"
                                            "</awardBonus></RawCheckAwards></awards></a>"_s)),
              0);
}

TEST_F(Readers, readChildrenOfTheGivenElementOnly)
{
    EXPECT_EQ(missing(u"<a><b><client><RawCheckClient><account><RawCheckAccount><balance>1"
                      "</balance></RawCheckAccount></account></RawCheckClient></client></b></a>"_s),
              u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: client"_s);
    EXPECT_EQ(client.getPointsForSpend(
                  root(u"<a><b><awards><RawCheckAwards><allowBonus>1</allowBonus></RawCheckAwards>"
                       "</awards></b></a>"_s)),
              0);
}

TEST_F(Readers, logNothing)
{
    const tests::LogCapture log;
    balance(u"12,5"_s);
    toSpend(u"x"_s);
    toEarn(u"x"_s);
    nameIn(u""_s);
    missing(u"<a/>"_s);
    EXPECT_EQ(log.lines(), QList<tests::LogLine>());
}
