// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/databaseschema_p.h"

#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/databaseerror_p.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"

#include <QList>
#include <QStringList>
#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;

namespace databaseschema {

namespace {

/// Version 1: the outgoing queue. Times are milliseconds since 1970 in UTC.
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
/// the clock said meanwhile; checks of older versions get theirs in the order of their times. And a
/// message's content is followed by what tells whether it is still the one that was stored.
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
        u"ALTER TABLE queue_bodies ADD COLUMN digest BLOB"_s,
    };
}

/// A step to the next version, and a table or an index that only files from that version on have,
/// or those up to the one behind it.
struct Step
{
    QString mark;
    QStringList statements;
};

const QList<Step>& steps()
{
    static const QList<Step> all{{u"queue_messages"_s, queueTables()},
                                 {u"checks"_s, tillTables()},
                                 {u"checks_recent"_s, checkIndex()},
                                 {u"checks_last"_s, changeNumbers()}};
    return all;
}

/// Whether a file of that version has these tables and indices.
bool fits(int version, const QStringList& names)
{
    if (version <= 0) {
        return version == 0 && names.isEmpty();
    }
    const auto later = steps().cbegin() + version;
    return names.contains(steps().at(version - 1).mark) &&
           std::none_of(later, steps().cend(),
                        [&](const Step& step) { return names.contains(step.mark); });
}

} // namespace

int newestVersion()
{
    return static_cast<int>(steps().size());
}

int checkedVersion(Database& database)
{
    // both in one look: another process may be bringing the file up to date
    Statement statement(database, u"SELECT user_version, (SELECT coalesce(group_concat(name), '') "
                                  "FROM sqlite_schema) FROM pragma_user_version"_s);
    statement.next();
    const int version = statement.value(0).toInt();
    if (version > newestVersion()) {
        throw BasicException(databaseerror::tooNew(database.fileName(), version, newestVersion()));
    }
    if (!fits(version, statement.value(1).toString().split(u',', Qt::SkipEmptyParts))) {
        throw BasicException(databaseerror::wrongVersion(database.fileName(), version));
    }
    return version;
}

void bringUpToDate(Database& database)
{
    if (checkedVersion(database) == newestVersion()) {
        return;
    }
    Transaction transaction(database);
    // another process may have been quicker
    for (int version = checkedVersion(database); version < newestVersion(); ++version) {
        for (const QString& sql : steps().at(version).statements) {
            database.execute(sql);
        }
    }
    database.execute(u"PRAGMA user_version = %1"_s.arg(newestVersion()));
    transaction.commit();
}

} // namespace databaseschema

} // namespace poshost
