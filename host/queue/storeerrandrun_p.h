// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"
#include "host/queue/storesetup.h"

#include <QSharedPointer>
#include <QtGlobal>
#include <mutex>
#include <optional>

namespace poshost {

class Database;

/// Does the registered errands at the configured store, on the thread that delivers. The file is
/// not locked while the store is waited for.
class StoreErrandRun
{
public:
    explicit StoreErrandRun(Database& owner) : database(owner) {}

    /// Does what is due, and waits after a failure.
    /// @return when to look again, milliseconds since 1970; nothing when there is nothing to do
    /// @throws BasicException "databaseError"
    std::optional<qint64> run(const StoreSetup& setup);
    /// Makes run, now and from now on, return within about a second. Any thread; does not wait.
    void interrupt();

private:
    bool prepare(const StoreSetup& setup);
    void postpone(const Message& why);

    Database& database;
    qint64 nextTry = 0;
    Message lastTrouble; ///< in the log already

    std::mutex mutex; ///< guards what follows, which interrupt uses
    QSharedPointer<orvastore::SharedBooks> books;
    bool interrupted = false;
};

} // namespace poshost
