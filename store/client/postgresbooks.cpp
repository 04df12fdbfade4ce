// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresbooks.h"

#include "store/client/reaching.h"
#include "store/schema/storeschema.h"

#include <QElapsedTimer>
#include <QScopeGuard>

#include <algorithm>

namespace orvastore {

using poshost::Message;

void PostgresBooks::open(const StoreSettings& settings)
{
    auto made = std::make_unique<Connection>(settings, Connection::Manner{.byIndexes = true});
    const std::lock_guard guard(mutex);
    connection = std::move(made);
    examined = 0;
    timeout = std::chrono::seconds(std::max(settings.timeoutSeconds, 1));
    if (interrupted) {
        connection->interrupt();
    }
}

void PostgresBooks::interrupt()
{
    const std::lock_guard guard(mutex);
    interrupted = true;
    if (connection) {
        connection->interrupt();
    }
}

void PostgresBooks::allow(std::chrono::milliseconds altogether)
{
    allowed = altogether;
}

StoreResult PostgresBooks::asking(const std::function<void(Connection&)>& ask)
{
    if (allowed && allowed->count() <= 0) {
        return {StoreEnd::Unreachable, trouble};
    }
    QElapsedTimer time;
    time.start();
    const auto count = qScopeGuard([&] {
        if (allowed) {
            *allowed -= std::chrono::milliseconds(time.elapsed());
        }
    });
    try {
        if (!connection) {
            throw StoreError(StoreError::Certainty::NothingSent, Message::of("store.string"));
        }
        // connecting, looking at the tables and asking have one time together
        connection->setEnd(
            std::min(QDeadlineTimer(std::min(timeout, allowed.value_or(timeout))), end));
        connection->open();
        if (examined != connection->generation()) {
            storeschema::requireUsable(*connection);
            examined = connection->generation();
        }
        ask(*connection);
        return {StoreEnd::Done, {}};
    } catch (const StoreError& error) {
        trouble = error.message();
        return {endOf(error), error.message(), error.isConflict()};
    }
}

} // namespace orvastore
