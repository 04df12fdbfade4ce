// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/noconnectionexception.h"
#include "host/document/document.h"
#include "tests/support/logcapture.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/steps.h"

using namespace Qt::StringLiterals;
using ::testing::InSequence;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::StrictMock;
using RequestType = orva::Interface::RequestType;
using tests::debugLine;
using tests::LogCapture;
using tests::LogLine;

namespace {

using ::testing::_;

QSharedPointer<Client> named(const QString& name)
{
    auto client = QSharedPointer<Client>::create();
    client->setName(name);
    return client;
}

/// The exchange with every step replaced; the steps that a test does not expect are refused.
class Precheck : public ::testing::Test
{
protected:
    Precheck()
    {
        detail = QSharedPointer<DocumentImpactDetail>::create();
        discounts = {QSharedPointer<DiscountImpact>::create(detail)};
        DocumentBonusRecord accrual;
        accrual.bonusAmount = 4.5;
        accruals = {accrual};
        EXPECT_CALL(steps, precheck(_, _)).Times(1);
    }

    /// What the card record holds: client, balance, points to spend and to earn.
    QStringList cardState() const
    {
        const auto owner = record->getCard()->getClient();
        return {owner.isNull() ? u"-"_s : owner->getName(), record->getBonusBalance().toString(),
                QString::number(record->getPointsForSpend()),
                record->getPointsForEarn().toString()};
    }
    void expectRequestAndAnswer()
    {
        EXPECT_CALL(steps, getRequestPayload(_, _)).WillOnce(Return(request));
        EXPECT_CALL(steps, sendRequest(_, _)).WillOnce([this](RequestType, const QDomDocument&) {
            steps.lastResponse = answer;
        });
    }

    QSharedPointer<AbstractDocument> document = QSharedPointer<Document>::create();
    QSharedPointer<DocumentCardRecord> record = tests::cardRecord(u"7700000000017"_s);
    QDomDocument request = tests::parse(u"<RawCheck/>"_s);
    QDomDocument answer = tests::parse(u"<answer><part/></answer>"_s);
    QSharedPointer<DocumentImpactDetail> detail;
    QList<QSharedPointer<DocumentImpact>> discounts;
    QList<DocumentBonusRecord> accruals;
    StrictMock<tests::Steps> steps;
};

} // namespace

TEST_F(Precheck, takesItsStepsInOrderAndWritesTheCardRecordBetweenThem)
{
    const LogCapture log;
    const InSequence order;
    const QDomElement root = answer.documentElement();
    EXPECT_CALL(steps, getRequestPayload(document, record)).WillOnce([&](const auto&, const auto&) {
        EXPECT_EQ(log.lines(), QList<LogLine>{debugLine(u"Выполнение предварительного запроса"_s)});
        return request;
    });
    EXPECT_CALL(steps, sendRequest(RequestType::Precheck, request))
        .WillOnce([&](RequestType, const QDomDocument&) { steps.lastResponse = answer; });
    EXPECT_CALL(steps, getClient(root)).WillOnce([&](const QDomElement&) {
        EXPECT_EQ(cardState(), (QStringList{u"-"_s, u""_s, u"0"_s, u""_s}));
        return named(u"Анна Орлова"_s);
    });
    EXPECT_CALL(steps, getBalance(root)).WillOnce([&](const QDomElement&) {
        EXPECT_EQ(cardState(), (QStringList{u"Анна Орлова"_s, u""_s, u"0"_s, u""_s}));
        return 250.5;
    });
    EXPECT_CALL(steps, getPointsForSpend(root)).WillOnce([&](const QDomElement&) {
        EXPECT_EQ(cardState(), (QStringList{u"Анна Орлова"_s, u"250.5"_s, u"0"_s, u""_s}));
        return 40.25;
    });
    EXPECT_CALL(steps, getPointsForEarn(root)).WillOnce([&](const QDomElement&) {
        EXPECT_EQ(cardState(), (QStringList{u"Анна Орлова"_s, u"250.5"_s, u"40.25"_s, u""_s}));
        return 7.75;
    });
    EXPECT_CALL(steps, getDiscountImpacts(record, root)).WillOnce([&](const auto&, const auto&) {
        EXPECT_EQ(cardState(), (QStringList{u"Анна Орлова"_s, u"250.5"_s, u"40.25"_s, u"7.75"_s}));
        return discounts;
    });
    EXPECT_CALL(steps, getBonusRecords(record, root)).WillOnce(Return(accruals));
    EXPECT_CALL(steps, getMessages(root, u"pos"_s)).WillOnce(Return(QStringList{u"кассиру"_s}));
    EXPECT_CALL(steps, getMessages(root, u"check"_s)).WillOnce(Return(QStringList{u"клиенту"_s}));

    const orva::RequestResult result = steps.precheck(document, record);

    EXPECT_EQ(result.discountImpacts, discounts);
    EXPECT_EQ(result.bonusRecords, accruals);
    EXPECT_EQ(result.posMessages, QStringList{u"кассиру"_s});
    EXPECT_EQ(result.checkMessages, QStringList{u"клиенту"_s});
    EXPECT_EQ(log.lines(), QList<LogLine>{debugLine(u"Выполнение предварительного запроса"_s)});
}

TEST_F(Precheck, storesBalanceAndPointsToEarnAsDoubles)
{
    expectRequestAndAnswer();
    EXPECT_CALL(steps, getClient(_)).WillOnce(Return(named(u"A"_s)));
    EXPECT_CALL(steps, getBalance(_)).WillOnce(Return(250));
    EXPECT_CALL(steps, getPointsForSpend(_)).WillOnce(Return(0.1));
    EXPECT_CALL(steps, getPointsForEarn(_)).WillOnce(Return(7));
    EXPECT_CALL(steps, getDiscountImpacts(_, _)).WillOnce(Return(discounts));
    EXPECT_CALL(steps, getBonusRecords(_, _)).WillOnce(Return(accruals));
    EXPECT_CALL(steps, getMessages(_, _)).Times(2).WillRepeatedly(Return(QStringList()));
    steps.precheck(document, record);
    EXPECT_EQ(record->getBonusBalance(), QVariant(250.0));
    EXPECT_EQ(record->getBonusBalance().typeId(), QMetaType::Double);
    EXPECT_EQ(record->getPointsForSpend(), 0.1);
    EXPECT_EQ(record->getPointsForEarn(), QVariant(7.0));
    EXPECT_EQ(record->getPointsForEarn().typeId(), QMetaType::Double);
}

TEST_F(Precheck, sendsNothingWhenTheRequestCannotBeBuilt)
{
    EXPECT_CALL(steps, getRequestPayload(_, _))
        .WillOnce([](const auto&, const auto&) -> QDomDocument {
            throw orva::Exception(tr::Tr(u"orvaInvalidCheckType"_s, QString()), QString());
        });
    EXPECT_THROW(steps.precheck(document, record), orva::Exception);
    EXPECT_EQ(cardState(), (QStringList{u"-"_s, u""_s, u"0"_s, u""_s}));
}

TEST_F(Precheck, leavesTheCardRecordUntouchedWhenSendingFails)
{
    const LogCapture log;
    EXPECT_CALL(steps, getRequestPayload(_, _)).WillOnce(Return(request));
    EXPECT_CALL(steps, sendRequest(_, _)).WillOnce([](RequestType, const QDomDocument&) {
        throw orva::NoConnectionException(tr::Tr(u"requestNoConnection"_s, QString()));
    });
    EXPECT_THROW(steps.precheck(document, record), orva::NoConnectionException);
    EXPECT_EQ(cardState(), (QStringList{u"-"_s, u""_s, u"0"_s, u""_s}));
    // what failed is not logged here
    EXPECT_EQ(log.lines(), QList<LogLine>{debugLine(u"Выполнение предварительного запроса"_s)});
}

TEST_F(Precheck, keepsWhatIsWrittenWhenALaterReaderThrows)
{
    expectRequestAndAnswer();
    EXPECT_CALL(steps, getClient(_)).WillOnce(Return(named(u"Анна Орлова"_s)));
    EXPECT_CALL(steps, getBalance(_)).WillOnce(Return(250.5));
    EXPECT_CALL(steps, getPointsForSpend(_)).WillOnce(Return(40));
    EXPECT_CALL(steps, getPointsForEarn(_)).WillOnce(Return(7));
    EXPECT_CALL(steps, getDiscountImpacts(_, _)).WillOnce(Return(discounts));
    EXPECT_CALL(steps, getBonusRecords(_, _))
        .WillOnce(
            [](const auto&, const auto&) -> QList<DocumentBonusRecord> { throw std::bad_alloc(); });
    EXPECT_THROW(steps.precheck(document, record), std::bad_alloc);
    EXPECT_EQ(cardState(), (QStringList{u"Анна Орлова"_s, u"250.5"_s, u"40"_s, u"7"_s}));
}

namespace {

/// The whole exchange over a transport double.
class Exchange : public ::testing::Test
{
protected:
    Exchange()
    {
        document->setDocumentType(EDocumentType::Sale);
        ON_CALL(transport, getHttpStatusCode()).WillByDefault(Return(200));
    }
    orva::RequestResult precheck(const QByteArray& body)
    {
        ON_CALL(transport, getResponse()).WillByDefault(Return(body));
        return client.precheck(document, record);
    }

    QSharedPointer<Document> document = QSharedPointer<Document>::create();
    QSharedPointer<DocumentCardRecord> record = tests::cardRecord(u"7700000000017"_s);
    NiceMock<tests::MockRestClient> transport;
    tests::Registered<RestClient> registration{transport};
    tests::OpenInterface client;
};

} // namespace

TEST_F(Exchange, readsTheCannedAnswer)
{
    const orva::RequestResult result = precheck(tests::dataFile(u"answer.xml"_s));
    EXPECT_EQ(record->getCard()->getClient()->getName(), u"Анна Орлова"_s);
    EXPECT_EQ(record->getBonusBalance(), QVariant(250.5));
    EXPECT_EQ(record->getPointsForSpend(), 60.0);
    EXPECT_EQ(record->getPointsForEarn(), QVariant(8.25));
    ASSERT_EQ(result.discountImpacts.size(), 3);
    EXPECT_EQ(result.discountImpacts.at(0)->getTotals()->getDiscountSum(), 15.5);
    EXPECT_EQ(result.discountImpacts.at(1)->getTotals()->getDiscountSum(), 0.3);
    EXPECT_EQ(result.discountImpacts.at(2)->getTotals()->getDiscountSum(), 4);
    ASSERT_EQ(result.bonusRecords.size(), 2);
    EXPECT_EQ(result.bonusRecords.at(0).bonusAmount, 5.25);
    EXPECT_EQ(result.bonusRecords.at(1).bonusAmount, 3);
    EXPECT_EQ(result.posMessages, QStringList{u"Предложите пакет"_s});
    EXPECT_EQ(result.checkMessages, (QStringList{u"Спасибо & до встречи"_s, u""_s}));
}

TEST_F(Exchange, leavesTheCardRecordUntouchedAfter401)
{
    ON_CALL(transport, getHttpStatusCode()).WillByDefault(Return(401));
    EXPECT_THROW(precheck(tests::dataFile(u"answer.xml"_s)), orva::Exception);
    EXPECT_TRUE(record->getCard()->getClient().isNull());
    EXPECT_TRUE(record->getBonusBalance().isNull());
    EXPECT_EQ(record->getPointsForSpend(), 0);
    EXPECT_TRUE(record->getPointsForEarn().isNull());
}

TEST_F(Exchange, givesTheClientToTheCardBeforeItMissesTheBalance)
{
    record->setPointsForSpend(11);
    record->setPointsForEarn(12.0);
    record->setBonusBalance(13.0);
    const QByteArray body = "<answer><client><RawCheckClient><name>Анна</name><surname>Орлова"
                            "</surname></RawCheckClient></client><awards><RawCheckAwards>"
                            "<allowBonus>5</allowBonus><awardBonus>6</awardBonus></RawCheckAwards>"
                            "</awards></answer>";
    try {
        precheck(body);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const orva::Exception& caught) {
        EXPECT_EQ(caught.tr().id(), u"requestIncorrectAnswer"_s);
        EXPECT_EQ(
            caught.detail,
            u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: account"_s);
    }
    EXPECT_EQ(record->getCard()->getClient()->getName(), u"Анна Орлова"_s);
    EXPECT_EQ(record->getBonusBalance(), QVariant(13.0));
    EXPECT_EQ(record->getPointsForSpend(), 11);
    EXPECT_EQ(record->getPointsForEarn(), QVariant(12.0));
}

TEST_F(Exchange, returnsEmptyListsForAnAnswerWithoutItemsAndInforming)
{
    const orva::RequestResult result =
        precheck("<answer><client><RawCheckClient><account><RawCheckAccount><balance>1</balance>"
                 "</RawCheckAccount></account></RawCheckClient></client></answer>");
    EXPECT_TRUE(result == orva::RequestResult());
    EXPECT_EQ(record->getCard()->getClient()->getName(), u" "_s);
    EXPECT_EQ(record->getPointsForSpend(), 0);
    EXPECT_EQ(record->getPointsForEarn(), QVariant(0.0));
}
