// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/schemastep.h"

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

QStringList queueTables()
{
    return {
        // who a queue's messages are sent as; the secret stands here once and goes with the last
        // message that needs it
        u"CREATE TABLE queue_accounts ("
        "id INTEGER PRIMARY KEY, queue TEXT NOT NULL, authorization TEXT NOT NULL, "
        "paused_status INTEGER, paused_at INTEGER, probe_at INTEGER)"_s,
        // Small rows that change often, apart from the bodies, which never change. For an IN with
        // three values SQLite would build a temporary table each time it checks a row.
        u"CREATE TABLE queue_messages ("
        "id INTEGER PRIMARY KEY AUTOINCREMENT, queue TEXT NOT NULL, "
        "account_id INTEGER REFERENCES queue_accounts(id), extra TEXT NOT NULL, "
        "state TEXT NOT NULL "
        "CHECK (state = 'waiting' OR state = 'parked' OR state = 'delivered'), "
        "steps INTEGER NOT NULL, steps_done INTEGER NOT NULL DEFAULT 0, "
        "step_attempts INTEGER NOT NULL DEFAULT 0, attempts INTEGER NOT NULL DEFAULT 0, "
        "server_errors INTEGER NOT NULL DEFAULT 0, "
        "attempted_at INTEGER, next_attempt_at INTEGER, "
        "last_status INTEGER, last_error TEXT, last_answer TEXT, "
        "created_at INTEGER NOT NULL, delivered_at INTEGER, "
        "CHECK ((state = 'delivered') = (account_id IS NULL)))"_s,
        u"CREATE INDEX queue_undelivered ON queue_messages(account_id, id) "
        "WHERE account_id IS NOT NULL"_s,
        u"CREATE TABLE queue_bodies ("
        "message_id INTEGER PRIMARY KEY REFERENCES queue_messages(id) ON DELETE CASCADE, "
        "headers TEXT NOT NULL, urls TEXT NOT NULL, payload BLOB NOT NULL)"_s,
        u"CREATE TABLE queue_dependencies ("
        "message_id INTEGER NOT NULL REFERENCES queue_messages(id) ON DELETE CASCADE, "
        "depends_on INTEGER NOT NULL REFERENCES queue_messages(id) ON DELETE CASCADE, "
        "PRIMARY KEY (message_id, depends_on)) WITHOUT ROWID"_s,
        u"CREATE INDEX queue_dependents ON queue_dependencies(depends_on)"_s,
        // a queue that waits as a whole
        u"CREATE TABLE queue_holds ("
        "queue TEXT PRIMARY KEY, reason TEXT NOT NULL CHECK (reason IN ('server', 'address')), "
        "failures INTEGER NOT NULL, since INTEGER NOT NULL, until INTEGER NOT NULL) "
        "WITHOUT ROWID"_s,
    };
}

/// A message's content is followed by what tells whether it is still the one that was stored.
QStringList digests()
{
    return {u"ALTER TABLE queue_bodies ADD COLUMN digest BLOB"_s};
}

/// Messages of different lanes may be sent at the same time. Those that were stored before there
/// were any share the lane 0, and so does what a host puts into none.
QStringList lanes()
{
    return {u"ALTER TABLE queue_messages ADD COLUMN lane INTEGER NOT NULL DEFAULT 0"_s,
            // the same index, renamed: its name tells which version the file has
            u"DROP INDEX queue_undelivered"_s,
            u"CREATE INDEX queue_due ON queue_messages(account_id, id) "
            "WHERE account_id IS NOT NULL"_s};
}

/// When handing a message over to the store was begun: from then on the till does not deliver it
/// itself. 0 is a message that is the till's own for good, since it belongs to no check. The index
/// holds only what is neither untouched nor done.
QStringList handingOver()
{
    return {u"ALTER TABLE queue_messages ADD COLUMN handover INTEGER"_s,
            u"ALTER TABLE queue_messages ADD COLUMN handed_again_at INTEGER"_s,
            u"CREATE INDEX queue_handing ON queue_messages(handover, id) "
            "WHERE handover IS NOT NULL AND account_id IS NOT NULL"_s};
}

QList<SchemaStep> queueSchema()
{
    return {{1, u"queue_messages"_s, queueTables()},
            {4, {}, digests()},
            {5, u"queue_due"_s, lanes()},
            {6, u"queue_handing"_s, handingOver()}};
}

/// The queue is the host's own: before the program begins, so that it is part of every file and its
/// steps are the first of a version.
[[maybe_unused]] const bool isRegistered = [] {
    registerSchema(u"queue"_s, queueSchema());
    return true;
}();

} // namespace

} // namespace poshost
