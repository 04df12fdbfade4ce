// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresbooks.h"

#include "store/client/reaching.h"
#include "store/schema/storeschema.h"

#include <algorithm>

namespace orvastore {

using poshost::Message;

void PostgresBooks::open(const StoreSettings& settings)
{
    auto made = std::make_unique<Connection>(settings, Connection::Manner{.byIndexes = true});
    const std::lock_guard guard(mutex);
    connection = std::move(made);
    limit = std::chrono::seconds(std::max(settings.timeoutSeconds, 1));
    examined = 0;
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

StoreResult PostgresBooks::asking(const std::function<void(Connection&)>& ask)
{
    try {
        if (!connection) {
            throw StoreError(StoreError::Certainty::NothingSent, Message::of("store.string"));
        }
        // connecting, looking at the tables and asking have one time together
        connection->setEnd(std::min(QDeadlineTimer(limit), end));
        connection->open();
        if (examined != connection->generation()) {
            storeschema::requireUsable(*connection);
            examined = connection->generation();
        }
        ask(*connection);
        return {StoreEnd::Done, {}};
    } catch (const StoreError& error) {
        return {endOf(error), error.message()};
    }
}

} // namespace orvastore
