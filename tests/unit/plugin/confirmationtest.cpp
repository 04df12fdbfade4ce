// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/knownkeys.h"
#include "tests/unit/plugin/orvatest.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

class ConfirmationTest : public OrvaTest
{
protected:
    ConfirmationTest() { asked->cardRecord = makeRecord(u"99"_s); }

    bool commit() { return orva.commit(asked); }

    /// What a commit leaves in the journal when the message is built by that operation.
    static QStringList calls(const QString& builder)
    {
        return {u"info: Подтверждение операций в системе лояльности"_s,
                u"asked.getDocumentType()"_s, u"asked.getCardRecord(15)"_s,
                u"interface.%1(asked, card 99)"_s.arg(builder),
                u"queue.addToQueue(\"orva\", message, \"\")"_s};
    }

    const QSharedPointer<RecordingDocument> asked =
        QSharedPointer<RecordingDocument>::create(u"asked"_s);
    RecordingQueue queue;
    const InSingleton<DBQueueBroker> queueInPlace{&queue};
};

TEST_F(ConfirmationTest, ASaleQueuesTheSalesMessage)
{
    EXPECT_TRUE(commit());
    EXPECT_EQ(journal.entries(), calls(u"getSaleRequest"_s));
    EXPECT_EQ(queue.messages, QList<QVariantMap>{interface->saleMessage});
}

TEST_F(ConfirmationTest, AReturnAgainstASaleQueuesTheReturnsMessage)
{
    asked->documentType = 25;
    EXPECT_TRUE(commit());
    EXPECT_EQ(journal.entries(), calls(u"getBackBySaleRequest"_s));
    EXPECT_EQ(queue.messages, QList<QVariantMap>{interface->returnMessage});
}

TEST_F(ConfirmationTest, EveryOtherTypeTakesTheSalesMessage)
{
    for (const int type : {0, 2, 3, 24, 26, 125, 250, -1, -25, 2147483647}) {
        asked->documentType = type;
        EXPECT_TRUE(commit());
        EXPECT_EQ(journal.taken(), calls(u"getSaleRequest"_s)) << type;
    }
    EXPECT_EQ(queue.messages.count(interface->saleMessage), 10);
    EXPECT_EQ(queue.messages.size(), 10);
}

TEST_F(ConfirmationTest, TheTypeIsReadOnce)
{
    asked->documentType = {25, 1};
    EXPECT_TRUE(commit());
    EXPECT_EQ(journal.taken(), calls(u"getBackBySaleRequest"_s));
    asked->documentType = {1, 25};
    EXPECT_TRUE(commit());
    EXPECT_EQ(journal.taken(), calls(u"getSaleRequest"_s));
}

TEST_F(ConfirmationTest, TheMessageIsQueuedAsItWasBuilt)
{
    interface->saleMessage = {
        {u"payload"_s, u"<RawCheck/>"_s},
        {u"headers"_s, QVariantMap{{u"Accept"_s, u"application/xml"_s}}},
        {u"urls"_s, QVariantMap{{u"1"_s, u"http://s/1"_s}, {u"2"_s, u"http://s/2"_s}}}};
    EXPECT_TRUE(commit());
    EXPECT_EQ(queue.messages, QList<QVariantMap>{interface->saleMessage});
}

TEST_F(ConfirmationTest, TheQueuesAnswerIsIgnored)
{
    queue.result = false;
    EXPECT_TRUE(commit());
    EXPECT_EQ(queue.messages.size(), 1);
}

TEST_F(ConfirmationTest, TwoConfirmationsQueueTwoMessages)
{
    EXPECT_TRUE(commit());
    EXPECT_TRUE(commit());
    EXPECT_EQ(queue.messages, (QList<QVariantMap>{interface->saleMessage, interface->saleMessage}));
    EXPECT_EQ(journal.entries(), calls(u"getSaleRequest"_s) + calls(u"getSaleRequest"_s));
}

TEST_F(ConfirmationTest, ChangesNoState)
{
    fillState();
    const State before(orva);
    EXPECT_TRUE(commit());
    EXPECT_EQ(State(orva), before);
    EXPECT_EQ(orva.getLastErrorString(), oldError);
    EXPECT_TRUE(asked->pluginData.isEmpty());
    EXPECT_TRUE(open->pluginData.isEmpty());
    EXPECT_TRUE(base->pluginData.isEmpty());
}

TEST_F(ConfirmationTest, WhenTheMessageCannotBeBuiltNothingIsQueued)
{
    orva.lastError = oldError;
    interface->onCall = [](const QString&) {
        throw orva::Exception(tr::Tr(u"orvaInvalidCheckType"_s, u"тип"_s), u"x"_s);
    };
    EXPECT_THROW(commit(), orva::Exception);
    EXPECT_TRUE(queue.messages.isEmpty());
    EXPECT_EQ(journal.entries(), calls(u"getSaleRequest"_s).mid(0, 4)) << "nor is it logged";
    EXPECT_EQ(orva.getLastErrorString(), oldError);
}

TEST_F(ConfirmationTest, WhenTheDocumentFailsNothingIsQueued)
{
    for (const auto& failing : {u"getDocumentType()"_s, u"getCardRecord(15)"_s}) {
        asked->onCall = [failing](const QString& call) {
            if (call == failing) {
                throw std::runtime_error("document");
            }
        };
        EXPECT_THROW(commit(), std::runtime_error) << failing.toStdString();
    }
    EXPECT_TRUE(queue.messages.isEmpty());
}

TEST_F(ConfirmationTest, AFailureOfTheQueuePasses)
{
    const tr::Tr full(u"queueError"_s, u"Нет места на диске"_s);
    queue.onCall = [&](const QString&) { throw BasicException(full); };
    try {
        commit();
        FAIL() << "the failure was swallowed";
    } catch (const BasicException& exception) {
        EXPECT_EQ(exception.tr(), full);
    }
    EXPECT_TRUE(queue.messages.isEmpty());
    queue.onCall = nullptr;
    EXPECT_TRUE(commit());
    EXPECT_EQ(queue.messages.size(), 1);
}

TEST_F(ConfirmationTest, TheQueueIsMadeOnlyWhenThereIsAMessage)
{
    const InSingleton<DBQueueBroker> none(nullptr);
    interface->onCall = [](const QString&) { throw std::runtime_error("client"); };
    EXPECT_THROW(commit(), std::runtime_error);
    EXPECT_EQ(Singleton<DBQueueBroker>::instance, nullptr);
}

TEST_F(ConfirmationTest, MakesTheQueueWhereTheHostHasNone)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    QFile file(folder.filePath(u"till.toml"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[books]\nfile = \"till.db\"\n");
    file.close();
    poshost::knownkeys::registerKeys(u"books"_s, {{.table = u"books"_s,
                                                   .key = u"file"_s,
                                                   .kind = poshost::ConfigKey::Kind::Path,
                                                   .use = poshost::ConfigKey::Use::Database}});
    Config config;
    config.load(file.fileName());
    const InSingleton<Config> configInPlace(&config);
    const InSingleton<DBQueueBroker> none(nullptr);

    EXPECT_TRUE(commit());
    ASSERT_NE(Singleton<DBQueueBroker>::instance, nullptr);
    EXPECT_NE(Singleton<DBQueueBroker>::instance, &queue);
    EXPECT_TRUE(queue.messages.isEmpty());
    EXPECT_GT(QFileInfo(folder.filePath(u"till.db"_s)).size(), 0);

    const DBQueueBroker* const made = Singleton<DBQueueBroker>::instance;
    EXPECT_TRUE(commit());
    EXPECT_EQ(Singleton<DBQueueBroker>::instance, made) << "made once";
    poshost::knownkeys::registerKeys(u"books"_s, {});
}

/// Notes that it was cleared.
class ClearedOrva : public OpenOrva
{
public:
    void clearLoyaltyData() override
    {
        Journal::note(u"orva.clearLoyaltyData()"_s);
        OpenOrva::clearLoyaltyData();
    }
};

class RollbackTest : public OrvaTest
{};

TEST_F(RollbackTest, ClearsTheBaseAndDoesNothingElse)
{
    ClearedOrva cleared;
    cleared.interface = interface;
    EXPECT_TRUE(cleared.rollback(base));
    EXPECT_EQ(journal.entries(), QStringList{u"orva.clearLoyaltyData()"_s});
}

TEST_F(RollbackTest, DoesNotUseTheDocument)
{
    ClearedOrva cleared;
    EXPECT_TRUE(cleared.rollback({}));
    EXPECT_EQ(journal.entries(), QStringList{u"orva.clearLoyaltyData()"_s});
}

TEST_F(RollbackTest, ForgetsTheLoyaltyData)
{
    fillState();
    EXPECT_TRUE(orva.rollback(base));
    EXPECT_EQ(State(orva), State(OpenOrva()));
    EXPECT_EQ(orva.document, base);
    EXPECT_EQ(orva.interface, interface);
    EXPECT_EQ(orva.loyaltySystemType, 15);
}

TEST_F(RollbackTest, LeavesTheLastAnswerAndTheDocumentsDataAlone)
{
    QDomDocument answer;
    answer.setContent(u"<RawCheck/>"_s);
    interface->setLastResponse(answer);
    base->pluginData[u"Orva"_s] = {{u"lastResponse"_s, u"x"_s}};
    EXPECT_TRUE(orva.rollback(base));
    EXPECT_EQ(interface->storedResponse(), u"<RawCheck/>\n"_s);
    EXPECT_EQ(base->pluginData.value(u"Orva"_s).size(), 1);
}

} // namespace
