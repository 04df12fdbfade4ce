// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/plugin/orvatest.h"

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

const tr::Tr connectionLost(u"requestNoConnection"_s, u"Нет связи с сервером"_s);
const tr::Tr refused(u"orvaAuthorisationError"_s, u"Ошибка авторизации на сервере"_s);

class RequestTest : public OrvaTest
{
protected:
    /// The document that is handed over is neither the base's nor the session's.
    RequestTest() { asked->cardRecord = makeRecord(u"99"_s); }

    bool request() { return orva.request(asked); }

    void fillResult()
    {
        asked->cardRecord->setPointsForSpend(150.5);
        asked->cardRecord->setPointsForEarn(8.25);
        interface->result.discountImpacts = {discountImpact(), discountImpact()};
        interface->result.bonusRecords = {bonusRecord(2.5, 1), bonusRecord(5.75, 2)};
        interface->result.posMessages = {u"кассиру 1"_s, u"кассиру 2"_s};
        interface->result.checkMessages = {u"клиенту"_s};
    }

    void expectResultTakenOver() const
    {
        EXPECT_EQ(orva.pointsForSpend, 150.5);
        EXPECT_EQ(orva.pointsForEarn, 8.25);
        EXPECT_EQ(orva.discountImpacts, interface->result.discountImpacts);
        EXPECT_EQ(orva.bonusRecords, interface->result.bonusRecords);
        EXPECT_EQ(orva.messagesToCashier, interface->result.posMessages);
        EXPECT_EQ(orva.messagesToClient, interface->result.checkMessages);
    }

    const QSharedPointer<RecordingDocument> asked =
        QSharedPointer<RecordingDocument>::create(u"asked"_s);
    const QStringList callsUpToThePreCheck{u"info: Запрос к системе лояльности"_s,
                                           u"asked.getCardRecord(15)"_s,
                                           u"interface.precheck(asked, card 99)"_s};
};

TEST_F(RequestTest, RunsAPreCheckAndWritesTheState)
{
    EXPECT_TRUE(request());
    EXPECT_EQ(journal.entries(), callsUpToThePreCheck + writingOfState());
}

TEST_F(RequestTest, TakesOverPointsAndLists)
{
    fillResult();
    EXPECT_TRUE(request());
    expectResultTakenOver();
    EXPECT_EQ(orva.getDiscountImpacts(), interface->result.discountImpacts);
    EXPECT_EQ(orva.getBonusRecords(), interface->result.bonusRecords);
    EXPECT_EQ(orva.getMessagesToCashier(), (QStringList{u"кассиру 1"_s, u"кассиру 2"_s}));
    EXPECT_EQ(orva.getMessagesToClient(), QStringList{u"клиенту"_s});
    EXPECT_EQ(orva.getPointsForEarn(), 8.25);
}

TEST_F(RequestTest, ReadsThePointsAfterThePreCheckHasSetThem)
{
    asked->cardRecord->setPointsForSpend(1);
    asked->cardRecord->setPointsForEarn(1.0);
    interface->onCall = [this](const QString& call) {
        if (call.startsWith(u"precheck")) {
            asked->cardRecord->setPointsForSpend(20);
            asked->cardRecord->setPointsForEarn(30.0);
        }
    };
    EXPECT_TRUE(request());
    EXPECT_EQ(orva.pointsForSpend, 20.0);
    EXPECT_EQ(orva.pointsForEarn, 30.0);
}

TEST_F(RequestTest, ReplacesTheListsWholeEvenByEmptyOnes)
{
    fillResult();
    EXPECT_TRUE(request());
    interface->result = {};
    EXPECT_TRUE(request());
    EXPECT_TRUE(orva.discountImpacts.isEmpty());
    EXPECT_TRUE(orva.bonusRecords.isEmpty());
    EXPECT_TRUE(orva.messagesToCashier.isEmpty());
    EXPECT_TRUE(orva.messagesToClient.isEmpty());
    EXPECT_EQ(open->pluginData.value(u"Orva"_s).value(u"bonusRecords"_s), QVariant(QVariantList()));
}

TEST_F(RequestTest, DoesNotMergeWithWhatWasHeld)
{
    fillState();
    fillResult();
    EXPECT_TRUE(request());
    expectResultTakenOver();
}

TEST_F(RequestTest, LeavesTheSpendingImpactsAlone)
{
    fillState();
    const auto impacts = orva.bonusImpactsForSpend;
    EXPECT_TRUE(request());
    EXPECT_EQ(orva.bonusImpactsForSpend, impacts);
}

TEST_F(RequestTest, ReadsPointsToEarnAsANumber)
{
    const std::pair<QVariant, double> readings[] = {{12.5, 12.5},          {7, 7.0},
                                                    {u"12.5"_s, 12.5},     {u"12,5"_s, 0.0},
                                                    {u"много"_s, 0.0},     {QVariant(), 0.0},
                                                    {QString(), 0.0},      {-3.25, -3.25},
                                                    {QVariantList(), 0.0}, {QByteArray("4"), 4.0}};
    for (const auto& [value, expected] : readings) {
        orva.pointsForEarn = 99;
        asked->cardRecord->setPointsForEarn(value);
        EXPECT_TRUE(request());
        EXPECT_EQ(orva.pointsForEarn, expected) << ::testing::PrintToString(value);
    }
}

TEST_F(RequestTest, WritesTheNewStateIntoTheSessionsDocument)
{
    fillResult();
    QDomDocument answer;
    answer.setContent(u"<RawCheck><a/></RawCheck>"_s);
    interface->setLastResponse(answer);
    EXPECT_TRUE(request());
    const QVariantMap stored = open->pluginData.value(u"Orva"_s);
    EXPECT_EQ(stored.value(u"lastResponse"_s), QVariant(u"<RawCheck>\n <a/>\n</RawCheck>\n"_s));
    EXPECT_EQ(stored.value(u"bonusRecords"_s).toList().size(), 2);
    EXPECT_TRUE(asked->pluginData.isEmpty());
    EXPECT_TRUE(base->pluginData.isEmpty());
}

TEST_F(RequestTest, AFailedPreCheckLeavesTheStateAsItWas)
{
    fillState();
    fillResult();
    const State before(orva);
    interface->onCall = [this](const QString&) {
        asked->cardRecord->setBonusBalance(12.5);
        throw orva::Exception(refused, QString());
    };
    EXPECT_FALSE(request());
    EXPECT_EQ(State(orva), before);
    EXPECT_EQ(orva.getLastErrorString(), refused);
    EXPECT_EQ(journal.entries(), callsUpToThePreCheck + QStringList{u"error: "_s});
    EXPECT_TRUE(open->pluginData.isEmpty());
    EXPECT_EQ(asked->cardRecord->getBonusBalance(), QVariant(12.5))
        << "what the pre-check wrote into the record stays";
}

TEST_F(RequestTest, AServerThatCannotBeReachedIsCaughtToo)
{
    interface->onCall = [](const QString&) { throw orva::NoConnectionException(connectionLost); };
    EXPECT_FALSE(request());
    EXPECT_EQ(orva.getLastErrorString(), connectionLost);
    EXPECT_EQ(journal.entries().constLast(), u"error: "_s);
}

TEST_F(RequestTest, TheDetailOfTheErrorIsLogged)
{
    const QString detail =
        u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: balance"_s;
    interface->onCall = [](const QString&) { orva::Interface::throwIfNoField(u"balance"_s); };
    EXPECT_FALSE(request());
    EXPECT_EQ(journal.entries(), callsUpToThePreCheck + QStringList{u"error: "_s + detail});
    EXPECT_EQ(orva.getLastErrorString(),
              tr::Tr(u"requestIncorrectAnswer"_s, u"Некорректный ответ от сервера"_s));
}

TEST_F(RequestTest, TheFirstHostCallIsGuardedAlready)
{
    asked->onCall = [](const QString&) { throw orva::Exception(refused, u"x"_s); };
    EXPECT_FALSE(request());
    EXPECT_EQ(journal.entries(), (QStringList{u"info: Запрос к системе лояльности"_s,
                                              u"asked.getCardRecord(15)"_s, u"error: x"_s}));
    EXPECT_EQ(orva.getLastErrorString(), refused);
}

TEST_F(RequestTest, TheWritingOfTheStateIsGuardedAndTheNewStateStays)
{
    fillResult();
    open->onCall = [](const QString&) { throw orva::Exception(refused, u"x"_s); };
    EXPECT_FALSE(request());
    expectResultTakenOver();
    EXPECT_TRUE(open->pluginData.isEmpty());
    EXPECT_EQ(orva.getLastErrorString(), refused);
    EXPECT_EQ(journal.entries(),
              callsUpToThePreCheck + writingOfState().mid(0, 4) + QStringList{u"error: x"_s});
}

TEST_F(RequestTest, AnotherExceptionOfTheWritingPassesAndTheNewStateStays)
{
    fillResult();
    orva.lastError = oldError;
    session.onCall = [](const QString&) { throw std::runtime_error("session"); };
    EXPECT_THROW(request(), std::runtime_error);
    expectResultTakenOver();
    EXPECT_EQ(orva.getLastErrorString(), oldError);
    EXPECT_TRUE(open->pluginData.isEmpty());
    EXPECT_EQ(journal.entries(), callsUpToThePreCheck + writingOfState().mid(0, 2));
}

TEST_F(RequestTest, OtherExceptionsOfThePreCheckPass)
{
    fillState();
    const State before(orva);
    interface->onCall = [](const QString&) { throw BasicException(connectionLost); };
    EXPECT_THROW(request(), BasicException);
    interface->onCall = [](const QString&) { throw std::bad_alloc(); };
    EXPECT_THROW(request(), std::bad_alloc);
    interface->onCall = [](const QString&) { throw 42; };
    EXPECT_THROW(request(), int);
    EXPECT_EQ(State(orva), before);
    EXPECT_EQ(orva.getLastErrorString(), oldError);
    EXPECT_EQ(journal.entries(),
              callsUpToThePreCheck + callsUpToThePreCheck + callsUpToThePreCheck);
}

TEST_F(RequestTest, SuccessLeavesAnEarlierErrorToTheHost)
{
    orva.lastError = oldError;
    EXPECT_TRUE(request());
    EXPECT_EQ(orva.getLastErrorString(), oldError);
    orva.clearLastErrorString();
    EXPECT_TRUE(orva.getLastErrorString().isEmpty());
}

/// Writes nothing, but notes that it was to, and what the base held then.
class WatchedOrva : public OpenOrva
{
public:
    void updatePluginData() const override
    {
        Journal::note(u"orva.updatePluginData()"_s);
        messagesThen = messagesToClient;
    }
    mutable QStringList messagesThen;
};

TEST_F(RequestTest, TheWritingGoesThroughTheVirtualTableAsTheLastStep)
{
    WatchedOrva watched;
    watched.interface = interface;
    fillResult();
    EXPECT_TRUE(watched.request(asked));
    EXPECT_EQ(journal.entries(), callsUpToThePreCheck + QStringList{u"orva.updatePluginData()"_s});
    EXPECT_EQ(watched.messagesThen, QStringList{u"клиенту"_s});
}

} // namespace
