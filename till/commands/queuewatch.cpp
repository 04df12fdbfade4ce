// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/queuewatch.h"

#include "host/queue/deliverythread.h"
#include "host/queue/queuebell.h"
#include "host/queue/queuedelivery.h"
#include "till/commands/archivewatch.h"
#include "till/commands/metricswatch.h"
#include "till/commands/stopsignals.h"
#include "till/commands/suspendedwatch.h"
#include "till/exitcode.h"

#include <QFileInfo>

#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <poll.h>
#include <stop_token>
#include <thread>

namespace till {
namespace {

/// Ends the whole process unless this object ends in time. A request under way is broken off only
/// when the transport looks up, which takes up to a second. Whoever asked this process to end does
/// not wait for that: however it ends, nothing is lost, and the step under way counts as attempted.
class Patience
{
public:
    Patience()
        : thread([this](const std::stop_token& ended) {
              std::unique_lock lock(mutex);
              constexpr std::chrono::milliseconds time(700);
              if (!wake.wait_for(lock, ended, time, [&] { return ended.stop_requested(); })) {
                  std::_Exit(int(ExitCode::Ok));
              }
          })
    {}

private:
    std::mutex mutex;
    std::condition_variable_any wake;
    std::jthread thread; ///< last: it uses the others, and ends first
};

} // namespace

QueueWatch::QueueWatch(const QString& databaseFile, std::chrono::milliseconds interval)
    : database(databaseFile), look(interval)
{}

void QueueWatch::run()
{
    const StopSignals stop;
    poshost::QueueBell bell(database);
    poshost::DeliveryThread delivery(database, look);
    delivery.start();
    std::optional<ArchiveWatch> archive;
    if (keepDays) {
        archive.emplace(database, *keepDays); // behind the signals, which it must not be given
    }
    std::optional<MetricsWatch> metrics;
    if (!metricsFile.isEmpty()) {
        metrics.emplace(database, metricsFile);
    }
    std::optional<SuspendedWatch> suspended(std::in_place, database, SharedStore::configured());
    manager.tell("READY=1\nSTATUS=Delivers " + QFileInfo(database).fileName().toUtf8());
    waitUntilStopped(stop.descriptor(), bell, delivery);
    manager.tell("STOPPING=1");
    const Patience patience;
    suspended.reset();
    metrics.reset();
    archive.reset();
    delivery.stop();
}

void QueueWatch::waitUntilStopped(int stopSignals, poshost::QueueBell& bell,
                                  poshost::DeliveryThread& delivery) const
{
    // twice in the manager's interval, so that a late one does no harm
    const int interval = manager.watchdog() ? int(manager.watchdog()->count() / 2) : -1;
    pollfd awaited[] = {{stopSignals, POLLIN, 0}, {bell.descriptor(), POLLIN, 0}};
    while ((awaited[0].revents & POLLIN) == 0) {
        tellThatAlive(delivery);
        // interrupted: whatever has not been seen is seen by the next one
        static_cast<void>(::poll(awaited, std::size(awaited), interval));
        if ((awaited[1].revents & POLLIN) != 0) {
            bell.clear();
            delivery.notify();
        }
    }
}

void QueueWatch::tellThatAlive(const poshost::DeliveryThread& delivery) const
{
    // twice what may pass between two signs of life, so that a busy machine is not taken for one
    // that stands still
    const auto longestSilence = 2 * (look + poshost::QueueDelivery::requestTimeout());
    if (manager.watchdog() && delivery.sinceSignOfLife() < longestSilence) {
        manager.tell("WATCHDOG=1");
    }
}

} // namespace till
