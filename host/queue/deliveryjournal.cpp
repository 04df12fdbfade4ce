// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/deliveryjournal_p.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/queue/deliveredaddresses_p.h"
#include "host/queue/deliverylog_p.h"
#include "host/queue/queuedamage_p.h"
#include "host/queue/queuemessage.h"
#include "host/services/currenttime.h"

#include <algorithm>
#include <utility>

namespace poshost {

using namespace Qt::StringLiterals;
using deliverypolicy::Meaning;

namespace {

/// Whether an address of the message may hold a name and a password.
bool mayNameUsers(const DeliveryTask& task)
{
    return std::any_of(task.addresses.cbegin(), task.addresses.cend(),
                       [](const QUrl& address) { return address.toEncoded().contains('@'); });
}

/// What is needed to send a message; the columns are read by readTask. Queue and holds are those of
/// the account, by which the due message was found.
const QString selectTask =
    u"SELECT m.id, m.account_id, a.queue, m.steps_done, m.server_errors, m.step_attempts, "
    "b.payload, b.headers, b.urls, a.authorization, "
    "a.paused_status IS NOT NULL OR h.queue IS NOT NULL, m.steps, m.last_status, b.digest, "
    "coalesce(CAST(m.lane AS INTEGER), 0) "
    "FROM queue_messages m LEFT JOIN queue_bodies b ON b.message_id = m.id "
    "JOIN queue_accounts a ON a.id = m.account_id "
    "LEFT JOIN queue_holds h ON h.queue = a.queue WHERE m.state = 'waiting' AND m.id = "_s;

const QString selectTaskById = selectTask + u"?"_s;

/// All waits that may still be running.
const QString selectWaits =
    u"SELECT min(until) FROM (SELECT until FROM queue_holds "
    "UNION ALL SELECT probe_at FROM queue_accounts "
    "UNION ALL SELECT next_attempt_at FROM queue_messages "
    "WHERE account_id IS NOT NULL AND state = 'waiting' AND next_attempt_at IS NOT NULL) "
    "WHERE until > ?1 AND until <= ?1 + %1"_s.arg(deliverypolicy::maxRetryAfterMilliseconds);

} // namespace

DeliveryJournal::DeliveryJournal(Database& owner, quint64 seed) : database(owner), random(seed)
{
    begin();
}

void DeliveryJournal::begin(const OwnShare& share)
{
    underWay.clear();
    if (taskAlone.isEmpty() || !(share == ownShare)) {
        ownShare = share;
        underWay.limitTo(share);
        taskAlone = selectTask + u"("_s + underWay.selectDue(false) + u")"_s;
        taskBeside = selectTask + u"("_s + underWay.selectDue(true) + u")"_s;
    }
}

DeliveryTask DeliveryJournal::readTask(const Statement& row)
{
    DeliveryTask task;
    task.messageId = row.value(0).toLongLong();
    task.accountId = row.value(1).toLongLong();
    task.queue = row.value(2).toString();
    task.serverErrors = queuedamage::countIn(row.value(4));
    task.attemptedBefore = row.value(5).toLongLong() > 0;
    task.payload = row.value(6).toByteArray();
    task.authorization = row.value(9).toString();
    const QString headers = row.value(7).toString();
    if (headers != last.headers || task.authorization != last.authorization) {
        last.headers = headers;
        last.authorization = task.authorization;
        last.headersToSend = QueueMessage::headersOf(headers.toUtf8(), task.authorization);
        last.areSound = false;
    }
    task.headers = last.headersToSend;
    const QString addresses = row.value(8).toString();
    if (addresses != last.addresses) {
        last.addresses = addresses;
        last.addressesInOrder = QUrl::fromStringList(QueueMessage::addressesOf(addresses.toUtf8()));
        last.areSound = false;
    }
    task.addresses = last.addressesInOrder;
    task.isHeld = row.value(10).toBool();
    task.lane = row.value(14).toLongLong();
    const auto known = last.areSound ? std::optional(task.addresses.size()) : std::nullopt;
    task.damage = queuedamage::of({row.value(6), headers, addresses, row.value(13), row.value(11),
                                   row.value(3), row.value(12), known});
    last.areSound = last.areSound || task.damage.isEmpty();
    task.step = task.damage.isEmpty() ? row.value(3).toInt() : 0;
    return task;
}

std::optional<DeliveryTask> DeliveryJournal::takeNext()
{
    now = CurrentTime::milliseconds();
    if (!overlookedSought) {
        parkedUnsent += queuedamage::parkOverlooked(database);
        overlookedSought = true;
    }
    if (!underWay.allowAnother() ||
        !dueMessage()) { // looked up without the right to write: this is asked for often
        return std::nullopt;
    }
    Transaction transaction(database);
    now = CurrentTime::milliseconds();
    std::optional<DeliveryTask> task = takeDue();
    transaction.commit();
    return task;
}

std::optional<DeliveryTask> DeliveryJournal::recordAndTakeNext(const DeliveryTask& task,
                                                               const DeliveryResult& result)
{
    Transaction transaction(database);
    now = CurrentTime::milliseconds();
    underWay.remove(task);
    std::optional<DeliveryTask> next;
    if (result.meaning == Meaning::StepDone && !task.isLastStep()) {
        next = takeFollowingStep(task, result);
    } else {
        write(task, result);
    }
    if (!next) {
        next = takeDue();
    }
    if (!next || next->accountId != task.accountId) {
        removeUnusedAccount(task.accountId);
    }
    transaction.commit();
    return next;
}

int DeliveryJournal::takeParkedUnsent()
{
    return std::exchange(parkedUnsent, 0);
}

void DeliveryJournal::forget(const DeliveryTask& task)
{
    underWay.remove(task);
    Statement statement(database,
                        u"UPDATE queue_messages SET attempts = attempts - 1, "
                        "step_attempts = step_attempts - 1 WHERE id = ? AND step_attempts > 0"_s);
    statement.bind(task.messageId).execute();
}

std::optional<qint64> DeliveryJournal::nextWaitEnd()
{
    now = CurrentTime::milliseconds();
    Statement statement(database, selectWaits);
    if (!statement.bind(now).next() || statement.value(0).isNull()) {
        return std::nullopt;
    }
    return statement.value(0).toLongLong();
}

std::optional<qint64> DeliveryJournal::dueMessage()
{
    Statement statement(database, underWay.selectDue(!underWay.isEmpty()));
    underWay.bindTo(statement, now);
    if (!statement.next() || statement.value(0).isNull()) {
        return std::nullopt;
    }
    return statement.value(0).toLongLong();
}

std::optional<DeliveryTask> DeliveryJournal::takeDue()
{
    while (underWay.allowAnother()) {
        // one statement instead of two: a queue that was filled for weeks is drained through here
        Statement row(database, selectTaskDue());
        underWay.bindTo(row, now);
        if (!row.next()) {
            return std::nullopt;
        }
        DeliveryTask task = readTask(row);
        if (beginAttempt(task)) {
            return task;
        }
    }
    return std::nullopt;
}

/// Nothing when the message was taken out of the delivery meanwhile.
std::optional<DeliveryTask> DeliveryJournal::take(qint64 messageId)
{
    Statement row(database, selectTaskById);
    if (!row.bind(messageId).next()) {
        return std::nullopt;
    }
    DeliveryTask task = readTask(row);
    return beginAttempt(task) ? std::optional(task) : std::nullopt;
}

/// @return false: the message is damaged or has no address, and is parked now
bool DeliveryJournal::beginAttempt(const DeliveryTask& task)
{
    if (!task.damage.isEmpty()) {
        park(task, {Meaning::Refused, 0, task.damage, {}, 0});
        qCWarning(logDelivery).noquote() << u"Очередь %1, сообщение %2: %3"_s.arg(task.queue)
                                                .arg(task.messageId)
                                                .arg(task.damage.ru());
        ++parkedUnsent;
        return false;
    }
    Statement attempt(database,
                      u"UPDATE queue_messages SET attempts = attempts + 1, "
                      "step_attempts = step_attempts + 1, attempted_at = ? WHERE id = ?"_s);
    attempt.bind(now).bind(task.messageId).execute();
    underWay.add(task);
    return true;
}

/// Finishes a step and counts the attempt of the following one. Where nobody has touched the
/// message or its authorization meanwhile, that is one statement and the task is known already.
std::optional<DeliveryTask> DeliveryJournal::takeFollowingStep(const DeliveryTask& task,
                                                               const DeliveryResult& result)
{
    liftHolds(task);
    Statement statement(
        database, u"UPDATE queue_messages SET steps_done = ?, last_status = ?, step_attempts = 1, "
                  "server_errors = 0, next_attempt_at = NULL, last_error = NULL, "
                  "last_answer = NULL, attempts = attempts + 1, attempted_at = ? "
                  "WHERE id = ? AND state = 'waiting' AND account_id = "
                  "(SELECT id FROM queue_accounts WHERE id = ? AND authorization = ?)"_s);
    statement.bind(task.step + 1)
        .bind(result.status)
        .bind(now)
        .bind(task.messageId)
        .bind(task.accountId)
        .bind(task.authorization)
        .execute();
    if (statement.affectedRows() == 0) {
        finishStep(task, result);
        return take(task.messageId);
    }
    DeliveryTask next = task;
    ++next.step;
    next.serverErrors = 0;
    next.attemptedBefore = false;
    next.isHeld = false;
    underWay.add(next);
    return next;
}

void DeliveryJournal::write(const DeliveryTask& task, const DeliveryResult& result)
{
    switch (result.meaning) {
    case Meaning::StepDone:
        liftHolds(task);
        finishStep(task, result);
        return;
    case Meaning::Duplicate:
    case Meaning::Refused:
        liftHolds(task);
        park(task, result);
        return;
    case Meaning::ServerAway:
        postpone(task, result);
        holdQueue(task, u"server"_s, result.retryAfterMilliseconds);
        return;
    case Meaning::ServerError:
        postpone(task, result);
        if (task.serverErrors + 1 < deliverypolicy::serverErrorsUntilAlone) {
            holdQueue(task, u"server"_s, result.retryAfterMilliseconds);
        }
        return;
    case Meaning::WrongAuthorization:
        postpone(task, result);
        pauseAccount(task, result.status);
        return;
    case Meaning::WrongAddress:
        postpone(task, result);
        holdQueue(task, u"address"_s, 0);
        return;
    }
}

void DeliveryJournal::finishStep(const DeliveryTask& task, const DeliveryResult& result)
{
    const bool delivered = task.isLastStep();
    Statement statement(
        database,
        delivered
            ? u"UPDATE queue_messages SET steps_done = ?, last_status = ?, step_attempts = 0, "
              "server_errors = 0, next_attempt_at = NULL, last_error = NULL, "
              "last_answer = NULL, state = 'delivered', account_id = NULL, lane = 0, "
              "delivered_at = ? WHERE id = ?"_s
            : u"UPDATE queue_messages SET steps_done = ?, last_status = ?, step_attempts = 0, "
              "server_errors = 0, next_attempt_at = NULL, last_error = NULL, "
              "last_answer = NULL WHERE id = ?"_s);
    statement.bind(task.step + 1).bind(result.status);
    if (delivered) {
        statement.bind(now);
    }
    statement.bind(task.messageId).execute();
    if (delivered && mayNameUsers(task)) {
        deliveredaddresses::eraseUsers(database, task.messageId);
    }
}

/// The secret goes with the last message that needs it.
void DeliveryJournal::removeUnusedAccount(qint64 accountId)
{
    Statement account(database,
                      u"DELETE FROM queue_accounts WHERE id = ? AND NOT EXISTS "
                      "(SELECT 1 FROM queue_messages WHERE account_id = queue_accounts.id)"_s);
    account.bind(accountId).execute();
}

void DeliveryJournal::park(const DeliveryTask& task, const DeliveryResult& result)
{
    // A duplicate found at the first attempt was booked by somebody else. That attempt must not
    // make the same answer look like a success when somebody has the message sent again.
    Statement statement(database, u"UPDATE queue_messages SET state = 'parked', last_status = ?, "
                                  "last_error = ?, last_answer = ?, "
                                  "step_attempts = CASE WHEN ? THEN 0 ELSE step_attempts - ? END "
                                  "WHERE id = ?"_s);
    statement.bind(result.status)
        .bind(result.error.stored())
        .bind(result.answer)
        .bind(result.meaning == Meaning::Duplicate)
        .bind(result.isRefusedForSure() ? 1 : 0)
        .bind(task.messageId)
        .execute();
}

void DeliveryJournal::postpone(const DeliveryTask& task, const DeliveryResult& result)
{
    const bool serverError = result.meaning == Meaning::ServerError;
    const int serverErrors = std::min(task.serverErrors, 1000) + (serverError ? 1 : 0);
    QVariant nextAttempt;
    if (serverError && serverErrors >= deliverypolicy::serverErrorsUntilAlone) {
        const qint64 wait = backOff(serverErrors - deliverypolicy::serverErrorsUntilAlone + 1);
        nextAttempt = now + std::max(wait, result.retryAfterMilliseconds);
    }
    Statement statement(database,
                        u"UPDATE queue_messages SET server_errors = ?, next_attempt_at = ?, "
                        "last_status = ?, last_error = ?, step_attempts = step_attempts - ? "
                        "WHERE id = ?"_s);
    statement.bind(serverErrors)
        .bind(nextAttempt)
        .bind(result.status)
        .bind(result.error.stored())
        .bind(result.isRefusedForSure() ? 1 : 0)
        .bind(task.messageId)
        .execute();
}

/// Several requests that were under way together and failed are one failure: the wait grows with
/// how often the server was tried, not with the number of connections.
void DeliveryJournal::holdQueue(const DeliveryTask& task, const QString& reason, qint64 atLeast)
{
    const bool isAddress = reason == "address"_L1;
    Statement before(database, u"SELECT failures FROM queue_holds WHERE queue = ?"_s);
    const bool wasHeld = before.bind(task.queue).next();
    const int known = wasHeld ? std::min(queuedamage::countIn(before.value(0)), 1000) : 0;
    const bool heldMeanwhile = wasHeld && !task.isHeld;
    const int failures = heldMeanwhile ? std::max(known, 1) : known + 1;
    const qint64 wait =
        isAddress ? deliverypolicy::probeMilliseconds : std::max(backOff(failures), atLeast);
    Statement hold(database, u"INSERT OR REPLACE INTO queue_holds "
                             "(queue, reason, failures, since, until) VALUES (?, ?, ?, ?, ?)"_s);
    hold.bind(task.queue).bind(reason).bind(isAddress ? 0 : failures).bind(now).bind(now + wait);
    hold.execute();
}

void DeliveryJournal::pauseAccount(const DeliveryTask& task, int status)
{
    Statement statement(database,
                        u"UPDATE queue_accounts SET paused_status = ?, paused_at = ?, probe_at = ? "
                        "WHERE queue = ? AND authorization = "
                        "(SELECT authorization FROM queue_accounts WHERE id = ?)"_s);
    statement.bind(status)
        .bind(now)
        .bind(now + deliverypolicy::probeMilliseconds)
        .bind(task.queue)
        .bind(task.accountId)
        .execute();
}

/// Something got through: the server is there, the address is right, and so is the authorization.
void DeliveryJournal::liftHolds(const DeliveryTask& task)
{
    if (!task.isHeld) {
        return;
    }
    Statement hold(database, u"DELETE FROM queue_holds WHERE queue = ?"_s);
    hold.bind(task.queue).execute();
    Statement pause(
        database, u"UPDATE queue_accounts SET paused_status = NULL, paused_at = NULL, "
                  "probe_at = NULL WHERE paused_status IS NOT NULL AND queue = ? "
                  "AND authorization = (SELECT authorization FROM queue_accounts WHERE id = ?)"_s);
    pause.bind(task.queue).bind(task.accountId).execute();
}

qint64 DeliveryJournal::backOff(int failures)
{
    return deliverypolicy::backOff(failures, std::uniform_real_distribution<>(0, 1)(random));
}

} // namespace poshost
