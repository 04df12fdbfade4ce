// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Opening a database for looking only.

#include "host/core/basicexception.h"
#include "host/database/databaseconnection_p.h"
#include "host/database/databaseerror_p.h"
#include "host/database/databasefile_p.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <sqlite3.h>
#include <thread>

namespace poshost {

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
    databasefile::requireNotEmptied(file);
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

/// Interrupts what runs at the deadline. SQLite looks at the clock between its instructions only,
/// and checking a large table is a single one.
class Watch
{
public:
    Watch(sqlite3* watched, const QDeadlineTimer& deadline)
        : handle(watched), left(deadline.remainingTime()), thread([this] { wait(); })
    {}
    ~Watch()
    {
        {
            const std::lock_guard lock(mutex);
            ended = true;
        }
        changed.notify_all();
        thread.join();
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

private:
    void wait()
    {
        std::unique_lock lock(mutex);
        if (!changed.wait_for(lock, left, [this] { return ended; })) {
            sqlite3_interrupt(handle);
        }
    }

    sqlite3* const handle;
    const std::chrono::milliseconds left;
    std::mutex mutex; // guards ended
    std::condition_variable changed;
    bool ended = false;
    std::thread thread;
};

} // namespace

Database::Database(std::unique_ptr<Connection> opened) : connection(std::move(opened)) {}

std::unique_ptr<Database> Database::openForReading(const QString& fileName, QDeadlineTimer deadline)
{
    auto opened = std::make_unique<Connection>(QFileInfo(fileName).absoluteFilePath());
    opened->open(uri(opened->file), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, busyMilliseconds);
    opened->readingEnd = deadline;
    sqlite3_progress_handler(opened->handle, instructionsBetweenLooks, hasEnded,
                             &opened->readingEnd);
    if (!deadline.isForever()) {
        opened->readingWatch = std::make_shared<Watch>(opened->handle, deadline);
    }
    return std::unique_ptr<Database>(new Database(std::move(opened)));
}

} // namespace poshost
