// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/plugin/orvatest.h"

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

const tr::Tr noConnection(u"requestNoConnection"_s, u"Нет связи с сервером"_s);
const tr::Tr incorrectAnswer(u"requestIncorrectAnswer"_s, u"Некорректный ответ от сервера"_s);

class IdentificationTest : public OrvaTest
{
protected:
    bool identify(ECardNumberType type = ECardNumberType::Barcode)
    {
        return orva.identifyByCard(card, type);
    }

    /// Lets the client throw on its pre-check.
    template <typename Exception>
    void failWith(const Exception& exception)
    {
        interface->onCall = [exception](const QString&) { throw exception; };
    }

    QSharedPointer<DocumentCardRecord> card = makeRecord(u"99"_s);
    const QStringList ordinaryCalls{u"info: Получение информации о карте Orva"_s,
                                    u"session.getDocument()"_s,
                                    u"interface.precheck(open, card 99)"_s};
};

TEST_F(IdentificationTest, RunsAPreCheckOnTheSessionsDocument)
{
    EXPECT_TRUE(identify());
    EXPECT_EQ(journal.entries(), ordinaryCalls);
}

TEST_F(IdentificationTest, KeepsNothingOfTheResult)
{
    fillState();
    interface->result.discountImpacts = {discountImpact()};
    interface->result.bonusRecords = {bonusRecord(1), bonusRecord(2)};
    interface->result.posMessages = {u"кассиру"_s};
    interface->result.checkMessages = {u"клиенту"_s};
    card->setPointsForSpend(500);
    card->setPointsForEarn(50.0);
    const State before(orva);
    EXPECT_TRUE(identify());
    EXPECT_EQ(State(orva), before);
    EXPECT_EQ(orva.getLastErrorString(), oldError);
    EXPECT_TRUE(open->pluginData.isEmpty());
    EXPECT_TRUE(base->pluginData.isEmpty());
}

TEST_F(IdentificationTest, TheRecordIsTheOneThatWasPassed)
{
    const auto passed = card;
    interface->onCall = [this](const QString&) { card->setBonusBalance(12.5); };
    EXPECT_TRUE(identify());
    EXPECT_EQ(card, passed);
    EXPECT_EQ(passed->getBonusBalance(), QVariant(12.5));
}

TEST_F(IdentificationTest, TheNumbersTypeHasNoEffect)
{
    for (const int type : {0, 1, 2, 3, 4, 99, -1}) {
        EXPECT_TRUE(identify(static_cast<ECardNumberType>(type)));
        EXPECT_EQ(journal.taken(), ordinaryCalls) << type;
    }
}

TEST_F(IdentificationTest, ANullDocumentIsHandedOn)
{
    session.setDocument({});
    EXPECT_TRUE(identify());
    EXPECT_EQ(journal.entries().constLast(), u"interface.precheck(null, card 99)"_s);
}

TEST_F(IdentificationTest, MakesTheSessionWhereTheHostHasNone)
{
    const InSingleton<Session> none(nullptr);
    EXPECT_TRUE(identify());
    ASSERT_NE(Singleton<Session>::instance, nullptr);
    EXPECT_TRUE(Singleton<Session>::instance->getDocument().isNull());
    EXPECT_EQ(journal.entries(), (QStringList{u"info: Получение информации о карте Orva"_s,
                                              u"interface.precheck(null, card 99)"_s}));
    Session* const made = Singleton<Session>::instance;
    EXPECT_TRUE(identify());
    EXPECT_EQ(Singleton<Session>::instance, made) << "made once";
}

TEST_F(IdentificationTest, ARejectedCardSetsTheLastErrorAndNothingElse)
{
    fillState();
    const State before(orva);
    failWith(orva::Exception(incorrectAnswer, u"нет поля balance"_s));
    EXPECT_FALSE(identify());
    EXPECT_EQ(orva.getLastErrorString(), incorrectAnswer);
    EXPECT_EQ(State(orva), before);
    EXPECT_TRUE(open->pluginData.isEmpty());
    EXPECT_EQ(journal.entries(), ordinaryCalls + QStringList{u"error: нет поля balance"_s});
}

TEST_F(IdentificationTest, AnEmptyDetailStillMakesAnErrorLine)
{
    failWith(orva::NoConnectionException(noConnection));
    EXPECT_FALSE(identify());
    EXPECT_EQ(journal.entries(), ordinaryCalls + QStringList{u"error: "_s});
    EXPECT_EQ(orva.getLastErrorString(), noConnection);
}

TEST_F(IdentificationTest, LogsTheErrorBeforeItStoresIt)
{
    orva.lastError = oldError;
    tr::Tr storedAtTheLogLine;
    journal.onEntry = [&](const QString& entry) {
        if (entry.startsWith(u"error:")) {
            storedAtTheLogLine = orva.lastError;
        }
    };
    failWith(orva::NoConnectionException(noConnection));
    EXPECT_FALSE(identify());
    EXPECT_EQ(storedAtTheLogLine, oldError);
    EXPECT_EQ(orva.lastError, noConnection);
}

TEST_F(IdentificationTest, PercentSignsOfTheDetailAreLoggedAsTheyAre)
{
    failWith(orva::Exception(incorrectAnswer, QStringLiteral("%1 из %2")));
    EXPECT_FALSE(identify());
    EXPECT_EQ(journal.entries().constLast(), QStringLiteral("error: %1 из %2"));
}

TEST_F(IdentificationTest, TheSessionsFailureIsCaughtLikeTheServers)
{
    session.onCall = [](const QString&) { throw orva::Exception(incorrectAnswer, u"x"_s); };
    EXPECT_FALSE(identify());
    EXPECT_EQ(journal.entries(), (QStringList{u"info: Получение информации о карте Orva"_s,
                                              u"session.getDocument()"_s, u"error: x"_s}));
    EXPECT_EQ(orva.getLastErrorString(), incorrectAnswer);
}

TEST_F(IdentificationTest, OtherExceptionsPassUnnoticed)
{
    orva.lastError = oldError;
    failWith(std::runtime_error("disk"));
    EXPECT_THROW(identify(), std::runtime_error);
    failWith(BasicException(noConnection));
    EXPECT_THROW(identify(), BasicException);
    failWith(42);
    EXPECT_THROW(identify(), int);
    EXPECT_EQ(journal.entries(), ordinaryCalls + ordinaryCalls + ordinaryCalls);
    EXPECT_EQ(orva.getLastErrorString(), oldError);
}

TEST_F(IdentificationTest, SuccessLeavesAnEarlierErrorToTheHost)
{
    failWith(orva::NoConnectionException(noConnection));
    EXPECT_FALSE(identify());
    interface->onCall = nullptr;
    EXPECT_TRUE(identify());
    EXPECT_EQ(orva.getLastErrorString(), noConnection);
}

TEST_F(IdentificationTest, WhatThePreCheckWroteBeforeItFailedStays)
{
    interface->onCall = [this](const QString&) {
        card->setBonusBalance(12.5);
        throw orva::Exception(incorrectAnswer, QString());
    };
    EXPECT_FALSE(identify());
    EXPECT_EQ(card->getBonusBalance(), QVariant(12.5));
}

} // namespace
