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
#include <QFileInfo>
#include <QStringList>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

using Integrity = DatabaseExamination::Integrity;

/// What SQLite says of a file that is.
const QString sound = u"ok"_s;
/// A file of so many bytes is read from end to end in a moment.
constexpr qint64 largestWhole = 32LL * 1024 * 1024;

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

/// What is wrong with the queue's tables, which keep nothing for good, however much others keep in
/// the file.
QString troubleOfQueue(Database& database)
{
    QStringList tables;
    {
        Statement names(database, u"SELECT name FROM sqlite_master WHERE type = 'table' AND "
                                  "name LIKE 'queue\\_%' ESCAPE '\\'"_s);
        while (names.next()) {
            tables.append(names.value(0).toString());
        }
    }
    QString said = sound;
    for (qsizetype i = 0; i < tables.size() && said == sound; ++i) {
        said = valueOf(database, u"PRAGMA integrity_check('%1')"_s.arg(tables.at(i))).toString();
    }
    return said;
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
    const bool isLarge = QFileInfo(database.fileName()).size() > largestWhole;
    const QString said = isLarge ? troubleOfQueue(database)
                                 : valueOf(database, u"PRAGMA integrity_check(1)"_s).toString();
    if (deadline.hasExpired()) {
        return; // what was broken off may call itself sound
    }
    if (isLarge && said == sound) {
        return;
    }
    found.integrity = said == sound ? Integrity::Sound : Integrity::Damaged;
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
