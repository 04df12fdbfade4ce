// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresstore.h"

#include "store/books/handingover.h"
#include "store/client/reaching.h"
#include "store/schema/storeschema.h"

namespace orvastore {

using poshost::Message;

void PostgresStore::open(const StoreSettings& settings)
{
    auto made = std::make_unique<Connection>(settings, Connection::Manner{.byIndexes = true});
    const std::lock_guard guard(mutex);
    connection = std::move(made);
    examined = 0;
    if (interrupted) {
        connection->interrupt();
    }
}

void PostgresStore::interrupt()
{
    const std::lock_guard guard(mutex);
    interrupted = true;
    if (connection) {
        connection->interrupt();
    }
}

void PostgresStore::requireUsableSchema()
{
    if (!connection) {
        throw StoreError(StoreError::Certainty::NothingSent, Message::of("store.string"));
    }
    connection->open();
    if (examined != connection->generation()) {
        storeschema::requireUsable(*connection);
        examined = connection->generation();
    }
}

StoreResult PostgresStore::reach()
{
    try {
        requireUsableSchema();
        return {StoreEnd::Done, {}};
    } catch (const StoreError& error) {
        return {StoreEnd::Unreachable, error.message()}; // nothing of a check was sent
    }
}

/// What is handed over is safe already, and whatever is wrong now the next check will show.
void PostgresStore::noteTill(const HandedCheck& check)
{
    constexpr std::chrono::minutes betweenNotes(1);
    if (!nextNote.hasExpired()) {
        return;
    }
    nextNote.setRemainingTime(betweenNotes);
    try {
        orvastore::noteTill(*connection, check.shop, check.till);
    } catch (const StoreError&) {
        connection->close();
    }
}

QList<StoreResult> PostgresStore::handOver(const QList<HandedCheck>& checks)
{
    QList<StoreResult> results;
    for (const HandedCheck& check : checks) {
        const StoreResult reached = reach();
        if (reached.end != StoreEnd::Done) {
            results.append(reached);
        } else {
            try {
                orvastore::handOver(*connection, check);
                results.append({StoreEnd::Done, {}});
            } catch (const StoreError& error) {
                results.append({endOf(error), error.message(), error.isConflict()});
            }
        }
        const StoreEnd end = results.last().end;
        if (end != StoreEnd::Done && end != StoreEnd::Refused) {
            break;
        }
    }
    if (!results.isEmpty() && results.last().end == StoreEnd::Done) {
        noteTill(checks.last());
    }
    while (results.size() < checks.size()) {
        results.append({StoreEnd::Unreachable, results.last().error});
    }
    return results;
}

} // namespace orvastore
