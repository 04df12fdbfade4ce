// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/suspendedwatch.h"

#include "host/database/database.h"
#include "till/checks/checkstore.h"
#include "till/reason.h"
#include "till/sharing/suspendedsharing.h"

#include <QLoggingCategory>
#include <QSet>

namespace till {
namespace {

Q_LOGGING_CATEGORY(logSuspended, "poshost.suspended", QtInfoMsg)

void settle(const QString& file, SharedStore& store, QSet<QString>& seen)
{
    const auto opened = QSharedPointer<poshost::Database>::create(file);
    CheckStore checks(opened);
    QStringList notices;
    SuspendedSharing(store, *opened, checks).settleLeftBehind(seen, notices);
    for (const QString& notice : std::as_const(notices)) {
        qCWarning(logSuspended).noquote() << notice;
    }
}

} // namespace

SuspendedWatch::SuspendedWatch(const QString& databaseFile, std::unique_ptr<SharedStore> shared,
                               std::chrono::milliseconds interval)
    : database(databaseFile), store(std::move(shared)), look(interval),
      thread([this](const std::stop_token& ended) { run(ended); })
{}

void SuspendedWatch::run(const std::stop_token& ended) const
{
    QSet<QString> seen;
    while (store != nullptr && !ended.stop_requested()) {
        try {
            settle(database, *store, seen);
        } catch (const std::exception& error) { // it is asked again
            qCWarning(logSuspended).noquote() << reasonOf(error);
        }
        std::unique_lock lock(resting);
        wake.wait_for(lock, ended, look, [] { return false; });
    }
}

} // namespace till
