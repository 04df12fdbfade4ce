// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/dbqueuebroker.h"
#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"
#include "queued.h"
#include "tests/support/configured.h"
#include "tests/support/fakeserver.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using ::testing::AllOf;
using ::testing::HasSubstr;

namespace {

class Broker : public ::testing::Test
{
protected:
    static std::string queueErrorOf(const std::function<void()>& work)
    {
        try {
            work();
        } catch (const BasicException& error) {
            EXPECT_EQ(error.tr().id(), u"queueError"_s);
            return error.tr().ru().toStdString();
        }
        ADD_FAILURE() << "no error";
        return {};
    }

    /// How many rows another connection sees, over all tables of the queue.
    int durableRows() const
    {
        poshost::Database other(file);
        poshost::Statement statement(other, u"SELECT (SELECT count(*) FROM queue_messages) + "
                                            "(SELECT count(*) FROM queue_bodies) + "
                                            "(SELECT count(*) FROM queue_accounts)"_s);
        return statement.next() ? statement.value(0).toInt() : -1;
    }

    TestFolder folder;
    const QString file = folder.file(u"till.db"_s);
    const QSharedPointer<poshost::Database> database =
        QSharedPointer<poshost::Database>::create(file, 50);
    DBQueueBroker broker{database};
};

TEST_F(Broker, AMessageIsDurableOnReturn)
{
    EXPECT_TRUE(broker.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s), u"extra text"_s));
    EXPECT_EQ(durableRows(), 3);
    poshost::Database other(file);
    const QList<poshost::QueueEntry> entries = poshost::OutgoingQueue(other).list();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries.first().queue, u"orva"_s);
    EXPECT_EQ(entries.first().extra, u"extra text"_s);
    EXPECT_EQ(entries.first().steps, 2);
    EXPECT_EQ(entries.first().state, poshost::QueueState::Waiting);
}

TEST_F(Broker, AMessageIsSentByteForByteAsItWasGiven)
{
    const QString payload = u"<?xml version='1.0'?>\n<RawCheck>\r\n\t<a b=\"&lt;\">Ёж \U0001F600"
                            "\u0000нуль</a>\n</RawCheck>\n"_s +
                            QString(200'000, u'я');
    QVariantMap message = queuedMessage(payload);
    message[u"headers"_s] = QVariantMap{{u"Content-Type"_s, u"application/xml"_s},
                                        {u"X-Odd"_s, u"\"quoted\" \\ Ё"_s},
                                        {u"Authorization"_s, u"Basic dTpwOms="_s}};
    const QString address = u"http://u:p@server.test/a%20b/api/1.x/paymenttry?q=1&r=%D1%91"_s;
    message[u"urls"_s] = QVariantMap{{u"1"_s, address}};
    broker.addToQueue(u"orva"_s, message, {});

    FakeServer server;
    poshost::QueueDelivery(*database).deliverDue();
    ASSERT_EQ(server.requests.size(), 1);
    const FakeServer::Request& request = server.requests.first();
    EXPECT_EQ(request.body, payload.toUtf8());
    EXPECT_EQ(request.url, QUrl(address));
    const QHash<QString, QString> headers{{u"Content-Type"_s, u"application/xml"_s},
                                          {u"X-Odd"_s, u"\"quoted\" \\ Ё"_s},
                                          {u"Authorization"_s, u"Basic dTpwOms="_s}};
    EXPECT_EQ(request.headers, headers);
}

TEST_F(Broker, AMessageWithoutAuthorizationIsSentWithoutIt)
{
    broker.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s, QString()), {});
    FakeServer server;
    poshost::QueueDelivery(*database).deliverDue();
    ASSERT_FALSE(server.requests.isEmpty());
    EXPECT_FALSE(server.requests.first().headers.contains(u"Authorization"_s));
}

TEST_F(Broker, JoinsTheOpenTransaction)
{
    {
        poshost::Transaction transaction(*database);
        database->execute(u"INSERT INTO checks (id, state) VALUES ('one', 'closed')"_s);
        broker.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s), {});
        EXPECT_EQ(durableRows(), 0);
        transaction.commit();
    }
    EXPECT_EQ(durableRows(), 3);
    {
        const poshost::Transaction transaction(*database);
        broker.addToQueue(u"orva"_s, queuedMessage(u"<b/>"_s), {});
    }
    EXPECT_EQ(durableRows(), 3) << "rolled back with the outer transaction";
}

TEST_F(Broker, AFailureInsideATransactionTakesAllOfItBack)
{
    {
        poshost::Transaction transaction(*database);
        database->execute(u"INSERT INTO checks (id, state) VALUES ('one', 'closed')"_s);
        database->execute(u"PRAGMA query_only = ON"_s);
        queueErrorOf([&] { broker.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s), {}); });
        EXPECT_THROW(transaction.commit(), BasicException);
    }
    database->execute(u"PRAGMA query_only = OFF"_s);
    poshost::Statement checks(*database, u"SELECT count(*) FROM checks"_s);
    ASSERT_TRUE(checks.next());
    EXPECT_EQ(checks.value(0).toInt(), 0) << "a closed check without its message";
}

TEST_F(Broker, AFullDiskIsReportedAndNothingIsLeft)
{
    broker.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s), {});
    {
        poshost::Statement pages(*database, u"PRAGMA page_count"_s);
        ASSERT_TRUE(pages.next());
        database->execute(u"PRAGMA max_page_count = %1"_s.arg(pages.value(0).toInt() + 1));
    }
    const QVariantMap large = queuedMessage(QString(100'000, u'x'));
    EXPECT_THAT(queueErrorOf([&] { broker.addToQueue(u"orva"_s, large, {}); }),
                AllOf(HasSubstr("Очередь отправки: сообщение не сохранено. База данных "),
                      HasSubstr("освободите место на диске")));
    EXPECT_EQ(durableRows(), 3);
    database->execute(u"PRAGMA max_page_count = 100000"_s);
    EXPECT_TRUE(broker.addToQueue(u"orva"_s, large, {})) << "the same call succeeds later";
    EXPECT_EQ(durableRows(), 5);
}

TEST_F(Broker, ALockedFileIsReportedAndNothingIsLeft)
{
    poshost::Database other(file);
    {
        const poshost::Transaction transaction(other);
        EXPECT_THAT(
            queueErrorOf([&] { broker.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s), {}); }),
            HasSubstr("файл занят другой программой"));
    }
    EXPECT_EQ(durableRows(), 0);
    EXPECT_TRUE(broker.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s), {}));
}

TEST_F(Broker, AReadOnlyFileIsReportedAndNothingIsLeft)
{
    database->execute(u"PRAGMA query_only = ON"_s);
    EXPECT_THAT(queueErrorOf([&] { broker.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s), {}); }),
                HasSubstr("только для чтения"));
    EXPECT_EQ(durableRows(), 0);
}

TEST_F(Broker, ADefaultConstructedOneOpensTheConfiguredFile)
{
    const QString configuredFile = folder.file(u"configured.db"_s);
    const Configured configured("[till]\ndatabase = \"" + configuredFile.toUtf8() + "\"\n");
    DBQueueBroker byDefault;
    EXPECT_FALSE(QFile::exists(configuredFile)) << "opened before it is needed";
    EXPECT_TRUE(byDefault.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s), {}));
    poshost::Database opened(configuredFile);
    EXPECT_EQ(poshost::OutgoingQueue(opened).counts().waiting, 1);
}

TEST_F(Broker, WithoutAConfiguredFileTheErrorSaysWhatToWrite)
{
    DBQueueBroker byDefault;
    EXPECT_EQ(queueErrorOf([&] { byDefault.addToQueue(u"orva"_s, queuedMessage({}), {}); }),
              "Очередь отправки: в настройках нет файла базы данных, добавьте database в [till]");
    const Configured configured("[till]\ndatabase = \"" + folder.file(u"absent/x.db"_s).toUtf8() +
                                "\"\n");
    EXPECT_THAT(queueErrorOf([&] { byDefault.addToQueue(u"orva"_s, queuedMessage({}), {}); }),
                HasSubstr("absent/x.db"));
}

TEST_F(Broker, EqualCallsQueueEqualMessages)
{
    broker.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s), {});
    broker.addToQueue(u"orva"_s, queuedMessage(u"<a/>"_s), {});
    EXPECT_EQ(poshost::OutgoingQueue(*database).list().size(), 2);
    EXPECT_EQ(durableRows(), 5) << "the authorization is kept once";
}

} // namespace
