// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/handoverjournal_p.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/queue/closedcheck.h"
#include "host/queue/deliveredaddresses_p.h"
#include "host/queue/deliverylog_p.h"
#include "host/queue/deliverypolicy.h"
#include "host/queue/queuedamage_p.h"
#include "host/services/currenttime.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace poshost {

using namespace Qt::StringLiterals;
using orvastore::StoreEnd;
using orvastore::StoreResult;

namespace {

/// How many messages, and how many bytes of them, are handed over before it is written down what
/// became of them: enough to sync the file seldom, and memory stays flat.
constexpr int messagesAtOnce = 50;
constexpr qsizetype bytesAtOnce = 4 * 1024 * 1024;
/// How long a check waits that the store refuses; the others go on.
constexpr qint64 refusedMilliseconds = 60 * 1000;

ReadClosedCheck readClosedCheck = nullptr;

/// What was begun is in an index of its own, so that a full queue is not read for it: named, since
/// SQLite would rather read the whole table than sort the few. A message that the store refused
/// waits by itself; a wait that began in the future or ends too late is over.
const QString selectBegun =
    u"SELECT m.id FROM queue_messages m INDEXED BY queue_handing WHERE m.handover IS NOT NULL "
    "AND m.account_id IS NOT NULL AND m.handover <> 0 AND m.state = 'waiting' "
    "AND (m.handed_again_at IS NULL OR m.handed_again_at <= ?1 OR m.handed_again_at > ?1 + %1) "
    "ORDER BY m.id LIMIT ?2"_s.arg(deliverypolicy::maxRetryAfterMilliseconds);

/// A message that waits for the server may go at once. A return whose sale is about to go ends what
/// is taken, so that nothing of its lane passes it; one whose sale does not go, or is the till's to
/// deliver, is left out.
const QString selectFresh =
    u"SELECT m.id, EXISTS (SELECT 1 FROM queue_dependencies d JOIN queue_messages o "
    "ON o.id = d.depends_on WHERE d.message_id = m.id AND o.id < m.id "
    "AND o.state <> 'delivered') "
    "FROM queue_messages m WHERE m.account_id = ?1 AND m.state = 'waiting' "
    "AND m.handover IS NULL AND (m.handed_again_at IS NULL OR m.handed_again_at <= ?2 "
    "OR m.handed_again_at > ?2 + %1) "
    "AND NOT EXISTS (SELECT 1 FROM queue_dependencies d JOIN queue_messages o "
    "ON o.id = d.depends_on WHERE d.message_id = m.id AND o.id < m.id "
    "AND o.state <> 'delivered' "
    "AND (o.state <> 'waiting' OR o.handed_again_at IS NOT NULL OR o.handover = 0)) "
    "ORDER BY m.id LIMIT ?3"_s.arg(deliverypolicy::maxRetryAfterMilliseconds);

const QString selectMessage =
    u"SELECT m.queue, m.extra, b.payload, b.headers, b.urls, b.digest, a.authorization, m.steps, "
    "m.steps_done, m.last_status, m.attempts, m.step_attempts, "
    "coalesce(CAST(m.lane AS INTEGER), 0), coalesce(m.handover, 0) <> 0 "
    "FROM queue_messages m JOIN queue_accounts a ON a.id = m.account_id "
    "LEFT JOIN queue_bodies b ON b.message_id = m.id WHERE m.id = ?"_s;

orvastore::HandedMessage messageOf(const Statement& row)
{
    orvastore::HandedMessage message;
    message.queue = row.value(0).toString();
    message.extra = row.value(1).toString();
    message.payload = row.value(2).toByteArray();
    message.headers = row.value(3).toString().toUtf8();
    message.urls = row.value(4).toString().toUtf8();
    message.authorization = row.value(6).toString();
    message.stepsDone = queuedamage::countIn(row.value(8));
    message.attempts = queuedamage::countIn(row.value(10));
    message.stepAttempts = queuedamage::countIn(row.value(11));
    return message;
}

/// Those of one card have the same at every till. What was stored before there were lanes shares
/// one, and keeps its order with what the same till stored then.
QString laneNameOf(qint64 lane, const QString& till)
{
    return lane == 0 ? u"till "_s + till : u"lane "_s + QString::number(lane);
}

qsizetype sizeOf(const orvastore::HandedCheck& check)
{
    return check.content.size() + check.messages.first().payload.size();
}

} // namespace

void registerClosedChecks(ReadClosedCheck read)
{
    readClosedCheck = read;
}

bool HandOverJournal::isAnythingDue()
{
    return !dueIds(1).isEmpty();
}

bool HandOverJournal::hasOwn()
{
    Statement statement(database, u"SELECT 1 FROM queue_messages WHERE handover = 0 "
                                  "AND account_id IS NOT NULL LIMIT 1"_s);
    return statement.next();
}

int HandOverJournal::takeParked()
{
    return std::exchange(parked, 0);
}

QList<HandOverEntry> HandOverJournal::begin(const QString& shop)
{
    QList<HandOverEntry> entries;
    QList<qint64> own;
    qsizetype bytes = 0;
    const QList<qint64> ids = dueIds(messagesAtOnce);
    for (const qint64 id : ids) {
        if (bytes >= bytesAtOnce) {
            break;
        }
        std::optional<HandOverEntry> entry = read(id, shop);
        if (!entry) {
            continue; // parked
        }
        if (entry->check.identifier.isEmpty()) {
            own.append(id);
            continue;
        }
        bytes += sizeOf(entry->check);
        entries.append(*entry);
    }
    note(entries, own);
    return entries;
}

QList<qint64> HandOverJournal::dueIds(int most)
{
    const qint64 now = CurrentTime::milliseconds();
    QList<qint64> ids;
    {
        Statement begun(database, selectBegun);
        begun.bind(now).bind(most);
        while (begun.next()) {
            ids.append(begun.value(0).toLongLong());
        }
    }
    if (ids.size() >= most || readClosedCheck == nullptr) {
        return ids;
    }
    QList<qint64> accounts;
    {
        Statement statement(database, u"SELECT id FROM queue_accounts"_s);
        while (statement.next()) {
            accounts.append(statement.value(0).toLongLong());
        }
    }
    QList<qint64> fresh;
    qint64 end = std::numeric_limits<qint64>::max();
    for (const qint64 account : std::as_const(accounts)) {
        fresh += dueOfAccount(account, now, most, end);
    }
    fresh.removeIf([end](qint64 id) { return id >= end; }); // a lane may have several accounts
    std::sort(fresh.begin(), fresh.end());
    return ids + fresh.first(std::min(fresh.size(), most - ids.size()));
}

/// @param end becomes the return that ends what is taken, if there is one before it
QList<qint64> HandOverJournal::dueOfAccount(qint64 accountId, qint64 now, int most, qint64& end)
{
    QList<qint64> ids;
    Statement statement(database, selectFresh);
    statement.bind(accountId).bind(now).bind(most);
    while (statement.next()) {
        const qint64 id = statement.value(0).toLongLong();
        if (statement.value(1).toBool()) {
            end = std::min(end, id);
            break;
        }
        ids.append(id);
    }
    return ids;
}

/// Nothing when the message is damaged and parked now, or nobody has it any more; without an
/// identifier when it belongs to no check.
std::optional<HandOverEntry> HandOverJournal::read(qint64 messageId, const QString& shop)
{
    HandOverEntry entry;
    entry.messageId = messageId;
    qint64 lane = 0;
    Message damage;
    {
        Statement row(database, selectMessage);
        if (!row.bind(messageId).next()) {
            return std::nullopt;
        }
        entry.check.messages.append(messageOf(row));
        lane = row.value(12).toLongLong();
        entry.isRepeated = row.value(13).toBool();
        damage = queuedamage::of({row.value(2), row.value(3).toString(), row.value(4).toString(),
                                  row.value(5), row.value(7), row.value(8), row.value(9)});
    }
    if (!damage.isEmpty()) {
        park(messageId, damage);
        return std::nullopt;
    }
    const std::optional<ClosedCheck> closed = readClosedCheck(database, messageId);
    if (closed) {
        const QList<orvastore::HandedMessage> messages = entry.check.messages;
        entry.check = handedCheckOf(*closed, shop);
        entry.check.laneName = laneNameOf(lane, closed->till);
        entry.check.messages = messages;
    }
    return entry;
}

/// What somebody has taken out of the delivery meanwhile is dropped.
void HandOverJournal::note(QList<HandOverEntry>& entries, const QList<qint64>& own)
{
    const auto isFresh = [](const HandOverEntry& entry) { return !entry.isRepeated; };
    if (own.isEmpty() && std::none_of(entries.cbegin(), entries.cend(), isFresh)) {
        return; // nothing to write
    }
    const qint64 now = std::max<qint64>(1, CurrentTime::milliseconds());
    const auto mark = [&](qint64 id, qint64 value) {
        Statement statement(database, u"UPDATE queue_messages SET handover = ? WHERE id = ? "
                                      "AND state = 'waiting' AND handover IS NULL"_s);
        statement.bind(value).bind(id).execute();
        return statement.affectedRows() == 1;
    };
    Transaction transaction(database);
    for (const qint64 id : own) {
        mark(id, 0);
    }
    entries.removeIf(
        [&](const HandOverEntry& entry) { return isFresh(entry) && !mark(entry.messageId, now); });
    transaction.commit();
}

void HandOverJournal::park(qint64 messageId, const Message& why)
{
    Statement statement(database, u"UPDATE queue_messages SET state = 'parked', last_error = ? "
                                  "WHERE id = ? AND state = 'waiting'"_s);
    statement.bind(why.stored()).bind(messageId).execute();
    qCWarning(logDelivery).noquote() << u"Сообщение %1: %2"_s.arg(messageId).arg(why.ru());
    ++parked;
}

void HandOverJournal::record(const QList<HandOverEntry>& entries, const QList<StoreResult>& results)
{
    const qint64 now = CurrentTime::milliseconds();
    Transaction transaction(database);
    for (qsizetype i = 0; i < entries.size(); ++i) {
        write(entries.at(i), results.at(i), now);
    }
    // the secret goes with the last message that needs it
    Statement accounts(database, u"DELETE FROM queue_accounts WHERE NOT EXISTS "
                                 "(SELECT 1 FROM queue_messages "
                                 "WHERE account_id = queue_accounts.id)"_s);
    accounts.execute();
    transaction.commit();
}

/// What contradicts another till is left out until a person has decided; other refusals pass.
/// Only of a first hand-over it is known that nothing of it arrived: an earlier one may have.
void HandOverJournal::write(const HandOverEntry& entry, const StoreResult& result, qint64 now)
{
    if (result.end == StoreEnd::Done) {
        finish(entry.messageId, now);
        return;
    }
    const bool isRefused = result.end == StoreEnd::Refused;
    const bool hasNothing = isRefused || result.end == StoreEnd::Unreachable;
    Statement statement(database, u"UPDATE queue_messages SET last_error = ?, handed_again_at = ?, "
                                  "state = CASE WHEN ? THEN 'parked' ELSE state END, "
                                  "handover = CASE WHEN ? THEN NULL ELSE handover END "
                                  "WHERE id = ? AND account_id IS NOT NULL"_s);
    statement.bind(result.error.stored())
        .bind(isRefused && !result.isConflict ? QVariant(now + refusedMilliseconds) : QVariant())
        .bind(result.isConflict)
        .bind(hasNothing && !entry.isRepeated)
        .bind(entry.messageId)
        .execute();
    parked += result.isConflict ? 1 : 0;
}

void HandOverJournal::finish(qint64 messageId, qint64 now)
{
    Statement statement(
        database,
        u"UPDATE queue_messages SET state = 'delivered', account_id = NULL, lane = 0, "
        "delivered_at = ?, next_attempt_at = NULL, handed_again_at = NULL, "
        "last_error = NULL, last_answer = NULL WHERE id = ? AND account_id IS NOT NULL"_s);
    statement.bind(now).bind(messageId).execute();
    deliveredaddresses::eraseUsers(database, messageId);
}

} // namespace poshost
