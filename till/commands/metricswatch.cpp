// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/metricswatch.h"

#include "host/database/database.h"
#include "till/reason.h"
#include "till/screen/metrics.h"
#include "till/support/wholefile.h"

#include <QLoggingCategory>

namespace till {
namespace {

Q_LOGGING_CATEGORY(logMetrics, "poshost.metrics", QtInfoMsg)

} // namespace

MetricsWatch::MetricsWatch(const QString& databaseFile, const QString& file,
                           std::chrono::milliseconds interval)
    : database(databaseFile), target(file), look(interval),
      thread([this](const std::stop_token& ended) { run(ended); })
{}

void MetricsWatch::write(poshost::Database& database, const QString& file)
{
    wholefile::publish(file, metrics::text(database));
}

void MetricsWatch::run(const std::stop_token& ended) const
{
    while (!ended.stop_requested()) {
        try {
            poshost::Database opened(database);
            write(opened, target);
        } catch (const std::exception& error) { // a full disk, say: the monitoring sees old figures
            qCWarning(logMetrics).noquote() << reasonOf(error);
        }
        std::unique_lock lock(resting);
        wake.wait_for(lock, ended, look, [] { return false; });
    }
}

} // namespace till
