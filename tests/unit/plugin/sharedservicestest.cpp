// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/core/basicexception.h"
#include "host/loyalty/basicloyaltysystem.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/printers.h"
#include "tests/unit/plugin/hostdoubles.h"

#include <QPluginLoader>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using ::testing::_;
using ::testing::NiceMock;
using ::testing::Return;
using namespace tests;

const QByteArray answer =
    "<RawCheck><client><RawCheckClient><name>Анна</name><surname>Иванова</surname><account>"
    "<RawCheckAccount><balance>1000.50</balance></RawCheckAccount></account></RawCheckClient>"
    "</client><awards><RawCheckAwards><allowBonus>150.5</allowBonus><awardBonus>8.25</awardBonus>"
    "</RawCheckAwards></awards><items><RawItem><id>1</id><awards><RawItemAwards><awardBonus>8.25"
    "</awardBonus></RawItemAwards></awards></RawItem></items></RawCheck>";

/// The loaded plug-in on the services of this program. Nothing is linked in but the host.
class SharedServicesTest : public ::testing::Test
{
protected:
    SharedServicesTest()
        : loader(QStringLiteral(ORVA_PLUGIN_FILE)), object(loader.instance()),
          system(qobject_cast<BasicLoyaltySystem*>(object.get()))
    {
        config.values = {{u"Orva:serverUrl"_s, u"http://server.example/"_s},
                         {u"Orva:merchantId"_s, u"1042"_s},
                         {u"Orva:pos"_s, u"3"_s},
                         {u"Orva:timeout"_s, 25}};
        session.setDocument(document);
        session.setSessionContext(QSharedPointer<SessionContext>::create(u"смена 4"_s));
        document->cardRecord = record;
        ON_CALL(server, getHttpStatusCode).WillByDefault(Return(200));
        ON_CALL(server, getError).WillByDefault(Return(0));
        ON_CALL(server, getResponse).WillByDefault(Return(answer));
    }
    ~SharedServicesTest() override { delete object.get(); }

    void SetUp() override
    {
        ASSERT_NE(system, nullptr) << loader.errorString().toStdString();
        ASSERT_TRUE(system->init());
        system->setDocument(document);
    }

    QPluginLoader loader;
    QPointer<QObject> object;
    BasicLoyaltySystem* system;

    const QSharedPointer<DocumentCardRecord> record = QSharedPointer<DocumentCardRecord>::create(
        QSharedPointer<Card>::create(u"7700001"_s), 15, 9);
    const QSharedPointer<RecordingDocument> document =
        QSharedPointer<RecordingDocument>::create(u"check"_s);
    const QDateTime moment{QDate(2024, 3, 5), QTime(7, 8, 9)};

    RecordingConfig config;
    RecordingSession session;
    RecordingQueue queue;
    NiceMock<MockRestClient> server;
    const InSingleton<Config> configInPlace{&config};
    const InSingleton<Session> sessionInPlace{&session};
    const InSingleton<DBQueueBroker> queueInPlace{&queue};
    const Registered<RestClient> serverInPlace{server};
    const StoppedClock clock{moment};
};

TEST_F(SharedServicesTest, ItReadsThisProgramsConfigurationAndUsesItsHttpClient)
{
    EXPECT_CALL(server, setTimeout(25));
    EXPECT_CALL(server, post(QUrl(u"http://server.example/api/1.x/precheck"_s), _, _));
    auto card = record;
    EXPECT_TRUE(system->identifyByCard(card, ECardNumberType::Barcode));
    ASSERT_FALSE(record->getCard()->getClient().isNull());
    EXPECT_EQ(record->getCard()->getClient()->getName(), u"Анна Иванова"_s);
    EXPECT_EQ(record->getBonusBalance(), QVariant(1000.5));
}

TEST_F(SharedServicesTest, ItAsksThisProgramsClock)
{
    QByteArray body;
    ON_CALL(server, post)
        .WillByDefault([&body](const QUrl&, const QByteArray& sent,
                               const QHash<QString, QString>&) { body = sent; });
    EXPECT_TRUE(system->request(document));
    EXPECT_TRUE(body.contains("<date>2024-03-05 07:08:09</date>")) << body.toStdString();
    ASSERT_EQ(system->getBonusRecords().size(), 1);
    EXPECT_EQ(system->getBonusRecords().at(0).dateTime, moment);
}

TEST_F(SharedServicesTest, ItWorksOnThisProgramsSession)
{
    EXPECT_TRUE(system->request(document));
    ASSERT_EQ(system->getBonusRecords().size(), 1);
    EXPECT_EQ(system->getBonusRecords().at(0).sessionContext, u"смена 4"_s);
    EXPECT_EQ(document->pluginData.value(u"Orva"_s).keys(),
              (QStringList{u"bonusRecords"_s, u"lastResponse"_s}));
    EXPECT_EQ(system->getPointsForEarn(), 8.25);
}

TEST_F(SharedServicesTest, ItFillsThisProgramsQueue)
{
    EXPECT_TRUE(system->request(document));
    EXPECT_TRUE(system->commit(document));
    ASSERT_EQ(queue.messages.size(), 1);
    EXPECT_EQ(queue.messages.at(0).value(u"urls"_s).toMap(),
              (QVariantMap{{u"1"_s, u"http://server.example/api/1.x/paymenttry"_s},
                           {u"2"_s, u"http://server.example/api/1.x/checkconfirm"_s}}));
}

TEST_F(SharedServicesTest, ARefusalReachesTheHostAsLastError)
{
    ON_CALL(server, getHttpStatusCode).WillByDefault(Return(401));
    EXPECT_FALSE(system->request(document));
    EXPECT_EQ(system->getLastErrorString(),
              tr::Tr(u"orvaAuthorisationError"_s, u"Ошибка авторизации на сервере"_s));
}

TEST_F(SharedServicesTest, AnExceptionOfTheHostPassesThroughIt)
{
    const tr::Tr full(u"queueError"_s, u"Нет места на диске"_s);
    queue.onCall = [&](const QString&) { throw BasicException(full); };
    try {
        system->commit(document);
        FAIL() << "the failure was swallowed";
    } catch (const BasicException& exception) {
        EXPECT_EQ(exception.tr(), full);
    }
}

TEST_F(SharedServicesTest, ItsOwnExceptionIsCaughtByTheHostsType)
{
    // a return while the confirmation is chosen, something else when its request is built
    document->documentType = {25, 7};
    try {
        system->commit(document);
        FAIL() << "nothing was thrown";
    } catch (const BasicException& exception) {
        EXPECT_EQ(exception.tr().id(), u"orvaInvalidCheckType"_s);
    }
    EXPECT_TRUE(queue.messages.isEmpty());
}

} // namespace
