// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "faultyvfs.h"
#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"
#include "host/services/dbqueuebroker.h"
#include "tests/support/fakeserver.h"
#include "tests/support/stoppedclock.h"
#include "tests/support/testfolder.h"
#include "tests/unit/host/queue/queued.h"

#include <csignal>
#include <map>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QVariant single(poshost::Database& database, const QString& sql)
{
    poshost::Statement statement(database, sql);
    return statement.next() ? statement.value(0) : QVariant();
}

/// A server that books each (message, step) once and answers 409 to what it knows.
class BookingServer
{
public:
    explicit BookingServer(FakeServer& transport)
    {
        transport.setScript([this](const FakeServer::Request& request) {
            const QString booking = QString::fromUtf8(request.body) + request.url.path();
            ++arrived[booking];
            return FakeServer::Reply{arrived[booking] == 1 ? 200 : 409};
        });
    }

    std::map<QString, int> arrived;
};

/// One till's day: a sale and its return are closed, each with its message, then delivered. Every
/// part may be begun again after a failure, as a till does that was started anew.
class Day
{
public:
    explicit Day(const QString& databaseFile) : file(databaseFile) {}

    /// Goes on where it was left. A failure is thrown.
    void work() const
    {
        const auto database = QSharedPointer<poshost::Database>::create(file);
        close(database, u"sale"_s);
        close(database, u"return"_s);
        poshost::QueueDelivery(*database, 1).deliverDue();
    }

private:
    static void close(const QSharedPointer<poshost::Database>& database, const QString& check)
    {
        poshost::Transaction transaction(*database);
        if (isClosed(*database, check)) {
            transaction.commit();
            return;
        }
        DBQueueBroker(database).addToQueue(u"orva"_s, queuedMessage(check), {});
        poshost::OutgoingQueue queue(*database);
        const qint64 message = queue.lastAddedId();
        if (check == "return"_L1) {
            queue.addDependency(
                message, single(*database, u"SELECT message_id FROM checks WHERE id = 'sale'"_s)
                             .toLongLong());
        }
        poshost::Statement(*database,
                           u"INSERT INTO checks (id, state, message_id) VALUES (?, 'closed', ?)"_s)
            .bind(check)
            .bind(message)
            .execute();
        transaction.commit();
    }

    static bool isClosed(poshost::Database& database, const QString& check)
    {
        poshost::Statement statement(database, u"SELECT 1 FROM checks WHERE id = ?"_s);
        return statement.bind(check).next();
    }

    QString file;
};

/// There is never a closed check without its message or a message without its closed check.
void expectWhole(const QString& file, const std::string& when)
{
    poshost::Database database(file);
    EXPECT_EQ(single(database, u"PRAGMA integrity_check"_s).toString(), u"ok"_s) << when;
    EXPECT_EQ(single(database, u"SELECT count(*) FROM checks WHERE state = 'closed' "
                               "AND message_id NOT IN (SELECT id FROM queue_messages)"_s)
                  .toInt(),
              0)
        << when;
    EXPECT_EQ(single(database, u"SELECT count(*) FROM queue_messages WHERE id NOT IN "
                               "(SELECT message_id FROM checks)"_s)
                  .toInt(),
              0)
        << when;
    EXPECT_EQ(single(database, u"SELECT count(*) FROM queue_messages WHERE id NOT IN "
                               "(SELECT message_id FROM queue_bodies)"_s)
                  .toInt(),
              0)
        << when;
}

void expectSameEnd(const QString& file, const std::string& when)
{
    poshost::Database database(file);
    poshost::Statement rows(database,
                            u"SELECT c.id, m.state, m.steps_done FROM checks c "
                            "JOIN queue_messages m ON m.id = c.message_id ORDER BY m.id"_s);
    QStringList found;
    while (rows.next()) {
        found.append(rows.value(0).toString() + u' ' + rows.value(1).toString() + u' ' +
                     rows.value(2).toString());
    }
    EXPECT_EQ(found.join(u'\n'), u"sale delivered 2\nreturn delivered 2"_s) << when;
    EXPECT_EQ(single(database, u"SELECT count(*) FROM queue_messages"_s).toInt(), 2) << when;
    EXPECT_EQ(single(database, u"SELECT count(*) FROM queue_accounts"_s).toInt(), 0) << when;
}

TEST(StorageFault, WhicheverAccessFailsTheDayEndsTheSame)
{
    faultyvfs::install();
    int tried = 0;
    int failed = 0;
    for (bool reached = true; reached; ++tried) {
        const TestFolder folder;
        const QString file = folder.file(u"till.db"_s);
        const StoppedClock clock;
        FakeServer transport;
        const BookingServer server(transport);
        const Day day(file);
        const std::string when = "access " + std::to_string(tried + 1) + " failed";

        faultyvfs::failNth(tried + 1);
        try {
            day.work();
        } catch (const BasicException& error) {
            ++failed;
            const QString id = error.tr().id();
            EXPECT_TRUE(id == "databaseError"_L1 || id == "queueError"_L1) << error.what();
        }
        reached = faultyvfs::disarm();

        expectWhole(file, when);
        EXPECT_NO_THROW(day.work()) << when;
        expectWhole(file, when);
        expectSameEnd(file, when);
        EXPECT_EQ(server.arrived.size(), 4u) << when;
        for (const auto& [booking, count] : server.arrived) {
            EXPECT_LE(count, 2) << when << ' ' << booking.toStdString();
        }
        if (::testing::Test::HasFailure()) {
            break;
        }
    }
    RecordProperty("accesses", tried);
    RecordProperty("failures", failed);
    EXPECT_GT(tried, 50) << "the faults no longer reach the database";
    EXPECT_GT(failed, 30) << "the faults no longer reach the till";
}

/// Closes a sale and is killed when its second step has reached the server.
[[noreturn]] void beKilledBetweenTheSteps(const QString& file)
{
    FakeServer transport;
    transport.setScript([](const FakeServer::Request& request) {
        if (request.url.path() == u"/step2"_s) {
            ::kill(::getpid(), SIGKILL);
        }
        return FakeServer::Reply();
    });
    const auto database = QSharedPointer<poshost::Database>::create(file);
    DBQueueBroker(database).addToQueue(u"orva"_s, queuedMessage(u"sale"_s), {});
    poshost::QueueDelivery(*database, 1).deliverDue();
    ::_exit(1);
}

TEST(Killed, BetweenTheStepsTheNextDelivererGoesOnWithTheSecond)
{
    const TestFolder folder;
    const QString file = folder.file(u"till.db"_s);
    const pid_t child = ::fork(); // before this process has opened the file
    if (child == 0) {
        beKilledBetweenTheSteps(file);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child was not killed at the second step";

    FakeServer transport;
    transport.answer({409}); // the server had booked it
    poshost::Database database(file);
    poshost::QueueDelivery(database, 1).deliverDue();
    EXPECT_EQ(transport.log(), QStringList({u"sale -> /step2"_s}));
    const std::optional<poshost::QueueContent> message = poshost::OutgoingQueue(database).show(1);
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->entry.state, poshost::QueueState::Delivered);
    EXPECT_EQ(message->entry.attempts, 3);
}

TEST(StorageFault, AFailedAccessInTheMiddleOfADeliveryIsMadeUpByTheSameDeliverer)
{
    faultyvfs::install();
    int tried = 0;
    for (bool reached = true; reached; ++tried) {
        const TestFolder folder;
        const StoppedClock clock;
        FakeServer transport;
        const BookingServer server(transport);
        const auto database = QSharedPointer<poshost::Database>::create(folder.file(u"till.db"_s));
        DBQueueBroker(database).addToQueue(u"orva"_s, queuedMessage(u"sale"_s), {});
        poshost::QueueDelivery delivery(*database, 1);

        faultyvfs::failNth(tried + 1);
        try {
            delivery.deliverDue();
        } catch (const BasicException& error) {
            EXPECT_EQ(error.tr().id(), u"databaseError"_s);
        }
        reached = faultyvfs::disarm();
        EXPECT_NO_THROW(delivery.deliverDue()) << tried;
        EXPECT_EQ(poshost::OutgoingQueue(*database).counts().delivered, 1) << tried;
        EXPECT_EQ(server.arrived.size(), 2u) << tried;
        if (::testing::Test::HasFailure()) {
            break;
        }
    }
    EXPECT_GT(tried, 5) << "the faults no longer reach the delivery";
}

TEST(StorageFault, WithoutMemoryItSaysSoAndGoesOnLater)
{
    const TestFolder folder;
    poshost::Database database(folder.file(u"till.db"_s));
    const qint64 before = sqlite3_hard_heap_limit64(sqlite3_memory_used() + 100'000);
    QString said;
    try {
        poshost::Statement(database, u"SELECT length(hex(randomblob(1000000)))"_s).next();
    } catch (const BasicException& error) {
        said = error.tr().ru();
    }
    sqlite3_hard_heap_limit64(before);
    EXPECT_TRUE(said.contains(u"не хватает памяти"_s)) << said.toStdString();
    EXPECT_EQ(single(database, u"SELECT count(*) FROM checks"_s).toInt(), 0);
}

} // namespace
