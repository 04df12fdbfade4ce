// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/queuedelivery.h"

#include "host/config/hostkeys_p.h"
#include "host/config/knownkeys.h"
#include "host/database/database.h"
#include "host/database/filelock.h"
#include "host/queue/deliveryjournal_p.h"
#include "host/queue/deliverylog_p.h"
#include "host/queue/handover_p.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/parallelsending_p.h"
#include "host/services/config.h"
#include "host/services/currenttime.h"
#include "host/services/restclient.h"

#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;
using deliverypolicy::Meaning;

namespace {

constexpr int secondsBetweenRemovals = 3600;
/// As many as the pool of connections keeps.
constexpr int maxConnections = 16;

int configured(const QString& key, int defaultValue)
{
    const Config* config = Singleton<Config>::instance;
    return config == nullptr ? defaultValue : config->getInt(key, defaultValue);
}

int connections()
{
    return std::clamp(configured(u"queue:connections"_s, 1), 1, maxConnections);
}

/// 0, which leaves it to the client, where no plug-in says how long its server is waited for.
int exchangeSeconds()
{
    const std::optional<ConfigKey> key = knownkeys::find(ConfigKey::Use::Timeout);
    return key ? configured(key->name(), key->defaultValue.toInt()) : 0;
}

QDateTime now()
{
    return MockFactory<CurrentTime>::create()->currentDateTime();
}

bool isParking(Meaning meaning)
{
    return meaning == Meaning::Duplicate || meaning == Meaning::Refused;
}

QString nameOf(const DeliveryTask& task)
{
    return u"Очередь %1, сообщение %2, шаг %3 из %4: "_s.arg(task.queue)
        .arg(task.messageId)
        .arg(task.step + 1)
        .arg(task.addresses.size());
}

void log(const DeliveryTask& task, const DeliveryResult& result)
{
    if (result.meaning == Meaning::StepDone) {
        qCDebug(logDelivery).noquote() << nameOf(task) + u"HTTP %1"_s.arg(result.status);
    } else {
        qCWarning(logDelivery).noquote() << nameOf(task) + result.error.ru();
    }
}

} // namespace

QueueDelivery::QueueDelivery(Database& owner, quint64 seed)
    : database(owner), journal(std::make_unique<DeliveryJournal>(owner, seed)),
      handOver(std::make_unique<HandOver>(owner, seed))
{}

QueueDelivery::~QueueDelivery() = default;

void QueueDelivery::onProgress(const std::function<void(const DeliveryReport&)>& listener)
{
    progressed = listener;
}

DeliveryReport QueueDelivery::deliverDue()
{
    DeliveryReport report;
    const FileLock lock(database.fileName() + u".delivery-lock"_s);
    if (!lock.isHeld()) {
        report.elsewhere = true;
        return report;
    }
    const OwnShare share = handOverWhatIsDue(report);
    if (!share.hasStore || share.fromAge || handOver->hasOwn()) {
        deliverWhatIsDue(share, report);
    }
    if (isStopping()) {
        return report;
    }
    report.parked += journal->takeParkedUnsent();
    removeOld();
    if (const std::optional<qint64> end = journal->nextWaitEnd()) {
        const QDateTime time = QDateTime::fromMSecsSinceEpoch(*end);
        report.nextAttempt =
            report.nextAttempt.isValid() ? std::min(report.nextAttempt, time) : time;
    }
    return report;
}

/// @return what is left to this delivery
OwnShare QueueDelivery::handOverWhatIsDue(DeliveryReport& report)
{
    const std::optional<StoreSetup> store = StoreSetup::configured();
    if (!store) {
        return {};
    }
    const HandOverReport handed = handOver->run(*store, [&](int messages) {
        report.handedOver = messages;
        if (progressed) {
            progressed(report);
        }
        return !isStopping();
    });
    report.handedOver = handed.handed;
    report.parked += handed.parked;
    if (handed.nextAttempt) {
        report.nextAttempt = QDateTime::fromMSecsSinceEpoch(*handed.nextAttempt);
    }
    return {true, store->fallbackMilliseconds};
}

/// The journal belongs to the database's thread, which is this one: it hands the requests out and
/// writes down what became of them.
void QueueDelivery::deliverWhatIsDue(const OwnShare& share, DeliveryReport& report)
{
    {
        const std::lock_guard guard(mutex);
        breakingOff = stopping;
    }
    journal->begin(share);
    ParallelSending sending(connections(), [this](const DeliveryTask& task) { return send(task); });
    try {
        fill(sending);
        while (sending.underWay() > 0) {
            if (takeAnswer(sending, report)) {
                fill(sending);
            }
        }
    } catch (...) {
        // what is under way has been counted as attempted, and its answer cannot be written down
        const std::lock_guard guard(mutex);
        breakOff(guard);
        throw;
    }
}

void QueueDelivery::fill(ParallelSending& sending)
{
    while (sending.hasRoom() && !isStopping()) {
        const std::optional<DeliveryTask> task = journal->takeNext();
        if (!task) {
            return;
        }
        if (isStopping()) {
            journal->forget(*task);
            return;
        }
        sending.start(*task);
    }
}

/// @return whether more may be under way than is now
bool QueueDelivery::takeAnswer(ParallelSending& sending, DeliveryReport& report)
{
    const auto [task, result] = sending.takeFinished();
    ++report.requests;
    if (isStopping() && result.meaning == Meaning::ServerAway) {
        return false; // broken off: nothing is known about the server
    }
    log(task, result);
    const bool finished = result.meaning == Meaning::StepDone && task.isLastStep();
    report.delivered += finished ? 1 : 0;
    report.parked += isParking(result.meaning) ? 1 : 0;
    const std::optional<DeliveryTask> next = journal->recordAndTakeNext(task, result);
    if (progressed) {
        progressed(report);
    }
    if (next && isStopping()) {
        journal->forget(*next);
    } else if (next) {
        sending.start(*next);
    }
    return sending.hasRoom();
}

DeliveryResult QueueDelivery::send(const DeliveryTask& task)
{
    const QSharedPointer<RestClient> client = MockFactory<RestClient>::create();
    {
        const std::lock_guard guard(mutex);
        underWay.append(client.data());
        if (breakingOff) {
            client->abort();
        }
    }
    client->setTimeout(exchangeSeconds());
    DeliveryResult result = requestsending::send(*client, task.addresses.at(task.step),
                                                 task.payload, task.headers, task.attemptedBefore);
    {
        const std::lock_guard guard(mutex);
        underWay.removeOne(client.data());
    }

    return result;
}

void QueueDelivery::removeOld()
{
    const QDateTime time = now();
    if (lastRemoval.isValid() && lastRemoval.secsTo(time) < secondsBetweenRemovals &&
        lastRemoval <= time) {
        return;
    }
    lastRemoval = time;
    const int removed = OutgoingQueue(database).removeDelivered(
        configured(u"queue:keepDeliveredDays"_s, defaultKeepDays));
    if (removed == OutgoingQueue::removedAtOnce) {
        lastRemoval = QDateTime(); // more of them go next time: a till may be waiting to write
    }
}

bool QueueDelivery::isStopping()
{
    const std::lock_guard guard(mutex);
    return stopping;
}

std::chrono::seconds QueueDelivery::requestTimeout()
{
    const int seconds = exchangeSeconds();
    return std::chrono::seconds(seconds > 0 ? seconds : RestClient::defaultTimeoutSeconds);
}

void QueueDelivery::requestStop()
{
    const std::lock_guard guard(mutex);
    stopping = true;
    handOver->interrupt();
    breakOff(guard);
}

void QueueDelivery::breakOff(const std::lock_guard<std::mutex>&)
{
    breakingOff = true;
    for (RestClient* client : underWay) {
        client->abort();
    }
}

} // namespace poshost
