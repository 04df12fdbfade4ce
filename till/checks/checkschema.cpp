// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/checkschema.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// Version 2: the till's checks and settings.
QStringList tillTables()
{
    return {
        u"CREATE TABLE checks ("
        "id TEXT PRIMARY KEY, number INTEGER, "
        "state TEXT NOT NULL CHECK (state = 'open' OR state = 'suspended' OR state = 'closed' "
        "OR state = 'abandoned'), "
        "type INTEGER, sale_id TEXT, data BLOB, "
        "message_id INTEGER REFERENCES queue_messages(id) ON DELETE SET NULL, "
        "updated_at INTEGER)"_s,
        u"CREATE INDEX checks_sale ON checks(sale_id) WHERE sale_id IS NOT NULL"_s,
        u"CREATE INDEX checks_message ON checks(message_id) WHERE message_id IS NOT NULL"_s,
        u"CREATE TABLE settings (key TEXT PRIMARY KEY, value) WITHOUT ROWID"_s,
    };
}

/// Version 3: the last of tens of thousands of checks is found without reading all of them. When a
/// check was changed stands behind its content, so that only looking there reads everything.
QStringList checkIndex()
{
    return {u"CREATE INDEX checks_recent ON checks(state, type, updated_at)"_s};
}

/// Version 4: which check was changed last is told by a number that counts the changes, whatever
/// the clock said meanwhile; checks of older versions get theirs in the order of their times.
QStringList changeNumbers()
{
    return {
        u"ALTER TABLE checks ADD COLUMN change_number INTEGER"_s,
        u"UPDATE checks SET change_number = counted.number FROM "
        "(SELECT rowid AS counted_row, row_number() OVER (ORDER BY updated_at, rowid) AS number "
        "FROM checks) AS counted WHERE checks.rowid = counted.counted_row"_s,
        u"DROP INDEX checks_recent"_s,
        u"CREATE INDEX checks_changes ON checks(change_number)"_s,
        u"CREATE INDEX checks_last ON checks(state, change_number, type)"_s,
    };
}

/// Version 6: a check is found by its number without reading all of them, and old ones go into the
/// files that are counted here.
QStringList archives()
{
    return {u"CREATE INDEX checks_number ON checks(number)"_s,
            u"CREATE TABLE archives (month TEXT PRIMARY KEY, file TEXT NOT NULL, "
            "length INTEGER NOT NULL, checks INTEGER NOT NULL) WITHOUT ROWID"_s};
}

/// Version 7: suspended checks that were left in the store, or taken up from there.
QStringList leavings()
{
    return {u"CREATE TABLE leavings (check_id TEXT PRIMARY KEY, number INTEGER NOT NULL, "
            "mark TEXT NOT NULL, begun_at INTEGER NOT NULL, content BLOB) WITHOUT ROWID"_s,
            u"CREATE INDEX leavings_unfinished ON leavings(begun_at) "
            "WHERE content IS NOT NULL"_s,
            u"CREATE TABLE takeups (token TEXT PRIMARY KEY, which TEXT NOT NULL, "
            "check_id TEXT) WITHOUT ROWID"_s};
}

/// Version 8: returns whose goods may be reserved in the store, until it knows what became of them.
QStringList reservations()
{
    return {u"CREATE TABLE return_reservations (check_id TEXT PRIMARY KEY, "
            "state TEXT NOT NULL CHECK (state IN ('held', 'releasing', 'closed')), "
            "noted_at INTEGER NOT NULL) WITHOUT ROWID"_s};
}

/// Version 9: whoever asks the store about something that another process of this till has begun
/// says so before.
QStringList askedAgain()
{
    return {u"ALTER TABLE leavings ADD COLUMN asked_again INTEGER NOT NULL DEFAULT 0"_s,
            u"ALTER TABLE takeups ADD COLUMN asked_again INTEGER NOT NULL DEFAULT 0"_s,
            u"DROP INDEX leavings_unfinished"_s,
            u"CREATE INDEX leavings_undecided ON leavings(begun_at, asked_again) "
            "WHERE content IS NOT NULL"_s};
}

/// Version 10: closed checks that no message takes to the store, until it has them.
QStringList silentChecks()
{
    return {u"CREATE TABLE silent_checks (check_id TEXT PRIMARY KEY, "
            "next_try INTEGER NOT NULL DEFAULT 0, error TEXT)"_s};
}

} // namespace

QList<poshost::SchemaStep> checkSchema()
{
    return {{2, u"checks"_s, tillTables()},
            {3, u"checks_recent"_s, checkIndex()},
            {4, u"checks_last"_s, changeNumbers()},
            {6, u"archives"_s, archives()},
            {7, u"leavings"_s, leavings()},
            {8, u"return_reservations"_s, reservations()},
            {9, u"leavings_undecided"_s, askedAgain()},
            {10, u"silent_checks"_s, silentChecks()}};
}

} // namespace till
