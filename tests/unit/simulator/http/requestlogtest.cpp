// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/requestlog.h"

#include "tests/unit/simulator/testchecks.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

TEST(RequestLog, showsTheCardsLastFourDigitsAndNoAuthorization)
{
    Request request = test::post("precheck", "body");
    Answer answer;
    answer.checkId = u"c-1"_s;
    answer.cardNumber = u"2200000000017"_s;
    EXPECT_EQ(logLine(u"T"_s, request, answer), u"T /api/1.x/precheck c-1 *0017 200"_s);
}

TEST(RequestLog, showsTheReasonOfARefusal)
{
    const Answer answer = refusal(401, u"The Authorization header is missing"_s);
    EXPECT_EQ(logLine(u"T"_s, test::post("precheck", {}), answer),
              u"T /api/1.x/precheck - - 401 The Authorization header is missing"_s);
}

TEST(RequestLog, showsTheFaultThatTheRequestMet)
{
    Answer answer;
    answer.checkId = u"c-1"_s;
    answer.fault = Fault();
    EXPECT_EQ(logLine(u"T"_s, test::post("checkconfirm", {}), answer),
              u"T /api/1.x/checkconfirm c-1 - 200 [fault reply-lost]"_s);
}

TEST(RequestLog, isAlsoAJsonObjectOnOneLine)
{
    Answer answer = refusal(424, u"one\ntwo"_s);
    answer.checkId = u"c\r\n1"_s;
    answer.cardNumber = u"2200000000017"_s;
    answer.fault = Fault();
    EXPECT_EQ(logObject(u"T"_s, test::post("precheck", {}), answer),
              u"{\"card\":\"*0017\",\"check\":\"c\\r\\n1\",\"fault\":\"reply-lost\","
              "\"path\":\"/api/1.x/precheck\",\"reason\":\"one\\ntwo\",\"status\":424,"
              "\"time\":\"T\"}"_s);
}

TEST(RequestLog, staysOneLineWhateverWasSent)
{
    Request request;
    request.path = "/a\nb c\x1b[31m\xff";
    Answer answer = refusal(424, u"one\ntwo\u2028three"_s);
    answer.checkId = u"x\r\ny z"_s + QString(100, u'w');
    const QString line = logLine(u"T"_s, request, answer);
    EXPECT_EQ(line, u"T /a?b?c?[31m\ufffd x??y?z%1 - 424 one two three"_s.arg(QString(58, u'w')));
}

} // namespace
} // namespace simulator
