// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/requestsunderway_p.h"

#include "host/database/statement.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

/// How many due messages are looked through for one of a free lane, for each account. Where one
/// lane has more at the front, the others wait for it as they would with one connection; without a
/// bound each request would read the whole backlog of such a lane.
constexpr int lookAhead = 1000;

/// What is due of an account. A wait that began in the future, or ends later than any wait may, is
/// over: the clock was put back, or the row is damaged. And a message waits for earlier ones only.
const QString dueOfAccount =
    u"SELECT m.id, m.lane FROM queue_messages m "
    "WHERE m.account_id = a.id AND m.state = 'waiting' AND %3 "
    "AND (m.next_attempt_at IS NULL OR m.next_attempt_at <= ?1 OR m.attempted_at > ?1 "
    "OR m.next_attempt_at > ?1 + %1) "
    "AND NOT EXISTS (SELECT 1 FROM queue_dependencies d JOIN queue_messages o "
    "ON o.id = d.depends_on WHERE d.message_id = m.id AND o.id < m.id "
    "AND (o.state <> 'delivered'%4)) ORDER BY m.id LIMIT %2"_s;

/// For each account by itself, so that many paused ones cost nothing.
const QString firstOfAccounts =
    u"SELECT min(due) FROM (SELECT (%2) AS due "
    "FROM queue_accounts a LEFT JOIN queue_holds h ON h.queue = a.queue "
    "WHERE (a.paused_status IS NULL OR coalesce(a.probe_at, 0) <= ?1 OR a.paused_at > ?1 "
    "OR a.probe_at > ?1 + %1) AND (h.queue IS NULL OR h.until <= ?1 OR h.since > ?1 "
    "OR h.until > ?1 + %1))"_s;

/// The till's own share of the waiting messages.
QString ownOnly(const OwnShare& share)
{
    if (!share.hasStore) {
        return u"coalesce(m.handover, 0) = 0"_s;
    }
    if (!share.fromAge) {
        return u"m.handover = 0"_s;
    }
    return u"(m.handover = 0 OR (m.handover IS NULL "
           "AND (m.created_at <= ?1 - %1 OR m.created_at > ?1)))"_s.arg(*share.fromAge);
}

QString firstDue(const OwnShare& share, const QString& condition, int rows)
{
    const auto longest = deliverypolicy::maxRetryAfterMilliseconds;
    const QString behindHanded = share.hasStore ? u" OR coalesce(o.handover, 0) <> 0"_s : QString();
    const QString due = dueOfAccount.arg(longest).arg(rows).arg(ownOnly(share), behindHanded);
    return firstOfAccounts.arg(longest).arg(
        u"SELECT c.id FROM (%1) c%2 LIMIT 1"_s.arg(due, condition));
}

/// A lane that is damaged counts as the one that has no name, here as where it is read.
const QString besideOthers =
    u" WHERE c.id NOT IN (SELECT value FROM json_each(?2)) "
    "AND coalesce(CAST(c.lane AS INTEGER), 0) NOT IN (SELECT value FROM json_each(?3))"_s;

QString toJson(const QJsonArray& numbers)
{
    return QString::fromUtf8(QJsonDocument(numbers).toJson(QJsonDocument::Compact));
}

} // namespace

void RequestsUnderWay::add(const DeliveryTask& task)
{
    requests.append({task.messageId, task.lane, task.isHeld});
}

void RequestsUnderWay::remove(const DeliveryTask& task)
{
    requests.removeIf([&](const Request& one) { return one.messageId == task.messageId; });
}

bool RequestsUnderWay::allowAnother() const
{
    return std::none_of(requests.begin(), requests.end(),
                        [](const Request& one) { return one.isProbe; });
}

void RequestsUnderWay::limitTo(const OwnShare& share)
{
    dueAlone = firstDue(share, {}, 1);
    dueBeside = firstDue(share, besideOthers, lookAhead);
}

void RequestsUnderWay::bindTo(Statement& statement, qint64 now) const
{
    statement.bind(now);
    if (requests.isEmpty()) {
        return;
    }
    QJsonArray messages;
    QJsonArray lanes;
    for (const Request& request : requests) {
        messages.append(request.messageId);
        lanes.append(request.lane);
    }
    statement.bind(toJson(messages)).bind(toJson(lanes));
}

} // namespace poshost
