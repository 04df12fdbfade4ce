// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/worker/worker.h"

#include "host/services/restclient.h"
#include "store/schema/storeschema.h"

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
constexpr int preparedDays = 7;

} // namespace

Worker::Worker(const StoreSettings& settings, const Manner& given, const Complaint& listener)
    : manner(given), complaint(listener), connection(settings, {given.laneTimeout, true}),
      book(connection, given.name)
{}

void Worker::complain(const Message& what)
{
    if (complaint && !(what == lastComplaint)) {
        complaint(what);
    }
    lastComplaint = what;
}

void Worker::rest(std::chrono::milliseconds time) const
{
    const auto end = steady_clock::now() + time;
    while (!stopping && steady_clock::now() < end) {
        std::this_thread::sleep_for(
            std::min<steady_clock::duration>(end - steady_clock::now(), betweenLooks));
    }
}

void Worker::run()
{
    std::unique_lock atSession(session);
    const std::jthread heart([this](const std::stop_token& ending) { showLife(ending); });
    std::optional<Task> task;
    while (!stopping) {
        try {
            connection.open();
            if (usableSession != connection.generation()) {
                storeschema::requireUsable(connection);
                usableSession = connection.generation();
            }
            keepUp();
            if (!task) {
                task = book.claim();
            }
            lastComplaint = {};
            if (task) {
                task = work(*task, atSession);
            } else if (manner.untilEmpty) {
                return;
            } else {
                rest(betweenLooks);
            }
        } catch (const StoreError& error) {
            task.reset();
            connection.close(); // which frees whatever was held
            complain(error.message());
            if (error.certainty() == StoreError::Certainty::Refused && usableSession == 0) {
                throw;
            }
            rest(afterFailure);
        }
    }
}

/// Days to come are prepared and old ones dropped by whichever worker comes to it.
void Worker::keepUp()
{
    if (steady_clock::now() < nextUpkeep) {
        return;
    }
    nextUpkeep = steady_clock::now() + betweenUpkeeps;
    try {
        connection.run("SELECT orva.prepare_days($1::int)", {Value::number(preparedDays)});
        connection.run("SELECT orva.drop_days($1::int)", {Value::number(manner.keepDays)});
    } catch (const StoreError& error) {
        if (error.certainty() != StoreError::Certainty::Refused) {
            throw;
        }
        complain(error.message()); // somebody uses the tables: next time
    }
}

/// Sends a task and writes down what came of it. @return the next one
std::optional<Task> Worker::work(const Task& claimed, std::unique_lock<std::mutex>& atSession)
{
    const int generation = connection.generation();
    const DeliveryResult result = send(claimed, atSession);
    ++done.requests;
    const DeliveryBook::Next next = write(claimed, result, generation);
    if (!next.isWritten) {
        ++done.late;
    } else if (result.meaning == Meaning::StepDone) {
        done.delivered += claimed.isLastStep() ? 1 : 0;
    } else if (result.meaning == Meaning::Duplicate || result.meaning == Meaning::Refused) {
        ++done.parked;
    }
    return next.task;
}

DeliveryResult Worker::post(const Task& task) const
{
    if (task.step >= task.addresses.size()) {
        return {Meaning::Refused, 0, Message::of("queue.noAddress"), {}, 0, false};
    }
    QHash<QString, QString> headers = task.headers;
    if (!manner.authorization.isEmpty()) {
        headers.insert(QStringLiteral("Authorization"), manner.authorization);
    }
    const QSharedPointer<RestClient> client = MockFactory<RestClient>::create();
    client->setTimeout(manner.requestSeconds);
    return poshost::requestsending::send(*client, task.addresses.at(task.step), task.payload,
                                         headers, task.attemptedBefore);
}

/// While the loyalty server is waited for, the session is left to who shows that the worker lives.
DeliveryResult Worker::send(const Task& task, std::unique_lock<std::mutex>& atSession)
{
    atSession.unlock();
    const auto back = qScopeGuard([&atSession] { atSession.lock(); });
    return post(task);
}

/// A worker that is frozen shows nothing.
void Worker::showLife(const std::stop_token& ending)
{
    std::mutex own;
    // cppcheck-suppress localMutex ; it guards nothing, the alarm wants one to wait with
    std::unique_lock waiting(own);
    std::condition_variable_any alarm;
    while (!ending.stop_requested()) {
        alarm.wait_for(waiting, ending, manner.laneTimeout / 3, [] { return false; });
        const std::unique_lock atSession(session, std::try_to_lock);
        if (!atSession || !connection.isOpen()) {
            continue; // in use, which the server sees
        }
        try {
            book.giveSignOfLife();
        } catch (const StoreError& error) {
            complain(error.message());
            connection.close();
        }
    }
}

/// An answer is worth some effort: without it the message would be sent again. A session that was
/// lost is replaced and the lane taken again, unless another worker has it.
DeliveryBook::Next Worker::write(Task task, const DeliveryResult& result, int generation)
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
            return book.finish(task, result, !stopping);
        } catch (const StoreError& error) {
            complain(error.message());
            connection.close();
            if (error.certainty() == StoreError::Certainty::Refused || stopping) {
                throw;
            }
            rest(afterFailure);
        }
    }
}

} // namespace orvastore
