// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/books/storequeue.h"

#include "host/http/serveraddress.h"
#include "host/queue/queuemessage.h"
#include "host/queue/xmltext.h"
#include "store/database/connection.h"

namespace orvastore {

using namespace Qt::StringLiterals;
using poshost::Message;
using poshost::QueueContent;
using poshost::QueueEntry;
using poshost::QueueMessage;
using poshost::QueueState;

namespace {

/// Times are milliseconds since 1970, so that no session's time zone is asked.
constexpr char selectEntries[] =
    "SELECT u.id, u.queue, u.extra, "
    "CASE WHEN u.is_parked THEN 'parked' "
    "WHEN a.paused_status IS NOT NULL OR h.reason = 'address' THEN 'paused' ELSE 'waiting' END, "
    "u.steps, (p).steps_done, (p).attempts, "
    "coalesce(u.parked_status, o.status, 0), coalesce(nullif(u.parked_error, ''), o.error, ''), "
    "coalesce((SELECT s.message FROM orva.parked s WHERE s.shop = u.shop "
    "AND s.identifier = u.waits_for ORDER BY s.number LIMIT 1), 0), "
    "(extract(epoch FROM u.handed_at) * 1000)::bigint, "
    "(extract(epoch FROM coalesce(d.due_at, h.until, a.probe_at)) * 1000)::bigint, "
    "u.headers, u.urls, u.payload, coalesce(u.parked_answer, '') "
    "FROM (SELECT v.*, orva.progress_of(ROW(v.day, v.lane, v.number, v.id, v.shop, "
    "v.identifier, v.sale, v.account, v.queue, v.steps_done, v.attempts, v.step_attempts)"
    "::orva.head) AS p FROM orva.undelivered v %1 "
    "ORDER BY v.id LIMIT $1::int) u "
    "JOIN orva.accounts a ON a.id = u.account LEFT JOIN orva.holds h ON h.queue = u.queue "
    "LEFT JOIN orva.delayed d ON d.lane = u.lane AND NOT u.is_parked "
    "LEFT JOIN LATERAL (SELECT status, error FROM orva.outcomes o WHERE o.message = u.id "
    "AND o.day = u.day AND o.meaning <> 'NotSent' ORDER BY attempt DESC LIMIT 1) o ON true ORDER "
    "BY u.id";

enum Column
{
    Id,
    Queue,
    Extra,
    State,
    Steps,
    StepsDone,
    Attempts,
    Status,
    Error,
    WaitsFor,
    Created,
    NextAttempt,
    Headers,
    Urls,
    Payload,
    Answer,
};

QByteArray select(const char* condition)
{
    return QByteArray(selectEntries).replace("%1", condition);
}

} // namespace

QueueEntry StoreQueue::readEntry(const Result& found, int row)
{
    QueueEntry entry;
    entry.id = found.number(row, Id);
    entry.queue = found.text(row, Queue);
    entry.extra = found.text(row, Extra);
    const QString state = found.text(row, State);
    entry.state = state == "parked"_L1   ? QueueState::Parked
                  : state == "paused"_L1 ? QueueState::Paused
                                         : QueueState::Waiting;
    entry.steps = static_cast<int>(found.number(row, Steps));
    entry.stepsDone = static_cast<int>(found.number(row, StepsDone));
    entry.attempts = static_cast<int>(found.number(row, Attempts));
    entry.lastStatus = static_cast<int>(found.number(row, Status));
    entry.obstacle = Message::fromStored(found.text(row, Error));
    entry.lastError = entry.obstacle.ru();
    entry.waitsFor = found.number(row, WaitsFor);
    entry.createdAt = found.time(row, Created);
    entry.nextAttemptAt = found.time(row, NextAttempt);
    return entry;
}

QList<QueueEntry> StoreQueue::list()
{
    const Result found = connection.run(select(""), {Value::number(listedAtMost)});
    QList<QueueEntry> entries;
    for (int row = 0; row < found.rows(); ++row) {
        entries.append(readEntry(found, row));
    }
    return entries;
}

std::optional<QueueContent> StoreQueue::show(qint64 message)
{
    const Result found = connection.run(select("WHERE v.id = $2::bigint"),
                                        {Value::number(1), Value::number(message)});
    if (found.rows() == 0) {
        return std::nullopt;
    }
    QueueContent content;
    content.entry = readEntry(found, 0);
    content.payload = poshost::xmltext::decoded(found.bytes(0, Payload));
    const auto headers = QueueMessage::headersOf(found.text(0, Headers).toUtf8(), u"***"_s);
    for (auto it = headers.cbegin(); it != headers.cend(); ++it) {
        content.headers.insert(it.key(), it.value());
    }
    for (const QString& address : QueueMessage::addressesOf(found.text(0, Urls).toUtf8())) {
        content.addresses.append(poshost::serveraddress::shown(address));
    }
    content.lastAnswer = found.text(0, Answer);
    return content;
}

bool StoreQueue::change(const QByteArray& function, qint64 message)
{
    return connection.run("SELECT " + function, {Value::number(message)}).isTrue(0, 0);
}

bool StoreQueue::retry(qint64 message)
{
    return change("orva.retry($1::bigint)", message);
}

bool StoreQueue::park(qint64 message)
{
    return connection
        .run("SELECT orva.park($1::bigint, $2)",
             {Value::number(message), Value::text(Message::of("queue.parkedByHand").stored())})
        .isTrue(0, 0);
}

bool StoreQueue::settle(qint64 message)
{
    return change("orva.settle($1::bigint)", message);
}

qint64 StoreQueue::reauthorize(const QString& queue, const QString& shop,
                               const QString& authorization)
{
    return connection
        .run("SELECT orva.reauthorize($1, $2, $3)",
             {Value::text(queue), Value::text(shop), Value::text(authorization)})
        .number(0, 0);
}

} // namespace orvastore
