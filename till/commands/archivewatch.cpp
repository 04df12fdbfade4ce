// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/archivewatch.h"

#include "host/database/database.h"
#include "till/checks/checkarchiving.h"
#include "till/reason.h"

#include <QElapsedTimer>
#include <QLoggingCategory>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace till {
namespace {

Q_LOGGING_CATEGORY(logArchive, "poshost.archive", QtInfoMsg)

/// A day's checks become old one after the other.
constexpr std::chrono::hours untilNextLook(1);
/// Who sells meanwhile has the disk nearly for itself.
constexpr int restsAStep = 10;

} // namespace

ArchiveWatch::ArchiveWatch(const QString& databaseFile, int days)
    : database(databaseFile), keepDays(days),
      thread([this](const std::stop_token& ended) { run(ended); })
{}

void ArchiveWatch::run(const std::stop_token& ended) const
{
    while (!ended.stop_requested()) {
        try {
            work(ended);
        } catch (const std::exception& error) { // a full disk, say: nothing was moved
            qCWarning(logArchive).noquote() << reasonOf(error);
        }
        rest(untilNextLook, ended);
    }
}

/// As long as there is something to do.
void ArchiveWatch::work(const std::stop_token& ended) const
{
    poshost::Database opened(database);
    CheckArchiving archiving(opened, keepDays);
    bool isBusy = true;
    while (isBusy && !ended.stop_requested()) {
        QElapsedTimer time;
        time.start();
        const bool hasMoved = archiving.step() > 0;
        isBusy = archiving.giveBackPages() || hasMoved;
        constexpr qint64 shortest = 50;
        rest(std::chrono::milliseconds(std::max(shortest, restsAStep * time.elapsed())), ended);
    }
}

void ArchiveWatch::rest(std::chrono::milliseconds time, const std::stop_token& ended) const
{
    std::unique_lock lock(resting);
    wake.wait_for(lock, ended, time, [] { return false; });
}

} // namespace till
