// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The cash desk with the built plug-in, loaded as the program loads it, and a server behind the
// host's HTTP client.

#include "host/core/basicexception.h"
#include "host/loyalty/basicloyaltysystem.h"
#include "host/services/config.h"
#include "tests/support/failingbroker.h"
#include "tests/support/grantingserver.h"
#include "tests/unit/till/tilltest.h"
#include "till/desk/credentials.h"
#include "till/desk/pluginhost.h"

#include <QDomDocument>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;
using tests::refusalOf;
using till::Check;
using till::PointsChoice;

namespace {

/// A configuration with the plug-in's keys.
class PluginConfig : public Config
{
public:
    QString getString(const QString& key, const QString& defaultValue) const override
    {
        const QHash<QString, QString> texts{{u"Orva:serverUrl"_s, u"http://127.0.0.1:1/"_s},
                                            {u"Orva:merchantId"_s, u"1042"_s},
                                            {u"Orva:pos"_s, u"3"_s},
                                            {u"Orva:user"_s, u"till"_s},
                                            {u"Orva:password"_s, u"secret"_s},
                                            {u"Orva:apikey"_s, u"demo"_s}};
        return texts.value(key, defaultValue);
    }
    int getInt(const QString& key, int defaultValue) const override
    {
        return key == u"Orva:timeout"_s ? 7 : defaultValue;
    }
};

class RealPluginTest : public tests::TillTest
{
protected:
    RealPluginTest() : configInPlace(&config)
    {
        QLoggingCategory::setFilterRules(u"orva=false"_s);
        load();
    }
    ~RealPluginTest() override
    {
        realDesk.reset();
        plugin.reset();
        QLoggingCategory::setFilterRules(QString());
    }

    /// The plug-in and the desk anew, as in another process.
    void load()
    {
        realDesk.reset();
        plugin.reset();
        plugin = std::make_unique<till::PluginHost>(QString::fromUtf8(ORVA_PLUGIN_FILE));
        realDesk = std::make_unique<till::CashDesk>(plugin->loyaltySystem(), store, session);
    }
    void openReal(const QString& card = u"2200000000017"_s)
    {
        realDesk->openSale(twoLines());
        ASSERT_TRUE(realDesk->presentCard(card));
        ASSERT_TRUE(realDesk->request());
    }
    /// The text of the first element of that name in a message.
    static QString textIn(const QString& payload, const QString& name)
    {
        QDomDocument document;
        document.setContent(payload);
        return document.elementsByTagName(name).at(0).toElement().text();
    }
    /// A payload without the identifier that every check has of its own.
    static QString withoutId(QString payload, const Check& check)
    {
        return payload.replace(check.id(), u"ID"_s);
    }

    PluginConfig config;
    tests::InSingleton<Config> configInPlace;
    tests::GrantingServer server;
    std::unique_ptr<till::PluginHost> plugin;
    std::unique_ptr<till::CashDesk> realDesk;
};

} // namespace

TEST_F(RealPluginTest, aSaleGoesFromTheCardToTheQueue)
{
    openReal();
    EXPECT_EQ(realDesk->current().cardRecord()->getCard()->getClient()->getName(),
              u"Анна Соколова"_s);
    EXPECT_EQ(realDesk->availablePoints(), 80'00);
    EXPECT_EQ(realDesk->choosePoints(PointsChoice::sum(50'00)), 50'00);
    const Check closed = realDesk->close();
    EXPECT_TRUE(closed.confirmed);
    EXPECT_EQ(closed.discountKopecks(), 40'00);
    EXPECT_EQ(closed.moneyKopecks(), 140'00);
    EXPECT_EQ(closed.earnedKopecks(), 13'26); // twice 9 * 140 / 190 = 6.6316, each line rounded
    EXPECT_EQ(server.bodies().size(), 2);
    EXPECT_EQ(server.bodies().at(0), server.bodies().at(1));
    EXPECT_EQ(server.requests.last().timeoutSeconds, 7);
    ASSERT_EQ(payloads().size(), 1);
    const QString payload = payloads().first();
    EXPECT_EQ(textIn(payload, u"id"_s), closed.id());
    EXPECT_EQ(textIn(payload, u"usedDiscount"_s), u"20.00"_s);
    EXPECT_EQ(textIn(payload, u"usedBonusInCurrency"_s), u"40.00"_s);
    EXPECT_EQ(textIn(payload, u"amount"_s), u"140.00"_s);
}

TEST_F(RealPluginTest, itWorksOnTheTillsOwnSession)
{
    realDesk->openSale(twoLines());
    ASSERT_TRUE(realDesk->presentCard(u"2200"_s));
    // identifyByCard has no document of its own: what it sent can only come from the session
    ASSERT_EQ(server.bodies().size(), 1);
    EXPECT_EQ(textIn(QString::fromUtf8(server.bodies().first()), u"id"_s),
              realDesk->current().id());
    ASSERT_TRUE(realDesk->request());
    EXPECT_FALSE(realDesk->current()
                     .document->getPluginValue(u"Orva"_s, u"lastResponse"_s, {})
                     .toString()
                     .isEmpty());
}

TEST_F(RealPluginTest, theConfirmationAfterARestoreIsTheSameToTheByte)
{
    const tests::StoppedClock clock(QDateTime(QDate(2026, 3, 5), QTime(14, 20, 31)));
    const auto sold = [this](bool interrupted) {
        till::CheckFile file = twoLines();
        file.number = 117;
        realDesk->openSale(file);
        EXPECT_TRUE(realDesk->presentCard(u"2200000000017"_s));
        EXPECT_TRUE(realDesk->request());
        realDesk->choosePoints(PointsChoice::sum(33'33));
        realDesk->tender(500'00);
        if (interrupted) {
            realDesk->suspend();
            load();
            realDesk->restore(u"last"_s);
        }
        const Check closed = realDesk->close();
        return withoutId(payloads().last(), closed);
    };
    const QString straight = sold(false);
    EXPECT_EQ(sold(true), straight);
    EXPECT_EQ(server.bodies().size(), 4) << "a restore asks nobody";
    EXPECT_EQ(textIn(straight, u"amount"_s), u"156.67"_s);
}

TEST_F(RealPluginTest, aFailingQueueIsTriedAgainWithTheSameBytes)
{
    tests::FailingBroker failing(database);
    const tests::InSingleton<DBQueueBroker> inPlace(&failing);
    openReal();
    realDesk->choosePoints(PointsChoice::all());
    refusalOf([&] { realDesk->close(); });
    EXPECT_EQ(messages(), 0);
    EXPECT_TRUE(realDesk->close().confirmed);
    ASSERT_EQ(failing.tried.size(), 2);
    EXPECT_EQ(failing.tried.at(1), failing.tried.at(0));
    EXPECT_TRUE(failing.tried.at(0)
                    .value(u"payload"_s)
                    .toString()
                    .contains(u"<usedBonusInCurrency>40.00</usedBonusInCurrency>"_s));
    EXPECT_EQ(messages(), 1);
}

TEST_F(RealPluginTest, aSecondCustomersSaleWithTheServerAwayQueuesNothingOfTheFirst)
{
    openReal();
    const Check first = realDesk->close();
    realDesk->openSale(twoLines());
    ASSERT_TRUE(realDesk->presentCard(u"2200000000024"_s));
    server.reachable = false;
    EXPECT_FALSE(realDesk->request());
    const Check second = realDesk->close();
    EXPECT_FALSE(second.confirmed);
    EXPECT_EQ(second.refusal, u"Нет связи с сервером"_s);
    EXPECT_EQ(second.moneyKopecks(), 230'00);
    ASSERT_EQ(payloads().size(), 1);
    EXPECT_EQ(textIn(payloads().first(), u"id"_s), first.id());
}

TEST_F(RealPluginTest, wrongCredentialsLeaveASaleWithoutLoyalty)
{
    server.status = 401;
    realDesk->openSale(twoLines());
    EXPECT_FALSE(realDesk->presentCard(u"2200"_s));
    EXPECT_EQ(realDesk->current().refusal, u"Ошибка авторизации на сервере"_s);
    EXPECT_FALSE(realDesk->close().confirmed);
    EXPECT_EQ(server.bodies().size(), 1);
}

TEST_F(RealPluginTest, aReturnIsSentWithTheReturnedPartOfItsSale)
{
    openReal();
    realDesk->choosePoints(PointsChoice::sum(50'00));
    const Check sale = realDesk->close();
    realDesk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const Check closed = realDesk->close();
    EXPECT_TRUE(closed.confirmed);
    ASSERT_EQ(payloads().size(), 2);
    const QString payload = payloads().last();
    EXPECT_EQ(textIn(payload, u"chType"_s), u"2"_s);
    EXPECT_EQ(textIn(payload, u"originalId"_s), sale.id());
    EXPECT_EQ(textIn(payload, u"total"_s), u"100.00"_s);
    EXPECT_EQ(textIn(payload, u"returnedQuantity"_s), u"1.000"_s);
    EXPECT_EQ(textIn(payload, u"usedBonusInCurrency"_s), u"20.00"_s);
    EXPECT_EQ(textIn(payload, u"cardNumber"_s), u"2200000000017"_s);
    EXPECT_EQ(server.bodies().size(), 2) << "the server has not got the sale, so nobody is asked";
}

TEST_F(RealPluginTest, itsCredentialsAreReadWithoutSendingOrStoringAnything)
{
    const till::Credentials credentials = till::Credentials::of(plugin->loyaltySystem());
    EXPECT_EQ(credentials.queue, u"orva"_s);
    // till:<SHA-1 of "secret">:demo
    EXPECT_EQ(credentials.authorization,
              u"Basic "_s +
                  QString::fromLatin1(
                      QByteArray("till:e5e9fa1ba31ecd1ae84f75caaa474f3a663f05f4:demo").toBase64()));
    EXPECT_EQ(messages(), 0);
    EXPECT_TRUE(server.bodies().isEmpty());
    EXPECT_EQ(Singleton<DBQueueBroker>::instance, &broker);
}

TEST_F(RealPluginTest, theQueueDoesNotShowTheAuthorization)
{
    openReal();
    realDesk->close();
    const auto content = poshost::OutgoingQueue(*database).show(1);
    ASSERT_TRUE(content.has_value());
    EXPECT_EQ(content->headers.value(u"Authorization"_s), u"***"_s);
}
