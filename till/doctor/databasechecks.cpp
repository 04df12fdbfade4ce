// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/databasechecks.h"

#include "host/database/database.h"
#include "host/queue/databaseexamination.h"
#include "host/services/currenttime.h"
#include "till/doctor/report.h"
#include "till/doctor/subject.h"
#include "till/reason.h"
#include "till/screen/timetext.h"
#include "till/text.h"

#include <QFile>
#include <QFileInfo>

#include <sys/statvfs.h>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

using Integrity = poshost::DatabaseExamination::Integrity;

constexpr quint64 mebibyte = 1024 * 1024;
/// What a day of sales may need: below it the till may stop at any moment.
constexpr quint64 failBytes = 16 * mebibyte;
constexpr quint64 warnBytes = 256 * mebibyte;

constexpr qint64 warnHours = 1;
constexpr qint64 failHours = 24;
constexpr qint64 secondsAnHour = 3600;

Finding lookAtFile(const QString& file)
{
    const QFileInfo information(file);
    const QString folder = information.absolutePath();
    if (!QFileInfo(folder).isDir()) {
        return Finding::fails(Text::tr("the folder %1 is not there").arg(folder),
                              u"mkdir -p %1"_s.arg(folder));
    }
    if (!QFileInfo(folder).isWritable()) {
        return Finding::fails(Text::tr("nothing can be written into %1").arg(folder),
                              u"ls -ld %1"_s.arg(folder));
    }
    if (!information.exists()) {
        return Finding::ok(Text::tr("%1 will be made by the first sale").arg(file));
    }
    if (!information.isFile() || !information.isReadable() || !information.isWritable()) {
        return Finding::fails(Text::tr("%1 is no file that can be read and written").arg(file),
                              u"ls -l %1"_s.arg(file));
    }
    return Finding::ok(file);
}

Finding lookAtRights(const QString& file)
{
    constexpr QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    for (const QString& part : {file, file + u"-wal"_s, file + u"-shm"_s}) {
        if (QFile::exists(part) &&
            (QFile::permissions(part) & others & ~poshost::Database::rightsOf(part))) {
            return Finding::warning(
                Text::tr("%1 holds credentials and others may open it").arg(part),
                u"chmod 600 %1"_s.arg(part));
        }
    }
    return Finding::ok(poshost::Database::rightsOf(file) & QFile::WriteGroup
                           ? Text::tr("only its owner and the folder's group may open it")
                           : Text::tr("only its owner may open it"));
}

Finding lookAtDisk(const QString& folder)
{
    struct statvfs disk
    {};
    const QString look = u"df -h %1"_s.arg(folder);
    if (::statvfs(QFile::encodeName(folder).constData(), &disk) != 0) {
        return Finding::warning(Text::tr("the free space is not known"), look);
    }
    const quint64 bytes = quint64(disk.f_bavail) * disk.f_frsize;
    const QString text = Text::tr("%1 MiB are free").arg(bytes / mebibyte);
    if (bytes < failBytes) {
        return Finding::fails(text, look);
    }
    return bytes < warnBytes ? Finding::warning(text, look) : Finding::ok(text);
}

Finding lookAtIntegrity(const poshost::DatabaseExamination& found, const QString& file)
{
    switch (found.integrity) {
    case Integrity::Sound:
        return Finding::ok(Text::tr("the file is sound"));
    case Integrity::Unfinished:
        return Finding::notNeeded(
            Text::tr("too large for a quick look; sqlite3 %1 \"PRAGMA integrity_check\"")
                .arg(file));
    case Integrity::Damaged:
    case Integrity::Unreadable:
        break;
    }
    return Finding::fails(said(found.trouble),
                          u"sqlite3 %1 \".recover\" | sqlite3 mended.sqlite"_s.arg(file));
}

Finding lookAtSchema(const poshost::DatabaseExamination& found, const QString& file)
{
    const QString text =
        Text::tr("version %1 of %2").arg(found.schemaVersion).arg(found.newestVersion);
    if (found.schemaVersion > found.newestVersion) {
        return Finding::fails(Text::tr("%1: a newer program has written the file").arg(text),
                              u"apt-get install --only-upgrade orva"_s);
    }
    if (!found.isTillFile) {
        return Finding::fails(Text::tr("%1 is no till's database").arg(file),
                              u"[till] database = \"till.sqlite\""_s);
    }
    if (found.schemaVersion < found.newestVersion) {
        return Finding::notDone(Text::tr("%1; brought up to date by the next sale").arg(text));
    }
    return Finding::ok(text);
}

Finding lookAtOldest(const poshost::DatabaseExamination& found)
{
    if (!found.firstWaiting) {
        return Finding::ok(Text::tr("nothing waits"));
    }
    const QDateTime now = MockFactory<CurrentTime>::create()->currentDateTime();
    const qint64 hours = found.firstWaiting->createdAt.secsTo(now) / secondsAnHour;
    const QString text = Text::tr("%1 wait, the oldest (%2) since %3")
                             .arg(found.counts.waiting)
                             .arg(found.firstWaiting->id)
                             .arg(timetext::toTheMinute(found.firstWaiting->createdAt));
    const QString mend = u"orva-till queue deliver"_s;
    if (hours >= failHours) {
        return Finding::fails(text, mend);
    }
    return hours >= warnHours ? Finding::warning(text, mend) : Finding::ok(text);
}

Finding lookAtPaused(const poshost::DatabaseExamination& found)
{
    if (!found.firstPaused) {
        return Finding::ok(Text::tr("none"));
    }
    return Finding::fails(Text::tr("%1 wait for other credentials or another address (%2)")
                              .arg(found.counts.paused)
                              .arg(said(found.firstPaused->obstacle)),
                          u"orva-till queue reauthorize"_s);
}

Finding lookAtParked(const poshost::DatabaseExamination& found)
{
    if (!found.firstParked) {
        return Finding::ok(Text::tr("none"));
    }
    return Finding::fails(Text::tr("%1 wait for somebody to decide (%2)")
                              .arg(found.counts.parked)
                              .arg(said(found.firstParked->obstacle)),
                          u"orva-till queue show %1"_s.arg(found.firstParked->id));
}

} // namespace

void databasechecks::checkFile(Report& report, const Subject& subject)
{
    const QString file = subject.databaseFile();
    const QString id = u"database.file"_s;
    report.check(id, Text::tr("Database"), {u"config.till.database"_s},
                 [&] { return lookAtFile(file); });
    report.check(u"database.rights"_s, Text::tr("Database, rights"), {id}, [&] {
        return QFile::exists(file) ? lookAtRights(file)
                                   : Finding::notNeeded(Text::tr("not made yet"));
    });
    report.check(u"disk"_s, Text::tr("Disk"), {id},
                 [&] { return lookAtDisk(QFileInfo(file).absolutePath()); });
}

void databasechecks::checkContent(Report& report, const Subject& subject,
                                  const std::optional<poshost::DatabaseExamination>& found)
{
    using Look = Finding (*)(const poshost::DatabaseExamination&);
    const QString file = subject.databaseFile();
    const QString integrity = u"database.integrity"_s;
    const QString schema = u"database.schema"_s;
    const bool exists = QFile::exists(file);
    const auto notMade = [] { return Finding::notNeeded(Text::tr("not made yet")); };
    report.check(integrity, Text::tr("Database, content"), {u"database.file"_s}, [&] {
        if (!exists) {
            return notMade();
        }
        return found ? lookAtIntegrity(*found, file)
                     : Finding::fails(Text::tr("is not read in time"), u"ls -l %1"_s.arg(file));
    });
    report.check(schema, Text::tr("Database, version"), {integrity},
                 [&] { return exists ? lookAtSchema(*found, file) : notMade(); });
    const auto queue = [&](const QString& id, const QString& title, Look look) {
        report.check(id, title, {schema}, [&] { return exists ? look(*found) : notMade(); });
    };
    queue(u"queue.oldest"_s, Text::tr("Queue, waiting"), lookAtOldest);
    queue(u"queue.paused"_s, Text::tr("Queue, paused"), lookAtPaused);
    queue(u"queue.parked"_s, Text::tr("Queue, parked"), lookAtParked);
}

} // namespace till::doctor
