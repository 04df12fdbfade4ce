// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/databaseexamination.h"

#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/databaseerror_p.h"
#include "host/database/databaseschema_p.h"
#include "host/database/statement.h"
#include "host/queue/outgoingqueue.h"

#include <QFile>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

using Integrity = DatabaseExamination::Integrity;

QVariant valueOf(Database& database, const QString& sql)
{
    Statement statement(database, sql);
    return statement.next() ? statement.value(0) : QVariant();
}

void keepFirst(std::optional<QueueEntry>& first, const QueueEntry& entry)
{
    if (!first) {
        first = entry;
    }
}

void lookAtQueue(Database& database, DatabaseExamination& found)
{
    OutgoingQueue queue(database);
    found.counts = queue.counts();
    for (const QueueEntry& entry : queue.list()) {
        keepFirst(entry.state == QueueState::Parked   ? found.firstParked
                  : entry.state == QueueState::Paused ? found.firstPaused
                                                      : found.firstWaiting,
                  entry);
    }
}

void look(Database& database, const QDeadlineTimer& deadline, DatabaseExamination& found)
{
    found.schemaVersion = valueOf(database, u"PRAGMA user_version"_s).toInt();
    found.integrity = Integrity::Unfinished; // until the check has come to its end
    found.isTillFile = valueOf(database, u"SELECT count(*) FROM sqlite_master "
                                         "WHERE name = 'queue_messages'"_s)
                           .toInt() == 1;
    if (found.isTillFile && found.schemaVersion <= found.newestVersion &&
        databaseschema::checkedVersion(database) == found.newestVersion) {
        lookAtQueue(database, found);
    }
    const QString said = valueOf(database, u"PRAGMA integrity_check(1)"_s).toString();
    if (deadline.hasExpired()) {
        return; // what was broken off may call itself sound
    }
    found.integrity = said == "ok"_L1 ? Integrity::Sound : Integrity::Damaged;
    if (found.integrity == Integrity::Damaged) {
        found.trouble = databaseerror::damaged(database.fileName(), said).message();
    }
}

DatabaseExamination examine(const QString& fileName, const QDeadlineTimer& deadline)
{
    DatabaseExamination found;
    found.newestVersion = Database::schemaVersion();
    std::unique_ptr<Database> database;
    try {
        database = Database::openForReading(fileName, deadline);
        look(*database, deadline, found);
    } catch (const BasicException& error) {
        if (deadline.hasExpired()) {
            found.integrity = Integrity::Unfinished;
        } else {
            found.integrity = found.integrity == Integrity::Unfinished ? Integrity::Damaged
                                                                       : Integrity::Unreadable;
            found.trouble = error.tr().message();
        }
    }
    return found;
}

} // namespace

DatabaseExamination DatabaseExamination::of(const QString& fileName, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    const QString log = fileName + u"-wal"_s;
    const bool wasClosed = !QFile::exists(log);
    const DatabaseExamination found = examine(fileName, deadline);
    // a till that began to write meanwhile may have been seen in part
    return wasClosed && QFile::exists(log) ? examine(fileName, deadline) : found;
}

} // namespace poshost
