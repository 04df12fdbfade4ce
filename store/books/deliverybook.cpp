// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/books/deliverybook.h"

#include "host/queue/queuemessage.h"
#include "store/database/connection.h"

#include <chrono>

namespace orvastore {

using namespace Qt::StringLiterals;
using poshost::DeliveryResult;
using poshost::QueueMessage;
using poshost::deliverypolicy::Meaning;

namespace {

constexpr char claimTask[] = "SELECT next, (task).* FROM orva.claim($1::bigint, $2)";
/// OFFSET 0: the function is called once, not once for each column.
constexpr char finishAndClaim[] =
    "SELECT written, next, (task).* FROM (SELECT f.* FROM orva.finish_and_claim("
    "$1::orva.claimed, $2, $3::int, $4::bool, $5, $6, $7::bigint, $8::bool, $9::bigint[], "
    "$10::bigint, $11::int, $12::bigint, $13) f OFFSET 0) once";
constexpr char finishOnly[] =
    "SELECT orva.finish($1::orva.claimed, $2, $3::int, $4::bool, $5, $6, $7::bigint, $8::bool, "
    "$9::bigint[], $10::bigint, $11::int)";
constexpr char unlockLane[] = "SELECT pg_advisory_unlock($1::bigint)";
constexpr char unlockProbe[] =
    "SELECT pg_advisory_unlock($1::bigint), pg_advisory_unlock(2, hashtext($2))";
constexpr qint64 sweepMilliseconds = 1000;
/// Failures in a row whose wait is told to the store; later ones wait as long as the last.
constexpr int distinctWaits = 9;

qint64 monotonicMilliseconds()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

QString nameOf(Meaning meaning)
{
    switch (meaning) {
    case Meaning::StepDone:
        return u"StepDone"_s;
    case Meaning::Duplicate:
        return u"Duplicate"_s;
    case Meaning::ServerAway:
        return u"ServerAway"_s;
    case Meaning::ServerError:
        return u"ServerError"_s;
    case Meaning::WrongAuthorization:
        return u"WrongAuthorization"_s;
    case Meaning::WrongAddress:
        return u"WrongAddress"_s;
    case Meaning::Refused:
        break;
    }
    return u"Refused"_s;
}

} // namespace

DeliveryBook::DeliveryBook(Connection& owner, const QString& name, quint64 seed)
    : connection(owner), worker(name), random(seed)
{}

QByteArray DeliveryBook::waits()
{
    QByteArray list;
    for (int failures = 1; failures <= distinctWaits; ++failures) {
        const double jitter = std::uniform_real_distribution<>(0, 1)(random);
        list += (list.isEmpty() ? "{" : ",") +
                QByteArray::number(poshost::deliverypolicy::backOff(failures, jitter));
    }
    return list + '}';
}

bool DeliveryBook::isSweepDue()
{
    const qint64 now = monotonicMilliseconds();
    if (now - lastSweep < sweepMilliseconds) {
        return false;
    }
    lastSweep = now;
    return true;
}

std::optional<Task> DeliveryBook::readTask(const Result& result, int firstColumn)
{
    int column = firstColumn;
    if (result.isNull(0, column)) {
        return std::nullopt;
    }
    Task task;
    task.mark = result.text(0, column++);
    task.lane = result.number(0, column++);
    task.message = result.number(0, column++);
    task.queue = result.text(0, column++);
    task.step = static_cast<int>(result.number(0, column++));
    task.attemptedBefore = result.isTrue(0, column++);
    task.isProbe = result.isTrue(0, column++);
    const QString credentials = result.text(0, column++);
    task.headers = QueueMessage::headersOf(result.text(0, column++).toUtf8(), credentials);
    task.addresses =
        QUrl::fromStringList(QueueMessage::addressesOf(result.text(0, column++).toUtf8()));
    task.payload = result.bytes(0, column);
    return task;
}

std::optional<Task> DeliveryBook::claimFrom(qint64 start)
{
    while (true) {
        const Result result =
            connection.run(claimTask, {Value::number(start), Value::text(worker)});
        const bool isEnd = result.isNull(0, 0);
        if (!isEnd) {
            position = start = result.number(0, 0);
        }
        std::optional<Task> task = readTask(result, 1);
        if (task || isEnd) {
            return task;
        }
    }
}

std::optional<Task> DeliveryBook::claim()
{
    const qint64 from = isSweepDue() ? 0 : position;
    if (from == 0) {
        connection.run("SELECT orva.wake_delayed()");
    }
    std::optional<Task> task = claimFrom(from);
    if (!task && from > 0) {
        task = claimFrom(0);
    }
    return task;
}

QList<Value> DeliveryBook::resultOf(const Task& task, const QString& meaning,
                                    const DeliveryResult& result, bool isRefusedForSure)
{
    return {Value::text(task.mark),
            Value::text(meaning),
            Value::number(result.status),
            Value::text(isRefusedForSure ? u"t"_s : u"f"_s),
            Value::text(result.error.stored()),
            Value::text(result.answer),
            Value::number(result.retryAfterMilliseconds),
            Value::text(task.isLastStep() ? u"t"_s : u"f"_s),
            {waits(), false, false},
            Value::number(poshost::deliverypolicy::probeMilliseconds),
            Value::number(poshost::deliverypolicy::serverErrorsUntilAlone)};
}

/// What lets go whatever the session holds for a task.
QByteArray DeliveryBook::unlocking(const Task& task, QList<Value>& values)
{
    values = {Value::number(task.lane)};
    if (task.isProbe) {
        values.append(Value::text(task.queue));
    }
    return task.isProbe ? unlockProbe : unlockLane;
}

DeliveryBook::Next DeliveryBook::finish(const Task& task, const DeliveryResult& result,
                                        bool claimNext)
{
    QList<Value> values = resultOf(task, nameOf(result.meaning), result, result.isRefusedForSure());
    QList<Value> lockValues;
    const QByteArray unlock = unlocking(task, lockValues);
    // the lane is not let go before the commit: until then others would still see what is done
    Next next;
    if (!claimNext) {
        next.isWritten = connection.runBefore(unlock, lockValues, finishOnly, values).isTrue(0, 0);
        return next;
    }
    values += {Value::number(isSweepDue() ? 0 : position), Value::text(worker)};
    const Result found = connection.runBefore(unlock, lockValues, finishAndClaim, values);
    next.isWritten = found.isTrue(0, 0);
    if (!found.isNull(0, 1)) {
        position = found.number(0, 1);
    }
    next.task = readTask(found, 2);
    return next;
}

/// A meaning that no answer has, so that nothing but the attempt's end is written down.
void DeliveryBook::giveBack(const Task& task)
{
    QList<Value> lockValues;
    const QByteArray unlock = unlocking(task, lockValues);
    connection.runBefore(unlock, lockValues, finishOnly,
                         resultOf(task, u"NotSent"_s, DeliveryResult(), true));
}

bool DeliveryBook::takeAgain(const Task& task)
{
    return connection.run("SELECT pg_try_advisory_lock($1::bigint)", {Value::number(task.lane)})
        .isTrue(0, 0);
}

void DeliveryBook::giveSignOfLife()
{
    connection.run("SELECT 1");
}

} // namespace orvastore
