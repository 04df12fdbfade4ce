// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a host may come without: each step refuses only what it needs itself.

#include "client/exception.h"
#include "host/document/document.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/printers.h"
#include "tests/unit/client/steps.h"

using namespace Qt::StringLiterals;
using ::testing::_;
using ::testing::NiceMock;
using ::testing::Return;

namespace {

const QString noDocument = u"Запрос нельзя сформировать: нет документа"_s;
const QString noRecord = u"Запрос нельзя сформировать: в документе нет записи карты"_s;
const QString noCard = u"Запрос нельзя сформировать: в записи карты нет карты"_s;

/// The detail of the refusal; a test failure when nothing, or something else, is thrown.
template <typename Step>
QString refusalOf(Step step)
{
    try {
        step();
    } catch (const orva::Exception& exception) {
        EXPECT_EQ(exception.tr(),
                  tr::Tr(u"orvaRequestFormingError"_s, u"Ошибка формирования запроса"_s));
        return exception.detail;
    }
    ADD_FAILURE() << "nothing was refused";
    return {};
}

class MissingObjects : public ::testing::Test
{
protected:
    MissingObjects()
    {
        sale->setDocumentType(EDocumentType::Sale);
        giveBack->setDocumentType(EDocumentType::ReturnBySale);
        client.lastResponse = tests::parse(
            u"<RawCheck><items><RawItem><id>1</id><awards><RawItemAwards>"
            "<allowBonusInCurrency>5.00</allowBonusInCurrency><awardBonus>2.00</awardBonus>"
            "</RawItemAwards></awards></RawItem></items></RawCheck>"_s);
        root = client.lastResponse.documentElement();
        ON_CALL(transport, getHttpStatusCode()).WillByDefault(Return(200));
        ON_CALL(transport, getResponse()).WillByDefault(Return(tests::dataFile(u"answer.xml"_s)));
    }

    const QSharedPointer<Document> sale = QSharedPointer<Document>::create();
    const QSharedPointer<Document> giveBack = QSharedPointer<Document>::create();
    const QSharedPointer<AbstractDocument> none;
    const QSharedPointer<DocumentCardRecord> record = tests::cardRecord(u"77"_s);
    const QSharedPointer<DocumentCardRecord> withoutCard =
        QSharedPointer<DocumentCardRecord>::create(QSharedPointer<Card>(), 15);
    NiceMock<tests::MockRestClient> transport;
    const tests::Registered<RestClient> registration{transport};
    NiceMock<tests::Steps> client;
    QDomElement root;
};

} // namespace

TEST_F(MissingObjects, aPreCheckWithoutDocumentOrRecordSendsNothing)
{
    EXPECT_CALL(transport, post(_, _, _)).Times(0);
    EXPECT_EQ(refusalOf([&] { client.precheck(none, record); }), noDocument);
    EXPECT_EQ(refusalOf([&] { client.precheck(sale, {}); }), noRecord);
}

TEST_F(MissingObjects, aPreCheckOfARecordWithoutCardIsRefusedWhereTheClientIsGivenToIt)
{
    EXPECT_CALL(transport, post(_, _, _)).Times(1);
    EXPECT_EQ(refusalOf([&] { client.precheck(sale, withoutCard); }), noCard);
    EXPECT_TRUE(withoutCard->getBonusBalance().isNull()) << "nothing was written";
}

TEST_F(MissingObjects, theRequestDocumentNeedsDocumentAndRecordButNoCard)
{
    EXPECT_EQ(refusalOf([&] { client.getRequestPayload(none, record); }), noDocument);
    EXPECT_EQ(refusalOf([&] { client.getRequestPayload(none, {}); }), noDocument);
    EXPECT_EQ(refusalOf([&] { client.getRequestPayload(sale, {}); }), noRecord);
    const QDomDocument request = client.getRequestPayload(sale, withoutCard);
    EXPECT_EQ(tests::childTexts(request.documentElement()).constLast(), u"cardNumber="_s);
}

TEST_F(MissingObjects, anUnsupportedTypeComesOutBeforeTheMissingRecord)
{
    sale->setDocumentType(EDocumentType(2));
    try {
        client.getRequestPayload(sale, {});
        FAIL() << "nothing was thrown";
    } catch (const orva::Exception& exception) {
        EXPECT_EQ(exception.tr().id(), u"orvaInvalidCheckType"_s);
    }
}

TEST_F(MissingObjects, aReturnsMessageNeedsDocumentAndRecord)
{
    EXPECT_EQ(refusalOf([&] { client.getBackBySaleRequest(none, record); }), noDocument);
    EXPECT_EQ(refusalOf([&] { client.getBackBySaleRequest(giveBack, {}); }), noRecord);
    EXPECT_EQ(client.getBackBySaleRequest(giveBack, withoutCard).size(), 3);
}

TEST_F(MissingObjects, aSalesMessageNeedsTheDocumentAlone)
{
    const QString before = client.lastResponse.toString(1);
    EXPECT_EQ(refusalOf([&] { client.getSaleRequest(none, record); }), noDocument);
    EXPECT_EQ(client.lastResponse.toString(1), before);
    EXPECT_EQ(client.getSaleRequest(sale, {}).size(), 3);
    EXPECT_EQ(client.getSaleRequest(sale, withoutCard).size(), 3);
}

TEST_F(MissingObjects, spendingNeedsARecordWhereThereIsSomethingToPlace)
{
    EXPECT_EQ(refusalOf([&] { client.generateBonusImpacts({}, 5, 5); }), noRecord);
    EXPECT_TRUE(client.generateBonusImpacts({}, 0, 5).isEmpty());
    EXPECT_EQ(client.generateBonusImpacts(withoutCard, 5, 5).size(), 1);
    client.lastResponse = QDomDocument();
    EXPECT_TRUE(client.generateBonusImpacts({}, 5, 5).isEmpty());
}

TEST_F(MissingObjects, accrualsNeedARecordWithACardWhereThereAreAny)
{
    EXPECT_EQ(refusalOf([&] { client.getBonusRecords({}, root); }), noRecord);
    EXPECT_EQ(refusalOf([&] { client.getBonusRecords(withoutCard, root); }), noCard);
    EXPECT_TRUE(client.getBonusRecords({}, QDomElement()).isEmpty());
}

TEST_F(MissingObjects, discountsNeedNoRecord)
{
    const QDomDocument answer = tests::parse(
        u"<RawCheck><items><RawItem><id>1</id><awards><RawItemAwards><discount>3.00</discount>"
        "</RawItemAwards></awards></RawItem></items></RawCheck>"_s);
    EXPECT_EQ(client.getDiscountImpacts({}, answer.documentElement()).size(), 1);
}

TEST_F(MissingObjects, aReplacedStepDecidesForItself)
{
    const QDomDocument request = tests::parse(u"<Own/>"_s);
    EXPECT_CALL(client, getRequestPayload(none, _)).WillRepeatedly(Return(request));
    EXPECT_CALL(client, getBonusRecords(_, _)).WillOnce(Return(QList<DocumentBonusRecord>()));
    client.precheck(none, record);
    EXPECT_EQ(record->getPointsForSpend(), 60.0);
    EXPECT_EQ(client.getBackBySaleRequest({}, {}).value(u"payload"_s).toString(), u"<Own/>\n"_s);
}
