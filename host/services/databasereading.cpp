// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Opening a database for looking only.

#include "host/core/basicexception.h"
#include "host/services/databaseconnection.h"
#include "host/services/databaseerror.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlDriver>
#include <QUrl>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

/// Another connection may be opening or closing the file; longer than that it does not take.
constexpr int busyMilliseconds = 500;
/// Between two looks at the clock: some hundred microseconds.
constexpr int instructionsBetweenLooks = 2000;

/// How SQLite must open the file so that it makes and changes nothing beside it. A file without a
/// log is complete by itself; with one, the log's index is only read, and if its owner is gone,
/// rebuilt in memory.
QString parameters(const QString& file)
{
    const QFileInfo log(file + u"-wal"_s);
    const bool hasIndex = QFile::exists(file + u"-shm"_s);
    if (log.exists() && hasIndex) {
        return u"?mode=ro&readonly_shm=1"_s;
    }
    if (log.size() > 0) {
        throw BasicException(databaseerror::leftInTheMiddle(file));
    }
    return u"?mode=ro&immutable=1"_s;
}

QString uri(const QString& file)
{
    return u"file:"_s + QString::fromLatin1(QUrl::toPercentEncoding(file, "/")) + parameters(file);
}

int hasEnded(void* deadline)
{
    return static_cast<const QDeadlineTimer*>(deadline)->hasExpired() ? 1 : 0;
}

sqlite3* handleOf(const QSqlDatabase& database)
{
    const QVariant handle = database.driver()->handle();
    return qstrcmp(handle.typeName(), "sqlite3*") == 0
               ? *static_cast<sqlite3* const*>(handle.constData())
               : nullptr;
}

} // namespace

Database::Database(std::unique_ptr<Connection> opened) : connection(std::move(opened)) {}

std::unique_ptr<Database> Database::openForReading(const QString& fileName, QDeadlineTimer deadline)
{
    auto opened =
        std::make_unique<Connection>(QFileInfo(fileName).absoluteFilePath(), busyMilliseconds);
    opened->handle.setConnectOptions(
        u"QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1"_s.arg(busyMilliseconds));
    opened->handle.setDatabaseName(uri(opened->file));
    if (!opened->handle.open()) {
        opened->fail(opened->handle.lastError());
    }
    opened->readingEnd = deadline;
    if (sqlite3* const handle = handleOf(opened->handle)) {
        sqlite3_progress_handler(handle, instructionsBetweenLooks, hasEnded, &opened->readingEnd);
    }
    return std::unique_ptr<Database>(new Database(std::move(opened)));
}
