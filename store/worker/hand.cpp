// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/worker/hand.h"

#include "host/services/restclient.h"
#include "store/schema/storeschema.h"
#include "store/worker/worker.h"

#include <QScopeGuard>

#include <algorithm>
#include <condition_variable>
#include <thread>

namespace orvastore {

using namespace std::chrono_literals;
using poshost::DeliveryResult;
using poshost::Message;
using poshost::deliverypolicy::Meaning;
using std::chrono::steady_clock;

namespace {

constexpr auto betweenLooks = 50ms;
constexpr auto afterFailure = 250ms;
constexpr auto betweenUpkeeps = 10min;
/// A message that has waited longer in the hand is not sent before its session was seen to live.
constexpr auto unnoticed = 50ms;
constexpr int preparedDays = 7;

/// Whether further messages for the same server may have to wait for this one.
bool holdsOthers(Meaning meaning)
{
    return meaning == Meaning::ServerAway || meaning == Meaning::ServerError ||
           meaning == Meaning::WrongAuthorization || meaning == Meaning::WrongAddress;
}

} // namespace

Hand::Hand(Worker& owner, Kind which, const StoreSettings& settings)
    : worker(owner), kind(which), connection(settings, {owner.manner.laneTimeout, true}),
      book(connection, owner.manner.name)
{}

void Hand::rest(std::chrono::milliseconds time) const
{
    const auto end = steady_clock::now() + time;
    while (!worker.isEnding() && steady_clock::now() < end) {
        std::this_thread::sleep_for(
            std::min<steady_clock::duration>(end - steady_clock::now(), betweenLooks));
    }
}

void Hand::open()
{
    connection.open();
    if (usableSession != connection.generation()) {
        storeschema::requireUsable(connection);
        usableSession = connection.generation();
    }
}

void Hand::run(const Hand& other)
{
    Session atSession(session);
    const std::jthread heart([this](const std::stop_token& ending) { showLife(ending); });
    std::optional<Task> task;
    while (!worker.isEnding() || task) {
        try {
            if (!task) {
                atSession.unlock();
                const auto back = qScopeGuard([&atSession] { atSession.lock(); });
                // once more, since the other hand may have looked in between whether this one works
                hasTask = worker.turn.awaitChance(isAhead());
                hasTask = hasTask && worker.turn.hasChance(isAhead());
                if (!hasTask) {
                    continue;
                }
            }
            open();
            keepUp();
            if (!task) {
                task = claim(other);
            }
            hasTask = task.has_value();
            if (task) {
                task = work(*task, atSession);
                hasTask = task.has_value();
            } else if (!worker.isEnding()) {
                atSession.unlock();
                rest(betweenLooks);
                atSession.lock();
            }
        } catch (const StoreError& error) {
            task.reset();
            hasTask = false;
            connection.close(); // which frees whatever was held
            worker.complain(error.message());
            if (error.certainty() == StoreError::Certainty::Refused && usableSession == 0 &&
                !isAhead()) {
                throw;
            }
            rest(afterFailure);
        }
    }
}

/// The other hand begins nothing by itself while this one sends nothing, so where both had nothing
/// nothing is due.
std::optional<Task> Hand::claim(const Hand& other)
{
    const bool isAlone = !other.hasTask;
    failuresBefore = worker.turn.failures();
    std::optional<Task> task = book.claim();
    worker.complain({});
    if (!task && !isAhead() && worker.manner.untilEmpty && isAlone) {
        worker.isDone = true;
    }
    return task;
}

/// Days to come are prepared and old ones dropped by whichever worker comes to it.
void Hand::keepUp()
{
    if (isAhead() || steady_clock::now() < nextUpkeep) {
        return;
    }
    nextUpkeep = steady_clock::now() + betweenUpkeeps;
    try {
        connection.run("SELECT orva.prepare_days($1::int)", {Value::number(preparedDays)});
        connection.run("SELECT orva.drop_days($1::int)", {Value::number(worker.manner.keepDays)});
    } catch (const StoreError& error) {
        if (error.certainty() != StoreError::Certainty::Refused) {
            throw;
        }
        worker.complain(error.message()); // somebody uses the tables: next time
    }
}

/// Sends a task when it is its turn and writes down what came of it. A failure is written down
/// before the other hand may send: what holds this message may hold the other one. @return the next
/// task
std::optional<Task> Hand::work(const Task& claimed, Session& atSession)
{
    const int generation = connection.generation();
    const auto waitingSince = steady_clock::now();
    atSession.unlock();
    const bool isOurTurn = !worker.isEnding() && worker.turn.enter(failuresBefore);
    atSession.lock();
    if (!isOurTurn) {
        if (connection.isOpen()) {
            book.giveBack(claimed);
        }
        return std::nullopt;
    }
    steady_clock::duration took{};
    bool hasFailed = false;
    auto turn = qScopeGuard([&] { worker.turn.leave(hasFailed, took); });
    if (!connection.isOpen()) {
        return std::nullopt; // the lane went with the session
    }
    const auto begun = steady_clock::now();
    if (begun - waitingSince > unnoticed) {
        book.giveSignOfLife(); // throws where the session is gone
    }
    hasFailed = true;
    const DeliveryResult result = send(claimed, atSession);
    took = steady_clock::now() - begun;
    hasFailed = holdsOthers(result.meaning);
    if (!hasFailed) {
        turn.dismiss();
        worker.turn.leave(false, took);
    }
    const DeliveryBook::Next next = write(claimed, result, generation);
    worker.count([&](WorkerReport& done) {
        ++done.requests;
        if (!next.isWritten) {
            ++done.late;
        } else if (result.meaning == Meaning::StepDone) {
            done.delivered += claimed.isLastStep() ? 1 : 0;
        } else if (result.meaning == Meaning::Duplicate || result.meaning == Meaning::Refused) {
            ++done.parked;
        }
    });
    return next.task;
}

DeliveryResult Hand::post(const Task& task) const
{
    if (task.step >= task.addresses.size()) {
        return {Meaning::Refused, 0, Message::of("queue.noAddress"), {}, 0, false};
    }
    QHash<QString, QString> headers = task.headers;
    if (!worker.manner.authorization.isEmpty()) {
        headers.insert(QStringLiteral("Authorization"), worker.manner.authorization);
    }
    const QSharedPointer<RestClient> client = MockFactory<RestClient>::create();
    client->setTimeout(worker.manner.requestSeconds);
    return poshost::requestsending::send(*client, task.addresses.at(task.step), task.payload,
                                         headers, task.attemptedBefore);
}

/// While the loyalty server is waited for, the session is left to who shows that the worker lives.
DeliveryResult Hand::send(const Task& task, Session& atSession) const
{
    atSession.unlock();
    const auto back = qScopeGuard([&atSession] { atSession.lock(); });
    return post(task);
}

/// A worker that is frozen shows nothing.
void Hand::showLife(const std::stop_token& ending)
{
    std::mutex own;
    // cppcheck-suppress localMutex ; it guards nothing, the alarm wants one to wait with
    std::unique_lock waiting(own);
    std::condition_variable_any alarm;
    while (!ending.stop_requested()) {
        alarm.wait_for(waiting, ending, worker.manner.laneTimeout / 3, [] { return false; });
        const std::unique_lock atSession(session, std::try_to_lock);
        if (!atSession || !connection.isOpen()) {
            continue; // in use, which the server sees
        }
        try {
            book.giveSignOfLife();
        } catch (const StoreError& error) {
            worker.complain(error.message());
            connection.close();
        }
    }
}

/// An answer is worth some effort: without it the message would be sent again. A session that was
/// lost is replaced and the lane taken again, unless another worker has it.
DeliveryBook::Next Hand::write(Task task, const DeliveryResult& result, int generation)
{
    while (true) {
        try {
            connection.open();
            if (connection.generation() != generation) {
                if (!book.takeAgain(task)) {
                    return {};
                }
                generation = connection.generation();
                task.isProbe = false; // its lock went with the session
            }
            failuresBefore = worker.turn.failures();
            return book.finish(task, result,
                               !worker.isEnding() && worker.turn.hasChance(isAhead()));
        } catch (const StoreError& error) {
            worker.complain(error.message());
            connection.close();
            if (error.certainty() == StoreError::Certainty::Refused || worker.isEnding()) {
                throw;
            }
            rest(afterFailure);
        }
    }
}

} // namespace orvastore
