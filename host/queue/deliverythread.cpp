// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/deliverythread.h"

#include "host/database/database.h"
#include "host/queue/deliverylog_p.h"
#include "host/queue/queuebell.h"
#include "host/queue/queuedelivery.h"
#include "host/services/currenttime.h"

#include <algorithm>
#include <exception>

namespace poshost {

using namespace Qt::StringLiterals;

/// Lets stop reach the delivery for as long as there is one.
class DeliveryThread::Current
{
public:
    Current(DeliveryThread& owner, QueueDelivery& delivery) : thread(owner)
    {
        const std::lock_guard lock(thread.mutex);
        thread.current = &delivery;
        if (thread.stopping) {
            delivery.requestStop();
        }
    }
    ~Current()
    {
        const std::lock_guard lock(thread.mutex);
        thread.current = nullptr;
    }
    Current(const Current&) = delete;
    Current& operator=(const Current&) = delete;

private:
    DeliveryThread& thread;
};

DeliveryThread::DeliveryThread(const QString& file, std::chrono::milliseconds interval)
    : databaseFile(file), poll(interval)
{
    giveSignOfLife();
}

DeliveryThread::~DeliveryThread()
{
    stop();
}

void DeliveryThread::start()
{
    if (!thread.joinable()) {
        stopping = false;
        thread = std::thread(&DeliveryThread::run, this);
    }
}

void DeliveryThread::notify()
{
    const std::lock_guard lock(mutex);
    notified = true;
    wake.notify_all();
}

void DeliveryThread::stop()
{
    {
        const std::lock_guard lock(mutex);
        stopping = true;
        if (current != nullptr) {
            current->requestStop();
        }
        wake.notify_all();
    }
    if (thread.joinable()) {
        thread.join();
    }
}

void DeliveryThread::run()
{
    QString lastProblem;
    while (!isStopping()) {
        try {
            deliverUntilStopped();
        } catch (const std::exception& error) {
            const QString problem = QString::fromUtf8(error.what());
            if (problem != lastProblem) { // a full disk is news once, not every second
                qCWarning(logDelivery).noquote() << problem;
            }
            lastProblem = problem;
            giveSignOfLife();
            waitFor(poll);
        }
    }
    QueueBell::ring(databaseFile);
}

void DeliveryThread::deliverUntilStopped()
{
    Database database(databaseFile);
    QueueDelivery delivery(database);
    const Current announced(*this, delivery);
    delivery.onProgress([this](const DeliveryReport&) { giveSignOfLife(); });
    while (!isStopping()) {
        giveSignOfLife();
        waitFor(deliver(delivery));
    }
}

/// @return how long to wait until the next look at the queue
std::chrono::milliseconds DeliveryThread::deliver(QueueDelivery& delivery) const
{
    const DeliveryReport report = delivery.deliverDue();
    if (!report.nextAttempt.isValid()) {
        return poll;
    }
    const QDateTime now = MockFactory<CurrentTime>::create()->currentDateTime();
    return std::clamp(std::chrono::milliseconds(now.msecsTo(report.nextAttempt)),
                      std::chrono::milliseconds(0), poll);
}

void DeliveryThread::waitFor(std::chrono::milliseconds time)
{
    std::unique_lock lock(mutex);
    wake.wait_for(lock, time, [this] { return stopping || notified; });
    notified = false;
}

void DeliveryThread::giveSignOfLife()
{
    signOfLife = std::chrono::steady_clock::now();
}

std::chrono::milliseconds DeliveryThread::sinceSignOfLife() const
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 signOfLife.load());
}

bool DeliveryThread::isStopping()
{
    const std::lock_guard lock(mutex);
    return stopping;
}

} // namespace poshost
