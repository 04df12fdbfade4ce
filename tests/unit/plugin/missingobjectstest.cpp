// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Every operation without a document, on a document without a card record, and with a record that
// has no card.

#include "tests/unit/plugin/orvatest.h"

using namespace Qt::StringLiterals;
using ::testing::_;
using ::testing::NiceMock;
using ::testing::Return;

namespace {

using namespace tests;

const tr::Tr notFormed(u"orvaRequestFormingError"_s, u"Ошибка формирования запроса"_s);
const QString noDocument = u"Запрос нельзя сформировать: нет документа"_s;
const QString noRecord = u"Запрос нельзя сформировать: в документе нет записи карты"_s;
const QString noCard = u"Запрос нельзя сформировать: в записи карты нет карты"_s;
const QString errorMark = u"error: "_s;

/// A client with the answer of an earlier customer's pre-check, on a transport that answers.
class MissingObjectsTest : public OrvaTest
{
protected:
    MissingObjectsTest()
    {
        orva.interface = client;
        QDomDocument answer;
        EXPECT_TRUE(answer.setContent(
            u"<RawCheck><id>earlier</id><items><RawItem><id>1</id><awards><RawItemAwards>"
            "<allowBonusInCurrency>50.00</allowBonusInCurrency>"
            "</RawItemAwards></awards></RawItem></items></RawCheck>"_s));
        client->setLastResponse(answer);
        ON_CALL(transport, getHttpStatusCode()).WillByDefault(Return(200));
        ON_CALL(transport, getResponse())
            .WillByDefault(Return(QByteArray(
                "<RawCheck><client><RawCheckClient><account><RawCheckAccount><balance>1.00"
                "</balance></RawCheckAccount></account></RawCheckClient></client></RawCheck>")));
        EXPECT_CALL(transport, post(_, _, _)).Times(0);
    }

    void expectFailure(bool succeeded, const QString& detail)
    {
        EXPECT_FALSE(succeeded);
        EXPECT_EQ(orva.lastError, notFormed);
        EXPECT_EQ(journal.entries().filter(errorMark), QStringList{errorMark + detail});
        orva.lastError = tr::Tr();
        journal.clear();
    }

    template <typename Operation>
    static QString refusalOf(Operation operation)
    {
        try {
            operation();
        } catch (const orva::Exception& exception) {
            EXPECT_EQ(exception.tr(), notFormed);
            return exception.detail;
        }
        ADD_FAILURE() << "nothing was thrown";
        return {};
    }

    void askTheServer() { EXPECT_CALL(transport, post(_, _, _)).Times(1); }

    QSharedPointer<DocumentCardRecord> withoutCard =
        QSharedPointer<DocumentCardRecord>::create(QSharedPointer<Card>(), 15);
    const QSharedPointer<AbstractDocument> none;
    const QSharedPointer<orva::Interface> client = QSharedPointer<orva::Interface>::create();
    NiceMock<MockRestClient> transport;
    const Registered<RestClient> registration{transport};
    RecordingQueue queue;
    const InSingleton<DBQueueBroker> queueInPlace{&queue};
};

TEST_F(MissingObjectsTest, IdentifyingFailsWithoutADocumentInTheSession)
{
    session.setDocument({});
    auto card = makeRecord(u"99"_s);
    expectFailure(orva.identifyByCard(card, ECardNumberType::Manual), noDocument);
}

TEST_F(MissingObjectsTest, IdentifyingFailsWithoutARecord)
{
    QSharedPointer<DocumentCardRecord> card;
    expectFailure(orva.identifyByCard(card, ECardNumberType::Manual), noRecord);
}

TEST_F(MissingObjectsTest, IdentifyingFailsWithARecordThatHasNoCard)
{
    askTheServer();
    expectFailure(orva.identifyByCard(withoutCard, ECardNumberType::Manual), noCard);
}

TEST_F(MissingObjectsTest, ARequestFailsAndLeavesTheStateAlone)
{
    fillState();
    const State before(orva);
    expectFailure(orva.request({}), noDocument);
    base->cardRecord.reset();
    expectFailure(orva.request(base), noRecord);
    askTheServer();
    base->cardRecord = withoutCard;
    expectFailure(orva.request(base), noCard);
    EXPECT_EQ(State(orva), before);
    EXPECT_TRUE(open->pluginData.isEmpty());
}

TEST_F(MissingObjectsTest, ARequestThatAReplacedStepAnswersGivesNoPointsWithoutARecord)
{
    orva.interface = interface;
    interface->result.posMessages = {u"кассиру"_s};
    fillState();
    base->cardRecord.reset();
    EXPECT_TRUE(orva.request(base));
    EXPECT_EQ(orva.pointsForSpend, 0.0);
    EXPECT_EQ(orva.pointsForEarn, 0.0);
    EXPECT_EQ(orva.messagesToCashier, QStringList{u"кассиру"_s});
    EXPECT_FALSE(open->pluginData.isEmpty());
}

TEST_F(MissingObjectsTest, AReturnsConfirmationIsRefusedToTheHostWithoutARecord)
{
    base->documentType = static_cast<int>(EDocumentType::ReturnBySale);
    base->cardRecord.reset();
    EXPECT_EQ(refusalOf([&] { orva.commit(base); }), noRecord);
    EXPECT_TRUE(queue.messages.isEmpty());
    EXPECT_TRUE(orva.lastError.isEmpty());
    EXPECT_TRUE(journal.entries().filter(errorMark).isEmpty());
    base->cardRecord = withoutCard;
    EXPECT_TRUE(orva.commit(base)) << "the number is empty, the message is not";
    EXPECT_EQ(queue.messages.size(), 1);
}

TEST_F(MissingObjectsTest, ASaleIsConfirmedWithoutARecord)
{
    base->cardRecord.reset();
    EXPECT_TRUE(orva.commit(base));
    base->cardRecord = withoutCard;
    EXPECT_TRUE(orva.commit(base));
    EXPECT_EQ(queue.messages.size(), 2);
}

TEST_F(MissingObjectsTest, ACommitWithoutADocumentIsRefusedAndQueuesNothing)
{
    EXPECT_EQ(refusalOf([&] { orva.commit({}); }), noDocument);
    EXPECT_TRUE(queue.messages.isEmpty());
    EXPECT_FALSE(client->getLastResponse().toString().contains(u"payments"_s));
}

TEST_F(MissingObjectsTest, WithoutADocumentNoPointsMayBeSpent)
{
    orva.pointsForSpend = 150.5;
    EXPECT_EQ(orva.getPointsForSpend({}), 0.0);
    EXPECT_EQ(journal.taken(),
              QStringList{u"debug: Доступные баллы: '150.50', сумма к оплате: '0.00'. "
                          "Выбираем минимум"_s});
    orva.pointsForSpend = -2;
    EXPECT_EQ(orva.getPointsForSpend({}), -2.0);
}

TEST_F(MissingObjectsTest, SpendingMakesNoImpactsWithoutADocument)
{
    for (const double points : {150.5, 0.0, -5.0}) {
        fillState();
        orva.pointsForSpend = points;
        orva.setDocument({});
        EXPECT_TRUE(orva.spendPoints());
        EXPECT_TRUE(orva.bonusImpactsForSpend.isEmpty());
        EXPECT_TRUE(orva.discountImpacts.isEmpty());
        EXPECT_EQ(orva.pointsForSpend, points);
    }
}

TEST_F(MissingObjectsTest, SpendingMakesNoImpactsWithoutARecord)
{
    fillState();
    base->cardRecord.reset();
    base->sumToPay = 40;
    EXPECT_TRUE(orva.spendPoints());
    EXPECT_TRUE(orva.bonusImpactsForSpend.isEmpty());
    EXPECT_TRUE(orva.discountImpacts.isEmpty());
    EXPECT_FALSE(open->pluginData.isEmpty()) << "the rest is done";
    EXPECT_EQ(journal.entries().filter(errorMark), QStringList{errorMark + noRecord});
}

TEST_F(MissingObjectsTest, SpendingWithARecordThatHasNoCardIsLikeAnyOther)
{
    base->cardRecord = withoutCard;
    base->sumToPay = 40;
    orva.pointsForSpend = 40;
    EXPECT_TRUE(orva.spendPoints());
    EXPECT_EQ(orva.bonusImpactsForSpend.size(), 1);
}

TEST_F(MissingObjectsTest, AReplacedSpendingDecidesForItself)
{
    orva.interface = interface;
    interface->bonusImpacts = {bonusImpact()};
    base->cardRecord.reset();
    EXPECT_TRUE(orva.spendPoints());
    EXPECT_EQ(orva.bonusImpactsForSpend, interface->bonusImpacts);
}

TEST_F(MissingObjectsTest, ARefusalOfSpendingWithARecordStillPasses)
{
    orva.interface = interface;
    interface->onCall = [](const QString&) { throw orva::Exception(notFormed, u"x"_s); };
    EXPECT_THROW(orva.spendPoints(), orva::Exception);
}

TEST_F(MissingObjectsTest, RecalculatingLeavesOutTheRecordAlone)
{
    base->cardRecord.reset();
    base->checkSum = 80;
    orva.pointsForSpend = 20;
    orva.bonusRecords = {bonusRecord(10)};
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(orva.bonusRecords.at(0).bonusAmount, 8.0);
    EXPECT_EQ(orva.pointsForEarn, 8.0);
}

TEST_F(MissingObjectsTest, RecalculatingWithoutADocumentKeepsTheRecords)
{
    orva.setDocument({});
    orva.pointsForSpend = 20;
    orva.pointsForEarn = 10;
    orva.bonusRecords = {bonusRecord(10)};
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_EQ(orva.bonusRecords.at(0).bonusAmount, 10.0);
    EXPECT_EQ(orva.pointsForEarn, 0.0);
}

TEST_F(MissingObjectsTest, RestoringWithoutARecordTakesNoPointsAndDoesTheRest)
{
    fillState();
    base->cardRecord.reset();
    base->pluginData[u"Orva"_s] = {{u"lastResponse"_s, u"<later/>"_s},
                                   {u"bonusRecords"_s, QVariantList{QVariantMap()}}};
    EXPECT_TRUE(orva.restoreLoyaltySystem());
    EXPECT_EQ(orva.pointsForSpend, 0.0);
    EXPECT_EQ(orva.pointsForEarn, 0.0);
    EXPECT_EQ(client->getLastResponse().documentElement().tagName(), u"later"_s);
    EXPECT_EQ(orva.bonusRecords.size(), 2);
    EXPECT_EQ(journal.entries().constLast(), u"base.refreshLoyaltyData()"_s);
}

TEST_F(MissingObjectsTest, RestoringWithoutADocumentForgetsTheEarlierAnswer)
{
    fillState();
    orva.setDocument({});
    EXPECT_TRUE(orva.restoreLoyaltySystem());
    EXPECT_EQ(orva.pointsForSpend, 0.0);
    EXPECT_EQ(orva.pointsForEarn, 0.0);
    EXPECT_TRUE(client->getLastResponse().documentElement().isNull());
    EXPECT_EQ(orva.bonusRecords.size(), 1) << "nothing was kept, so nothing is added";
}

TEST_F(MissingObjectsTest, WritingTheStateWithoutADocumentInTheSessionIsSaid)
{
    session.setDocument({});
    orva.updatePluginData();
    EXPECT_EQ(
        journal.entries().filter(errorMark),
        QStringList{u"error: Данные системы лояльности не записаны: в сессии нет документа"_s});
}

TEST_F(MissingObjectsTest, NothingAtAllIsHarmless)
{
    session.setDocument({});
    orva.setDocument({});
    QSharedPointer<DocumentCardRecord> card;
    EXPECT_FALSE(orva.identifyByCard(card, ECardNumberType::Undefined));
    EXPECT_FALSE(orva.request({}));
    EXPECT_TRUE(orva.spendPoints());
    EXPECT_TRUE(orva.recalculatePointsForEarn());
    EXPECT_TRUE(orva.restoreLoyaltySystem());
    EXPECT_TRUE(orva.rollback({}));
    EXPECT_EQ(orva.getPointsForSpend({}), 0.0);
    EXPECT_EQ(refusalOf([&] { orva.commit({}); }), noDocument);
}

} // namespace
