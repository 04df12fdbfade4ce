// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/commands/storemetrics.h"

#include "store/books/storestatus.h"

#include <QElapsedTimer>

#include <algorithm>
#include <array>

namespace orvastore {

namespace {

using prometheus::ClientMetric;
using prometheus::MetricFamily;
using prometheus::MetricType;

/// Whoever writes a meaning into the store, these alone become labels.
struct Reason
{
    const char* meaning;
    const char* label;
};
constexpr std::array reasons{
    Reason{"ServerAway", "server_away"},
    Reason{"ServerError", "server_error"},
    Reason{"WrongAuthorization", "authorization"},
    Reason{"WrongAddress", "address"},
    Reason{"Refused", "refused"},
    Reason{"Duplicate", "duplicate"},
};

ClientMetric valued(double value)
{
    ClientMetric metric;
    metric.gauge.value = value;
    return metric;
}

ClientMetric labelled(const char* name, const std::string& label, double value)
{
    ClientMetric metric = valued(value);
    metric.label.push_back({name, label});
    return metric;
}

MetricFamily family(const char* name, const char* help, std::vector<ClientMetric> metrics)
{
    return {name, help, MetricType::Gauge, std::move(metrics)};
}

MetricFamily single(const char* name, const char* help, double value)
{
    return family(name, help, {valued(value)});
}

MetricFamily failuresOf(const StoreStatus& status)
{
    std::vector<ClientMetric> metrics;
    qint64 others = 0;
    for (const StoreStatus::Failures& failed : status.recentFailures) {
        others += failed.count;
    }
    for (const Reason& reason : reasons) {
        qint64 count = 0;
        for (const StoreStatus::Failures& failed : status.recentFailures) {
            count += failed.meaning == QLatin1StringView(reason.meaning) ? failed.count : 0;
        }
        others -= count;
        metrics.push_back(labelled("reason", reason.label, double(count)));
    }
    metrics.push_back(labelled("reason", "other", double(others)));
    return family("orva_store_recent_failures",
                  "Attempts of the last 5 minutes that failed, by reason", std::move(metrics));
}

MetricFamily silencesOf(const StoreStatus& status)
{
    constexpr std::array<qint64, 3> limits{15 * 60, 3600, 86400};
    std::vector<ClientMetric> metrics;
    for (const qint64 limit : limits) {
        const auto silent =
            std::count_if(status.tills.cbegin(), status.tills.cend(),
                          [limit](const auto& till) { return till.silentSeconds > limit; });
        metrics.push_back(labelled("longer_than_seconds", std::to_string(limit), double(silent)));
    }
    return family("orva_store_silent_tills",
                  "Tills whose last hand-over is longer ago; 30 days later they are taken for gone",
                  std::move(metrics));
}

std::vector<MetricFamily> familiesOf(const StoreStatus& status)
{
    return {
        single("orva_store_up", "Whether the store can be asked", 1),
        single("orva_store_lanes_waiting", "Lanes with messages that wait", double(status.lanes)),
        single("orva_store_messages_waiting",
               "Messages that wait; reckoned from a sample above 10000 lanes",
               double(status.messages)),
        single("orva_store_oldest_message_seconds",
               "Age of the oldest message of the lanes that are next",
               double(status.oldestSeconds)),
        family("orva_store_parked_messages", "Messages that are left out of the delivery",
               {labelled("state", "to_be_looked_at", double(status.parked)),
                labelled("state", "behind_another", double(status.behindParked))}),
        single("orva_store_held_queues", "Queues that wait for the loyalty server or its address",
               double(status.heldQueues)),
        single("orva_store_paused_accounts", "Credentials that the loyalty server refuses",
               double(status.pausedAccounts)),
        single("orva_store_recent_attempts", "Requests begun within the last 5 minutes",
               double(status.recentAttempts)),
        single("orva_store_recent_deliveries", "Messages delivered within the last 5 minutes",
               double(status.recentDeliveries)),
        failuresOf(status),
        single("orva_store_tills", "Tills that have handed over within 30 days",
               double(status.tills.size())),
        silencesOf(status),
    };
}

} // namespace

std::vector<MetricFamily> StoreMetrics::Collect() const
{
    const std::lock_guard lock(mutex);
    QElapsedTimer clock;
    clock.start();
    try {
        std::vector<MetricFamily> families = familiesOf(StoreStatus::of(connection));
        constexpr double millisecondsOfSecond = 1000;
        families.push_back(single("orva_store_asking_seconds", "How long the store took to answer",
                                  double(clock.elapsed()) / millisecondsOfSecond));
        return families;
    } catch (const std::exception&) {
        connection.close();
        return {single("orva_store_up", "Whether the store can be asked", 0)};
    }
}

} // namespace orvastore
