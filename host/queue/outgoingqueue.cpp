// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/outgoingqueue.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/http/serveraddress.h"
#include "host/queue/deliveredaddresses_p.h"
#include "host/queue/queuemessage.h"
#include "host/services/currenttime.h"

#include <QCryptographicHash>
#include <QStringList>
#include <QtEndian>
#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

const QString hidden = u"***"_s;

/// What stands in the way of a message is spread over three tables; here it comes together. The
/// columns are read by readEntry.
const QString selectEntries =
    u"SELECT m.id, m.queue, m.extra, m.steps, m.steps_done, m.attempts, m.last_status, "
    "m.last_error, m.created_at, m.delivered_at, "
    "CASE WHEN m.state <> 'waiting' THEN m.state "
    "WHEN a.paused_status IS NOT NULL OR h.reason = 'address' THEN 'paused' "
    "ELSE 'waiting' END, "
    "max(coalesce(m.next_attempt_at, 0), coalesce(a.probe_at, 0), coalesce(h.until, 0)), "
    "(SELECT min(d.depends_on) FROM queue_dependencies d "
    "JOIN queue_messages o ON o.id = d.depends_on "
    "WHERE d.message_id = m.id AND o.id < m.id AND o.state <> 'delivered'), "
    "coalesce(m.handover, 0) <> 0 "
    "FROM queue_messages m LEFT JOIN queue_accounts a ON a.id = m.account_id "
    "LEFT JOIN queue_holds h ON h.queue = m.queue AND m.state <> 'delivered' "_s;

QueueState stateOf(const QString& name)
{
    if (name == "paused"_L1) {
        return QueueState::Paused;
    }
    if (name == "delivered"_L1) {
        return QueueState::Delivered;
    }
    // a damaged state keeps a message out of the delivery until somebody looks at it
    return name == "waiting"_L1 ? QueueState::Waiting : QueueState::Parked;
}

QDateTime timeOf(const QVariant& milliseconds)
{
    const qint64 value = milliseconds.toLongLong();
    return value == 0 ? QDateTime() : QDateTime::fromMSecsSinceEpoch(value);
}

QueueEntry readEntry(const Statement& row)
{
    QueueEntry entry;
    entry.id = row.value(0).toLongLong();
    entry.queue = row.value(1).toString();
    entry.extra = row.value(2).toString();
    entry.steps = row.value(3).toInt();
    entry.stepsDone = row.value(4).toInt();
    entry.attempts = row.value(5).toInt();
    entry.lastStatus = row.value(6).toInt();
    entry.obstacle = Message::fromStored(row.value(7).toString());
    entry.lastError = entry.obstacle.ru();
    entry.createdAt = timeOf(row.value(8));
    entry.deliveredAt = timeOf(row.value(9));
    entry.state = stateOf(row.value(10).toString());
    if (entry.state == QueueState::Waiting || entry.state == QueueState::Paused) {
        entry.nextAttemptAt = timeOf(row.value(11));
        entry.waitsFor = row.value(12).toLongLong();
    }
    entry.isHandedOver = row.value(13).toBool();
    if (entry.isHandedOver && entry.state == QueueState::Waiting) {
        entry.obstacle = Message::of("store.begun", entry.obstacle);
        entry.lastError = entry.obstacle.ru();
    }
    return entry;
}

bool changesOne(Statement& statement, qint64 messageId)
{
    statement.bind(messageId).execute();
    return statement.affectedRows() == 1;
}

} // namespace

OutgoingQueue::OutgoingQueue(Database& owner) : database(owner) {}

qint64 OutgoingQueue::lastAddedId()
{
    Statement statement(database,
                        u"SELECT seq FROM sqlite_sequence WHERE name = 'queue_messages'"_s);
    return statement.next() ? statement.value(0).toLongLong() : 0;
}

void OutgoingQueue::addDependency(qint64 messageId, qint64 dependsOn)
{
    Statement statement(database,
                        u"INSERT OR IGNORE INTO queue_dependencies (message_id, depends_on) "
                        "SELECT ?, id FROM queue_messages WHERE id = ?"_s);
    statement.bind(messageId).bind(dependsOn).execute();
}

void OutgoingQueue::putIntoLane(qint64 messageId, const QString& name)
{
    const QByteArray digest = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha256);
    Statement statement(database, u"UPDATE queue_messages SET lane = ? "
                                  "WHERE id = ? AND state <> 'delivered'"_s);
    statement.bind(qFromBigEndian<qint64>(digest.constData())).bind(messageId).execute();
}

QList<QueueEntry> OutgoingQueue::list(bool withDelivered)
{
    Statement statement(database, selectEntries + (withDelivered ? u"ORDER BY m.id"_s
                                                                 : u"WHERE m.state <> 'delivered' "
                                                                   "ORDER BY m.id"_s));
    QList<QueueEntry> entries;
    while (statement.next()) {
        entries.append(readEntry(statement));
    }
    return entries;
}

std::optional<QueueContent> OutgoingQueue::show(qint64 messageId)
{
    QueueContent content;
    Statement entry(database, selectEntries + u"WHERE m.id = ?"_s);
    if (!entry.bind(messageId).next()) {
        return std::nullopt;
    }
    content.entry = readEntry(entry);
    Statement body(database, u"SELECT b.payload, b.headers, b.urls, coalesce(m.last_answer, ''), "
                             "coalesce(a.authorization, '') FROM queue_messages m "
                             "LEFT JOIN queue_bodies b ON b.message_id = m.id "
                             "LEFT JOIN queue_accounts a ON a.id = m.account_id WHERE m.id = ?"_s);
    body.bind(messageId).next();
    content.payload = QString::fromUtf8(body.value(0).toByteArray());
    const QHash<QString, QString> headers = QueueMessage::headersOf(
        body.value(1).toByteArray(), body.value(4).toString().isEmpty() ? QString() : hidden);
    for (auto it = headers.cbegin(); it != headers.cend(); ++it) {
        content.headers.insert(it.key(), *it);
    }
    for (const QString& address : QueueMessage::addressesOf(body.value(2).toByteArray())) {
        content.addresses.append(serveraddress::shown(address));
    }
    content.lastAnswer = body.value(3).toString();
    return content;
}

QueueCounts OutgoingQueue::counts()
{
    QueueCounts counts;
    Statement statement(database,
                        u"SELECT count(*) FILTER (WHERE m.state NOT IN ('waiting', 'delivered')), "
                        "count(*) FILTER (WHERE m.state = 'delivered'), "
                        "count(*) FILTER (WHERE m.state = 'waiting'), "
                        "count(*) FILTER (WHERE m.state = 'waiting' AND "
                        "(a.paused_status IS NOT NULL OR coalesce(h.reason, '') = 'address')) "
                        "FROM queue_messages m LEFT JOIN queue_accounts a ON a.id = m.account_id "
                        "LEFT JOIN queue_holds h ON h.queue = m.queue"_s);
    if (statement.next()) {
        counts.parked = statement.value(0).toInt();
        counts.delivered = statement.value(1).toInt();
        counts.paused = statement.value(3).toInt();
        counts.waiting = statement.value(2).toInt() - counts.paused;
    }
    return counts;
}

bool OutgoingQueue::retry(qint64 messageId)
{
    Transaction transaction(database);
    Statement due(database, u"UPDATE queue_messages SET state = 'waiting', next_attempt_at = NULL, "
                            "handed_again_at = NULL, server_errors = 0 "
                            "WHERE id = ? AND account_id IS NOT NULL"_s);
    if (!changesOne(due, messageId)) {
        transaction.commit();
        return false;
    }
    Statement hold(database, u"DELETE FROM queue_holds WHERE queue = "
                             "(SELECT queue FROM queue_messages WHERE id = ?)"_s);
    hold.bind(messageId).execute();
    Statement pause(database, u"UPDATE queue_accounts SET paused_status = NULL, paused_at = NULL, "
                              "probe_at = NULL WHERE (queue, authorization) = "
                              "(SELECT a.queue, a.authorization FROM queue_accounts a "
                              "JOIN queue_messages m ON m.account_id = a.id WHERE m.id = ?)"_s);
    pause.bind(messageId).execute();
    transaction.commit();
    return true;
}

bool OutgoingQueue::park(qint64 messageId)
{
    Statement parked(database, u"UPDATE queue_messages SET state = 'parked', last_error = ? "
                               "WHERE id = ? AND account_id IS NOT NULL"_s);
    parked.bind(Message::of("queue.parkedByHand").stored());
    return changesOne(parked, messageId);
}

bool OutgoingQueue::settle(qint64 messageId)
{
    const QDateTime now = MockFactory<CurrentTime>::create()->currentDateTime();
    Transaction transaction(database);
    Statement settled(database,
                      u"UPDATE queue_messages SET state = 'delivered', account_id = NULL, "
                      "lane = 0, handover = NULL, delivered_at = ? "
                      "WHERE id = ? AND state = 'parked'"_s);
    settled.bind(now.toMSecsSinceEpoch()).bind(messageId).execute();
    const bool found = settled.affectedRows() == 1;
    // the secret goes with the last message that needs it
    Statement accounts(database, u"DELETE FROM queue_accounts WHERE NOT EXISTS "
                                 "(SELECT 1 FROM queue_messages "
                                 "WHERE account_id = queue_accounts.id)"_s);
    accounts.execute();
    if (found) {
        deliveredaddresses::eraseUsers(database, messageId);
    }
    transaction.commit();
    return found;
}

int OutgoingQueue::reauthorize(const QString& queueName, const QString& authorization)
{
    Transaction transaction(database);
    Statement change(database,
                     u"UPDATE queue_accounts SET authorization = ?, paused_status = NULL, "
                     "paused_at = NULL, probe_at = NULL WHERE queue = ?"_s);
    change.bind(authorization).bind(queueName).execute();
    Statement count(database, u"SELECT count(*) FROM queue_messages WHERE account_id IN "
                              "(SELECT id FROM queue_accounts WHERE queue = ?)"_s);
    count.bind(queueName).next();
    const int affected = count.value(0).toInt();
    transaction.commit();
    return affected;
}

int OutgoingQueue::removeDelivered(int olderThanDays)
{
    const QDateTime now = MockFactory<CurrentTime>::create()->currentDateTime();
    const qint64 before = now.addDays(-olderThanDays).toMSecsSinceEpoch();
    Statement statement(
        database,
        u"DELETE FROM queue_messages WHERE id IN (SELECT id "
        "FROM queue_messages WHERE state = 'delivered' AND delivered_at < ? ORDER BY id LIMIT ?)"_s);
    statement.bind(before).bind(removedAtOnce).execute();
    return statement.affectedRows();
}

} // namespace poshost
