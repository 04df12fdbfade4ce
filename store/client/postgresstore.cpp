// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/postgresstore.h"

#include "store/books/handingover.h"
#include "store/schema/storeschema.h"

namespace orvastore {

using poshost::Message;

namespace {

/// Whether the server has said no to whatever is asked just now: it is full, busy or read-only, or
/// the store's tables are being put back.
bool isPassing(const QByteArray& state)
{
    const bool hasNoTables = state == "3F000" || state == "42P01" || state == "42883";
    return hasNoTables || state.startsWith("53") || state.startsWith("40") || state == "55P03" ||
           state == "25006";
}

/// A check that only has to wait must not be passed by the next one of its lane: no refusal then.
HandOverEnd endOf(const StoreError& error)
{
    if (error.state().startsWith("57P")) {
        return HandOverEnd::Unknown; // the session was ended, and that may come behind a commit
    }
    if (isPassing(error.state())) {
        return HandOverEnd::Unreachable;
    }
    switch (error.certainty()) {
    case StoreError::Certainty::NothingSent:
        return HandOverEnd::Unreachable;
    case StoreError::Certainty::Refused:
        return HandOverEnd::Refused;
    case StoreError::Certainty::Unknown:
        break;
    }
    return HandOverEnd::Unknown;
}

} // namespace

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

HandOverResult PostgresStore::reach()
{
    try {
        requireUsableSchema();
        return {HandOverEnd::Done, {}};
    } catch (const StoreError& error) {
        return {HandOverEnd::Unreachable, error.message()}; // nothing of a check was sent
    }
}

QList<HandOverResult> PostgresStore::handOver(const QList<HandedCheck>& checks)
{
    QList<HandOverResult> results;
    for (const HandedCheck& check : checks) {
        const HandOverResult reached = reach();
        if (reached.end != HandOverEnd::Done) {
            results.append(reached);
        } else {
            try {
                orvastore::handOver(*connection, check);
                results.append({HandOverEnd::Done, {}});
            } catch (const StoreError& error) {
                results.append({endOf(error), error.message()});
            }
        }
        const HandOverEnd end = results.last().end;
        if (end != HandOverEnd::Done && end != HandOverEnd::Refused) {
            break;
        }
    }
    while (results.size() < checks.size()) {
        results.append({HandOverEnd::Unreachable, results.last().error});
    }
    return results;
}

} // namespace orvastore
