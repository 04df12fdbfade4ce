// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/noconnectionexception.h"
#include "contract/rawserver.h"
#include "tests/support/logcapture.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/steps.h"

#include <QPointer>

#include <typeinfo>

using namespace Qt::StringLiterals;
using ::testing::InSequence;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::StrictMock;
using RequestType = orva::Interface::RequestType;
using Headers = QHash<QString, QString>;
using tests::errorLine;
using tests::infoLine;
using tests::LogCapture;
using tests::LogLine;

namespace {

using ::testing::_;

const LogLine sendingLine = infoLine(u"Отправка запроса в систему лояльности"_s);
constexpr auto unknownType = static_cast<RequestType>(3);

/// A client with an address and a last response, on a transport that refuses every call that a test
/// does not expect.
class SendRequest : public ::testing::Test
{
protected:
    SendRequest()
    {
        client.setUrl(u"http://loyalty.example/l/"_s);
        client.setTimeout(17);
        client.setLastResponse(before);
    }

    /// Expects the calls of an exchange up to the status.
    void expectExchange(int status)
    {
        EXPECT_CALL(transport, setTimeout(17));
        EXPECT_CALL(transport, post(_, _, _));
        EXPECT_CALL(transport, getHttpStatusCode()).WillOnce(Return(status));
    }
    void expectAnswer(const QByteArray& body, int status = 200, int error = 0)
    {
        expectExchange(status);
        EXPECT_CALL(transport, getError()).WillOnce(Return(error));
        EXPECT_CALL(transport, getResponse()).WillOnce(Return(body));
    }
    void send(RequestType type = RequestType::Precheck) { client.sendRequest(type, request); }

    /// What the call throws: "code / text / detail", with the exception's type in front where it is
    /// not the plain one.
    QString failure(RequestType type = RequestType::Precheck)
    {
        try {
            send(type);
        } catch (const orva::Exception& caught) {
            const bool plain = typeid(caught) == typeid(orva::Exception);
            const bool noConnection = typeid(caught) == typeid(orva::NoConnectionException);
            return (plain          ? u""_s
                    : noConnection ? u"NoConnection "_s
                                   : u"other "_s) +
                   caught.tr().id() + u" / "_s + caught.tr().ru() + u" / "_s + caught.detail;
        }
        return u"nothing"_s;
    }
    bool lastResponseIsUnchanged() const
    {
        return client.lastResponse == before && tests::written(before) == u"<before/>"_s;
    }

    QDomDocument before = tests::parse(u"<before/>"_s);
    QDomDocument request = tests::parse(u"<RawCheck><id>Чек</id></RawCheck>"_s);
    StrictMock<tests::MockRestClient> transport;
    tests::Registered<RestClient> registration{transport};
    tests::OpenInterface client;
};

} // namespace

TEST_F(SendRequest, callsTheTransportInOrder)
{
    client.setAuthData(u"u"_s, u"p"_s, u"k"_s);
    const InSequence order;
    EXPECT_CALL(transport, setTimeout(17));
    EXPECT_CALL(transport,
                post(QUrl(u"http://loyalty.example/l/api/1.x/precheck"_s),
                     QByteArray("<RawCheck>\n <id>Чек</id>\n</RawCheck>\n"), client.headers));
    EXPECT_CALL(transport, getHttpStatusCode()).WillOnce(Return(200));
    EXPECT_CALL(transport, getError()).WillOnce(Return(0));
    EXPECT_CALL(transport, getResponse()).WillOnce(Return("<answer/>"));
    send();
    EXPECT_EQ(client.lastResponse.documentElement().tagName(), u"answer"_s);
}

TEST_F(SendRequest, mapsEveryTypeToItsEndpoint)
{
    EXPECT_EQ(static_cast<int>(RequestType::Precheck), 0);
    EXPECT_EQ(static_cast<int>(RequestType::PaymentTry), 1);
    EXPECT_EQ(static_cast<int>(RequestType::CheckConfirm), 2);
    const QList<QPair<RequestType, QString>> table{
        {RequestType::Precheck, u"http://loyalty.example/l/api/1.x/precheck"_s},
        {RequestType::PaymentTry, u"http://loyalty.example/l/api/1.x/paymenttry"_s},
        {RequestType::CheckConfirm, u"http://loyalty.example/l/api/1.x/checkconfirm"_s}};
    for (const auto& [type, address] : table) {
        EXPECT_CALL(transport, setTimeout(17));
        EXPECT_CALL(transport, post(QUrl(address), _, _));
        EXPECT_CALL(transport, getHttpStatusCode()).WillOnce(Return(200));
        EXPECT_CALL(transport, getError()).WillOnce(Return(0));
        EXPECT_CALL(transport, getResponse()).WillOnce(Return("<answer/>"));
        send(type);
        ASSERT_TRUE(::testing::Mock::VerifyAndClearExpectations(&transport)) << qPrintable(address);
    }
}

TEST_F(SendRequest, refusesAnUnknownTypeAfterTheTimeoutAndBeforeThePost)
{
    EXPECT_CALL(transport, setTimeout(17));
    EXPECT_EQ(failure(unknownType), u"orvaRequestFormingError / Ошибка формирования запроса / "_s);
    EXPECT_TRUE(lastResponseIsUnchanged());
}

TEST_F(SendRequest, asksItsOwnVirtualGetUrlForTheAddressAfterTheTimeout)
{
    NiceMock<tests::Steps> steps;
    const InSequence order;
    EXPECT_CALL(transport, setTimeout(10));
    EXPECT_CALL(steps, getUrl(u"api/1.x/paymenttry"_s))
        .WillOnce(Return(QUrl(u"http://elsewhere.example/"_s)));
    EXPECT_CALL(transport, post(QUrl(u"http://elsewhere.example/"_s), _, _));
    EXPECT_CALL(transport, getHttpStatusCode()).WillOnce(Return(200));
    EXPECT_CALL(transport, getError()).WillOnce(Return(0));
    EXPECT_CALL(transport, getResponse()).WillOnce(Return(QByteArray()));
    steps.sendRequest(RequestType::PaymentTry, request);
}

TEST_F(SendRequest, asksForNoAddressWhenTheTypeIsUnknown)
{
    NiceMock<tests::Steps> steps;
    EXPECT_CALL(transport, setTimeout(10));
    EXPECT_CALL(steps, getUrl(_)).Times(0);
    EXPECT_THROW(steps.sendRequest(unknownType, request), orva::Exception);
}

TEST_F(SendRequest, logsBeforeItTouchesTheTransport)
{
    const LogCapture log;
    QList<LogLine> loggedBefore;
    EXPECT_CALL(transport, setTimeout(17)).WillOnce([&](int) { loggedBefore = log.lines(); });
    EXPECT_CALL(transport, post(_, _, _));
    EXPECT_CALL(transport, getHttpStatusCode()).WillOnce(Return(200));
    EXPECT_CALL(transport, getError()).WillOnce(Return(0));
    EXPECT_CALL(transport, getResponse()).WillOnce(Return("<answer/>"));
    send();
    EXPECT_EQ(loggedBefore, QList<LogLine>{sendingLine});
    EXPECT_EQ(log.lines(), QList<LogLine>{sendingLine});
}

TEST_F(SendRequest, passesEveryTimeoutUnchanged)
{
    for (const int value : {10, 0, -1}) {
        client.setTimeout(value);
        EXPECT_CALL(transport, setTimeout(value));
        EXPECT_THROW(send(unknownType), orva::Exception);
        ASSERT_TRUE(::testing::Mock::VerifyAndClearExpectations(&transport));
    }
}

TEST_F(SendRequest, sendsTwoHeadersBeforeCredentialsAreSet)
{
    EXPECT_CALL(transport, setTimeout(17));
    EXPECT_CALL(transport, post(_, _,
                                Headers{{u"Content-Type"_s, u"application/xml"_s},
                                        {u"Accept"_s, u"application/xml"_s}}));
    EXPECT_CALL(transport, getHttpStatusCode()).WillOnce(Return(200));
    EXPECT_CALL(transport, getError()).WillOnce(Return(0));
    EXPECT_CALL(transport, getResponse()).WillOnce(Return("<answer/>"));
    send();
}

TEST_F(SendRequest, indentsTheBodyByOneBlankALevel)
{
    request = tests::parse(u"<a><b><c>1</c></b><d/></a>"_s);
    EXPECT_CALL(transport, setTimeout(17));
    EXPECT_CALL(transport, post(_, QByteArray("<a>\n <b>\n  <c>1</c>\n </b>\n <d/>\n</a>\n"), _));
    EXPECT_CALL(transport, getHttpStatusCode()).WillOnce(Return(401));
    EXPECT_THROW(send(), orva::Exception);
}

TEST_F(SendRequest, keepsTheXmlDeclarationOfARequestThatHasOne)
{
    request = tests::parse(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>ю</a>"_s);
    QByteArray body;
    EXPECT_CALL(transport, setTimeout(17));
    EXPECT_CALL(transport, post(_, _, _))
        .WillOnce([&body](const QUrl&, const QByteArray& sent, const Headers&) { body = sent; });
    EXPECT_CALL(transport, getHttpStatusCode()).WillOnce(Return(401));
    EXPECT_THROW(send(), orva::Exception);
    EXPECT_TRUE(body.startsWith("<?xml version=")) << body.toStdString();
    EXPECT_TRUE(body.endsWith("?>\n<a>ю</a>\n")) << body.toStdString();
}

TEST_F(SendRequest, tellsTheLogWhatOfAnAnswerTheParserIsNotGiven)
{
    const LogCapture log;
    expectAnswer("<a>\n<b " + QByteArray("x='1' ").repeated(65) + "/></a>");
    send();
    EXPECT_FALSE(client.lastResponse.hasChildNodes());
    EXPECT_EQ(log.lines(),
              (QList<LogLine>{sendingLine, tests::errorLine(u"Ответ сервера не разбирается: больше "
                                                            "64 атрибутов у элемента, строка 2, "
                                                            "элемент b"_s)}));
}

TEST_F(SendRequest, readsNoAnswerWhoseGoodsLinesRepeatAPositionTooOften)
{
    const auto lines = [](int position, int count) {
        return ("<RawItem><id>" + QByteArray::number(position) + "</id></RawItem>").repeated(count);
    };
    const auto answer = [](const QByteArray& items) {
        return "<a><items>" + items + "</items></a>";
    };
    QByteArray different;
    for (int position = 1; position <= 10'000; ++position) {
        different += lines(position, 1);
    }
    for (const QByteArray& items : {different, different + lines(7, 99), lines(7, 141)}) {
        expectAnswer(answer(items));
        send();
        EXPECT_EQ(client.lastResponse.documentElement().tagName(), u"a"_s);
    }
    for (const QByteArray& items :
         {different + lines(7, 100), lines(7, 142), QByteArray("<RawItem/>").repeated(142)}) {
        const LogCapture log;
        expectAnswer(answer(items));
        send();
        EXPECT_FALSE(client.lastResponse.hasChildNodes());
        const QString id = QString::number(items.startsWith("<RawItem/>") ? 0 : 7);
        EXPECT_EQ(log.lines(),
                  (QList<LogLine>{sendingLine,
                                  errorLine(u"Ответ сервера не разбирается: слишком много строк "
                                            "товара с одним и тем же id (квадраты их чисел в сумме "
                                            "больше 20000), id "_s +
                                            id)}));
    }
}

TEST_F(SendRequest, tellsTheLogNothingAboutAnAnswerThatIsMerelyMalformed)
{
    for (const QByteArray& body : {QByteArray("<a><b></a>"), QByteArray("no XML"), QByteArray(),
                                   QByteArray("<a b='1' b='2'/>"), QByteArray("<!DOCTYPE")}) {
        const LogCapture log;
        expectAnswer(body);
        send();
        EXPECT_EQ(log.lines(), QList<LogLine>{sendingLine}) << body.toStdString();
    }
}

TEST_F(SendRequest, reports401AsAuthorizationErrorWithoutAskingForMore)
{
    const LogCapture log;
    expectExchange(401);
    EXPECT_EQ(failure(), u"orvaAuthorisationError / Ошибка авторизации на сервере / "_s);
    EXPECT_TRUE(lastResponseIsUnchanged());
    EXPECT_EQ(log.lines(), QList<LogLine>{sendingLine});
}

TEST_F(SendRequest, reports409AsDuplicateWithoutAskingForMore)
{
    const LogCapture log;
    expectExchange(409);
    EXPECT_EQ(failure(),
              u"orvaDuplicateCheckId / Чек с таким идентификатором уже был обработан / "_s);
    EXPECT_TRUE(lastResponseIsUnchanged());
    EXPECT_EQ(log.lines(), QList<LogLine>{sendingLine});
}

TEST_F(SendRequest, reports424AsIntegrityErrorWithoutAskingForMore)
{
    const LogCapture log;
    expectExchange(424);
    EXPECT_EQ(failure(), u"orvaDataIntegrityError / Нарушение целостности данных / "_s);
    EXPECT_TRUE(lastResponseIsUnchanged());
    EXPECT_EQ(log.lines(), QList<LogLine>{sendingLine});
}

TEST_F(SendRequest, testsTheStatusBeforeTheTransportError)
{
    const QList<QPair<int, QString>> table{{401, u"orvaAuthorisationError"_s},
                                           {409, u"orvaDuplicateCheckId"_s},
                                           {424, u"orvaDataIntegrityError"_s}};
    NiceMock<tests::MockRestClient> failing;
    const tests::Registered<RestClient> registered(failing);
    ON_CALL(failing, getError()).WillByDefault(Return(22));
    ON_CALL(failing, getResponse()).WillByDefault(Return("<answer/>"));
    for (const auto& [status, code] : table) {
        ON_CALL(failing, getHttpStatusCode()).WillByDefault(Return(status));
        EXPECT_EQ(failure().section(u" / "_s, 0, 0), code);
        EXPECT_TRUE(lastResponseIsUnchanged());
    }
}

TEST_F(SendRequest, reportsATransportErrorAndLogsItsRussianText)
{
    const LogCapture log;
    const InSequence order;
    expectExchange(0);
    EXPECT_CALL(transport, getError()).WillOnce(Return(1));
    EXPECT_CALL(transport, getErrorText())
        .WillOnce(Return(tr::Tr(u"timeout"_s, u"Время ожидания истекло"_s)));
    EXPECT_EQ(failure(), u"NoConnection requestNoConnection / Нет связи с сервером / "_s);
    EXPECT_TRUE(lastResponseIsUnchanged());
    EXPECT_EQ(log.lines(),
              (QList<LogLine>{sendingLine, errorLine(u"Ошибка при выполнении запроса: Время "
                                                     u"ожидания истекло"_s)}));
}

TEST_F(SendRequest, takesAnErrorBesideAGoodStatusForATransportFailure)
{
    expectExchange(200);
    EXPECT_CALL(transport, getError()).WillOnce(Return(18));
    EXPECT_CALL(transport, getErrorText()).WillOnce(Return(tr::Tr()));
    EXPECT_EQ(failure(), u"NoConnection requestNoConnection / Нет связи с сервером / "_s);
    EXPECT_TRUE(lastResponseIsUnchanged());
}

TEST_F(SendRequest, takesEveryOtherStatusForAnAnswerWhenTheTransportReportsNoError)
{
    for (const int status : {0, 200, 204, 302, 400, 402, 403, 404, 408, 410, 423, 425, 500, 503}) {
        client.setLastResponse(before);
        expectAnswer("<answer/>", status);
        EXPECT_EQ(failure(), u"nothing"_s) << status;
        EXPECT_EQ(client.lastResponse.documentElement().tagName(), u"answer"_s) << status;
        ASSERT_TRUE(::testing::Mock::VerifyAndClearExpectations(&transport));
    }
}

TEST_F(SendRequest, takesOtherErrorStatusesForATransportFailureWhenTheTransportDoes)
{
    for (const int status : {400, 403, 500, 503}) {
        expectExchange(status);
        EXPECT_CALL(transport, getError()).WillOnce(Return(22));
        EXPECT_CALL(transport, getErrorText()).WillOnce(Return(tr::Tr()));
        EXPECT_EQ(failure().section(u" / "_s, 0, 0), u"NoConnection requestNoConnection"_s);
        ASSERT_TRUE(::testing::Mock::VerifyAndClearExpectations(&transport));
    }
}

TEST_F(SendRequest, takesANegativeErrorCodeForNone)
{
    expectAnswer("<answer/>", 200, -1);
    EXPECT_EQ(failure(), u"nothing"_s);
    EXPECT_EQ(client.lastResponse.documentElement().tagName(), u"answer"_s);
}

TEST_F(SendRequest, leavesAnEmptyLastResponseAfterAnEmptyBody)
{
    const LogCapture log;
    expectAnswer(QByteArray());
    EXPECT_EQ(failure(), u"nothing"_s);
    EXPECT_TRUE(client.lastResponse.documentElement().isNull());
    EXPECT_FALSE(client.lastResponse.hasChildNodes());
    EXPECT_EQ(log.lines(), QList<LogLine>{sendingLine});
}

TEST_F(SendRequest, usesTheRegisteredDoubleEveryTimeAndNeverDeletesIt)
{
    const QPointer<RestClient> watch(&transport);
    for (int i = 0; i < 2; ++i) {
        expectAnswer("<answer/>");
        send();
        ASSERT_TRUE(::testing::Mock::VerifyAndClearExpectations(&transport));
        ASSERT_FALSE(watch.isNull());
    }
}

TEST_F(SendRequest, letsTheTransportsExceptionsPass)
{
    EXPECT_CALL(transport, setTimeout(17));
    EXPECT_CALL(transport, post(_, _, _))
        .WillOnce([](const QUrl&, const QByteArray&, const Headers&) { throw std::bad_alloc(); });
    EXPECT_THROW(send(), std::bad_alloc);
    EXPECT_TRUE(lastResponseIsUnchanged());
}

TEST(SendRequestWithoutDouble, makesATransportOfItsOwn)
{
    ASSERT_EQ(MockFactory<RestClient>::mocked, nullptr);
    RawServer server(RawServer::answering(RawServer::answer("200 OK", "<answer/>")));
    orva::Interface client;
    client.setUrl(server.url().toString());
    client.setTimeout(17);
    client.sendRequest(RequestType::Precheck, tests::parse(u"<question/>"_s));
    EXPECT_EQ(client.getLastResponse().documentElement().tagName(), u"answer"_s);
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_NE(server.requests().front().find("<question/>"), std::string::npos);
}

TEST(SendRequestWithoutDouble, sendsNothingForAnUnknownType)
{
    ASSERT_EQ(MockFactory<RestClient>::mocked, nullptr);
    RawServer server(RawServer::answering(RawServer::answer("200 OK", "<answer/>")));
    orva::Interface client;
    client.setUrl(server.url().toString());
    EXPECT_THROW(client.sendRequest(unknownType, QDomDocument()), orva::Exception);
    EXPECT_EQ(server.connections(), 0);
}
