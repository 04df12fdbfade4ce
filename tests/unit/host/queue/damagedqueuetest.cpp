// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Any bit of the rows of a queued message may be another one: the message is delivered, or stays in
// the list with a sentence; the others go on; nothing is asked without end.

#include "deliveryfixture.h"
#include "tests/support/damage.h"

#include <QCryptographicHash>
#include <gmock/gmock.h>
#include <stdexcept>

using ::testing::HasSubstr;
using tests::damage::flipped;

namespace {

/// A column of the rows that belong to a message.
struct Column
{
    const char* table;
    const char* name;
    const char* row; ///< the condition that finds it
};

const QStringList tables{u"queue_dependencies"_s, u"queue_bodies"_s, u"queue_messages"_s,
                         u"queue_accounts"_s, u"queue_holds"_s};

const QList<Column> messageColumns{
    {"queue_messages", "id", "id = 1"},
    {"queue_messages", "queue", "id = 1"},
    {"queue_messages", "account_id", "id = 1"},
    {"queue_messages", "extra", "id = 1"},
    {"queue_messages", "state", "id = 1"},
    {"queue_messages", "steps", "id = 1"},
    {"queue_messages", "steps_done", "id = 1"},
    {"queue_messages", "step_attempts", "id = 1"},
    {"queue_messages", "attempts", "id = 1"},
    {"queue_messages", "server_errors", "id = 1"},
    {"queue_messages", "attempted_at", "id = 1"},
    {"queue_messages", "next_attempt_at", "id = 1"},
    {"queue_messages", "last_status", "id = 1"},
    {"queue_messages", "last_error", "id = 1"},
    {"queue_messages", "last_answer", "id = 1"},
    {"queue_messages", "created_at", "id = 1"},
    {"queue_messages", "delivered_at", "id = 1"},
    {"queue_bodies", "message_id", "message_id = 1"},
    {"queue_bodies", "headers", "message_id = 1"},
    {"queue_bodies", "urls", "message_id = 1"},
    {"queue_bodies", "payload", "message_id = 1"},
    {"queue_bodies", "digest", "message_id = 1"},
    {"queue_dependencies", "message_id", "message_id = 2"},
    {"queue_dependencies", "depends_on", "message_id = 2"},
};
/// These are shared by all messages of the queue.
const QList<Column> sharedColumns{
    {"queue_accounts", "id", "1"},
    {"queue_accounts", "queue", "1"},
    {"queue_accounts", "authorization", "1"},
    {"queue_accounts", "paused_status", "1"},
    {"queue_accounts", "paused_at", "1"},
    {"queue_accounts", "probe_at", "1"},
    {"queue_holds", "queue", "1"},
    {"queue_holds", "reason", "1"},
    {"queue_holds", "failures", "1"},
    {"queue_holds", "since", "1"},
    {"queue_holds", "until", "1"},
};

/// Three messages: 2 waits for 1, 4 for nobody. No two numbers differ in one bit only.
class DamagedQueue : public Delivery
{
protected:
    DamagedQueue()
    {
        tests::damage::allow(*database);
        add(u"a"_s);
        add(u"b"_s);
        poshost::Statement(*database, u"DELETE FROM queue_messages WHERE id = ?"_s)
            .bind(add(u"x"_s))
            .execute();
        poshost::Statement(*database, u"DELETE FROM queue_bodies WHERE message_id = 3"_s).execute();
        add(u"c"_s);
        queue.addDependency(2, 1);
        delivering->execute(u"PRAGMA synchronous = OFF"_s);
        keep();
    }

    /// Keeps the rows as they are now for reset.
    void keep()
    {
        for (const QString& table : tables) {
            database->execute(u"DROP TABLE IF EXISTS temp.kept_%1"_s.arg(table));
            database->execute(u"CREATE TEMP TABLE kept_%1 AS SELECT * FROM %1"_s.arg(table));
        }
        kept = clock.now();
    }
    void reset()
    {
        for (const QString& table : tables) {
            database->execute(u"DELETE FROM %1"_s.arg(table));
            database->execute(u"INSERT INTO %1 SELECT * FROM temp.kept_%1"_s.arg(table));
        }
        clock.advanceTo(kept);
        server.requests.clear();
    }

    /// Every value that a column of the kept rows has when one of its bits is another one.
    QVariantList damagesOf(const Column& column)
    {
        reset();
        poshost::Statement statement(
            *database, u"SELECT %1 FROM %2 WHERE %3"_s.arg(QLatin1StringView(column.name),
                                                           QLatin1StringView(column.table),
                                                           QLatin1StringView(column.row)));
        return statement.next() ? flipped(statement.value(0)) : QVariantList();
    }
    void damage(const Column& column, const QVariant& value)
    {
        reset();
        poshost::Statement statement(
            *database, u"UPDATE %2 SET %1 = ? WHERE %3"_s.arg(QLatin1StringView(column.name),
                                                              QLatin1StringView(column.table),
                                                              QLatin1StringView(column.row)));
        statement.bind(value).execute();
    }

    void deliverAll()
    {
        poshost::QueueDelivery fresh(*delivering, 1);
        fresh.deliverDue();
    }
    /// The server does not answer, for as long as three waits last.
    void expectNoHaste(const std::string& where)
    {
        server.setScript([this](const Request&) {
            if (server.requests.size() > 50) {
                throw std::runtime_error("the server is asked without end");
            }
            return Reply{0};
        });
        poshost::QueueDelivery fresh(*delivering, 1);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NO_THROW(fresh.deliverDue()) << where;
            clock.advance(hour);
        }
        ASSERT_LE(server.requests.size(), 9) << where;
        server.answer({});
    }
    /// Every message is delivered as it was, or is in the list with a sentence.
    void expectNoneLost(const std::string& where)
    {
        const QList<poshost::QueueEntry> entries = queue.list(true);
        ASSERT_EQ(entries.size(), 3) << where;
        int delivered = 0;
        for (const poshost::QueueEntry& entry : entries) {
            delivered += entry.state == done ? 1 : 0;
            EXPECT_TRUE(entry.state == done ||
                        (entry.state == parked && !entry.lastError.isEmpty()) ||
                        entry.waitsFor != 0 || waitsWithinAnHour(entry))
                << where << ", message " << entry.id;
        }
        QStringList sent = server.log();
        EXPECT_EQ(sent.size(), 2 * delivered) << where << ": " << sent.join(u' ').toStdString();
        EXPECT_EQ(sent.removeDuplicates(), 0) << where;
        for (const QString& request : sent) {
            EXPECT_TRUE(expected.contains(request)) << where << ": " << request.toStdString();
        }
    }

    /// A connection as the till has it: with constraints and foreign keys.
    const QSharedPointer<poshost::Database> delivering =
        QSharedPointer<poshost::Database>::create(folder.file(u"till.db"_s), 50);
    bool waitsWithinAnHour(const poshost::QueueEntry& entry) const
    {
        return entry.nextAttemptAt.isValid() && entry.nextAttemptAt <= clock.now().addMSecs(hour);
    }

    QDateTime kept;
    const QStringList expected{u"a -> /step1"_s, u"a -> /step2"_s, u"b -> /step1"_s,
                               u"b -> /step2"_s, u"c -> /step1"_s, u"c -> /step2"_s};
};

std::string placeOf(const Column& column, const QVariant& value)
{
    return std::string(column.table) + '.' + column.name + " = " + value.toString().toStdString();
}

/// As former versions have stored it.
QByteArray sha1Of(poshost::Database& database, qint64 message)
{
    poshost::Statement body(database, u"SELECT payload, headers, urls FROM queue_bodies "
                                      "WHERE message_id = ?"_s);
    body.bind(message).next();
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (int column = 0; column < 3; ++column) {
        const QByteArray part = body.value(column).toByteArray();
        hash.addData(QByteArray::number(part.size()) + ':' + part);
    }
    return hash.result();
}

TEST_F(DamagedQueue, ADigestOfAFormerVersionTellsWhetherItsMessageIsTheSame)
{
    const Column digest{"queue_bodies", "digest", "message_id = 1"};
    const QByteArray former = sha1Of(*database, 1);
    damage(digest, former);
    deliverAll();
    EXPECT_EQ(stateOf(1), done);
    damage(digest, sha1Of(*database, 4));
    deliverAll();
    EXPECT_EQ(stateOf(1), parked);
    damage(digest, former);
    database->execute(u"UPDATE queue_bodies SET payload = x'62' WHERE message_id = 1"_s);
    deliverAll();
    EXPECT_EQ(stateOf(1), parked);
}

TEST_F(DamagedQueue, ABitOfAnyColumnOfAMessageLosesNoneAndHoldsUpNoOther)
{
    int tried = 0;
    for (const Column& column : messageColumns) {
        for (const QVariant& value : damagesOf(column)) {
            const std::string where = placeOf(column, value);
            damage(column, value);
            deliverAll();
            expectNoneLost(where);
            EXPECT_TRUE(server.log().contains(u"c -> /step2"_s)) << where << " holds up others";
            ++tried;
            if (HasFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(tried, 1800);
}

TEST_F(DamagedQueue, ABitOfWhatMessagesShareLosesNone)
{
    for (const Column& column : sharedColumns) {
        for (const QVariant& value : damagesOf(column)) {
            damage(column, value);
            deliverAll();
            expectNoneLost(placeOf(column, value));
            if (HasFailure()) {
                return;
            }
        }
    }
}

/// A queue that waits since the server answered so.
class DamagedWait : public DamagedQueue, public ::testing::WithParamInterface<int>
{};

INSTANTIATE_TEST_SUITE_P(Refusal, DamagedWait, ::testing::Values(0, 401, 404));

TEST_P(DamagedWait, ABitOfItLosesNoneAndAsksNobodyWithoutEnd)
{
    // texts that say the same with and without a wait; and a step may well have been done before
    // the last refusal
    const QStringList unaffected{u"last_error"_s, u"last_answer"_s, u"extra"_s, u"authorization"_s,
                                 u"steps_done"_s};
    server.answer({GetParam()});
    deliverAll();
    clock.advance(2 * hour); // every wait is over
    server.answer({});
    keep();
    int tried = 0;
    for (const Column& column : messageColumns + sharedColumns) {
        if (unaffected.contains(QLatin1StringView(column.name)) ||
            qstrcmp(column.table, "queue_bodies") == 0) {
            continue;
        }
        for (const QVariant& value : damagesOf(column)) {
            const std::string where = placeOf(column, value);
            damage(column, value);
            deliverAll();
            expectNoneLost(where);
            damage(column, value);
            expectNoHaste(where);
            ++tried;
            if (HasFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(tried, 800);
}

TEST_F(DamagedQueue, AWaitLongerThanAnyIsOver)
{
    server.answer({0});
    deliverAll();
    server.answer({});
    keep();
    const QString far = QString::number(clock.now().addDays(4000).toMSecsSinceEpoch());
    for (const QString& sql :
         {u"UPDATE queue_holds SET until = %1"_s,
          u"UPDATE queue_messages SET next_attempt_at = %1"_s,
          u"UPDATE queue_accounts SET paused_status = 401, paused_at = 1, probe_at = %1"_s}) {
        reset();
        clock.advance(hour);
        database->execute(sql.arg(far));
        deliverAll();
        EXPECT_EQ(queue.counts().delivered, 3) << sql.toStdString();
    }
}

TEST_F(DamagedQueue, AMessageWithoutItsContentIsParkedAndShown)
{
    database->execute(u"DELETE FROM queue_bodies WHERE message_id = 1"_s);
    EXPECT_EQ(deliver(), "c1 c2");
    EXPECT_EQ(lastReport.parked, 1);
    const std::optional<poshost::QueueContent> shown = queue.show(1);
    ASSERT_TRUE(shown.has_value());
    EXPECT_EQ(shown->entry.state, parked);
    EXPECT_THAT(shown->entry.lastError.toStdString(), HasSubstr("нет содержимого"));
    EXPECT_EQ(shown->payload, QString());
    EXPECT_TRUE(queue.settle(1));
    EXPECT_EQ(deliver(), "b1 b2") << "what waited for it goes on";
}

TEST_F(DamagedQueue, AMessageWithoutItsAuthorizationIsSentWhenItHasOneAgain)
{
    database->execute(u"UPDATE queue_messages SET account_id = NULL WHERE id = 1"_s);
    poshost::QueueDelivery fresh(*database, 1);
    EXPECT_EQ(fresh.deliverDue().parked, 1);
    EXPECT_EQ(server.log(), QStringList({u"c -> /step1"_s, u"c -> /step2"_s}));
    EXPECT_THAT(entry(1).lastError.toStdString(), HasSubstr("queue reauthorize"));
    EXPECT_EQ(queue.reauthorize(u"orva"_s, u"Basic new"_s), 2);
    EXPECT_TRUE(queue.retry(1));
    server.requests.clear();
    EXPECT_EQ(deliver(), "a1 a2 b1 b2");
    EXPECT_EQ(server.requests.first().headers.value(u"Authorization"_s), u"Basic new"_s);
}

TEST_F(DamagedQueue, AMessageOfAnOlderVersionHasNoDigestAndIsSent)
{
    database->execute(u"UPDATE queue_bodies SET digest = NULL"_s);
    EXPECT_EQ(deliver(), "a1 a2 b1 b2 c1 c2");
}

TEST_F(DamagedQueue, OneThatWasWholeSpeaksForNoOtherHeadersOrAddresses)
{
    for (const QString& column : {u"headers"_s, u"urls"_s}) {
        reset();
        database->execute(u"UPDATE queue_bodies SET digest = NULL"_s);
        database->execute(u"UPDATE queue_bodies SET %1 = replace(%1, '}', ',\"9\":9}') "
                          "WHERE message_id = 4"_s.arg(column));
        EXPECT_EQ(deliver(), "a1 a2 b1 b2") << column.toStdString();
        EXPECT_EQ(stateOf(4), parked) << column.toStdString();
    }
}

TEST_F(DamagedQueue, WhatIsNotDeliveredIsNotRemoved)
{
    database->execute(u"UPDATE queue_messages SET delivered_at = 1 WHERE id = 1"_s);
    queue.removeDelivered(0);
    EXPECT_EQ(queue.list().size(), 3);
}

} // namespace
