// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/databasechecks.h"

#include "host/database/database.h"
#include "host/queue/databaseexamination.h"
#include "till/doctor/report.h"
#include "till/doctor/shell.h"
#include "till/doctor/subject.h"
#include "till/reason.h"
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
/// The till's own: database, log, index, locks, a record for each check.
constexpr quint64 failFiles = 64;

Mend ofRights(const QString& path, const QString& rights)
{
    return shell::isOwn(path)
               ? Mend::command(shell::chmod(rights, {path})).safe()
               : Mend::words(Text::tr("%1 belongs to %2, and %3 may not write it: make that "
                                      "account a member of the group that shares it")
                                 .arg(path, shell::ownerOf(path), shell::account()));
}

Finding lookAtFile(const QString& file)
{
    const QFileInfo information(file);
    const QString folder = information.absolutePath();
    if (!QFileInfo(folder).isDir()) {
        // a disk that is not mounted looks the same, so nobody makes it unasked
        return Finding::fails(
            Text::tr("the folder %1 is not there").arg(folder),
            QFileInfo::exists(folder)
                ? Mend::words(Text::tr("name another file as database under [till]"))
                : Mend::command(shell::words({u"mkdir"_s, u"-p"_s, u"-m"_s, u"700"_s, folder})));
    }
    if (!QFileInfo(folder).isWritable()) {
        return Finding::fails(Text::tr("nothing can be written into %1").arg(folder),
                              ofRights(folder, u"u+rwx"_s));
    }
    if (!information.exists()) {
        return Finding::ok(Text::tr("%1 will be made by the first sale").arg(file));
    }
    if (!information.isFile()) {
        return Finding::fails(Text::tr("%1 is no file that can be read and written").arg(file),
                              Mend::words(Text::tr("name another file as database under [till]")));
    }
    if (!information.isReadable() || !information.isWritable()) {
        return Finding::fails(Text::tr("%1 is no file that can be read and written").arg(file),
                              ofRights(file, u"u+rw"_s));
    }
    return Finding::ok(file);
}

Finding lookAtRights(const QString& file)
{
    constexpr QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QStringList open;
    for (const QString& part : {file, file + u"-wal"_s, file + u"-shm"_s}) {
        if (QFile::exists(part) &&
            (QFile::permissions(part) & others & ~poshost::Database::rightsOf(part))) {
            open.append(part);
        }
    }
    const bool isShared = poshost::Database::rightsOf(file).testFlag(QFile::WriteGroup);
    if (!open.isEmpty()) {
        return Finding::warning(
            Text::tr("others may open what holds credentials: %1").arg(open.join(u", "_s)),
            Mend::command(shell::chmod(isShared ? u"g-x,o="_s : u"go="_s, open)).safe());
    }
    return Finding::ok(isShared ? Text::tr("only its owner and the folder's group may open it")
                                : Text::tr("only its owner may open it"));
}

Finding lookAtDisk(const QString& folder)
{
    struct statvfs disk
    {};
    if (::statvfs(QFile::encodeName(folder).constData(), &disk) != 0) {
        return Finding::warning(Text::tr("the free space is not known"),
                                Mend::words(Text::tr("see to the disk of %1").arg(folder)));
    }
    const Mend room = Mend::words(Text::tr("make room on the disk of %1").arg(folder));
    const quint64 bytes = quint64(disk.f_bavail) * disk.f_frsize;
    const QString text = Text::tr("%1 MiB are free").arg(bytes / mebibyte);
    if (bytes < failBytes) {
        return Finding::fails(text, room);
    }
    // some file systems count no files
    if (disk.f_files > 0 && disk.f_favail < failFiles) {
        return Finding::fails(Text::tr("room for %1 files only").arg(disk.f_favail), room);
    }
    return bytes < warnBytes ? Finding::warning(text, room) : Finding::ok(text);
}

/// A log without its index, that of a till which was stopped: the next one that opens the file
/// brings both together.
bool isLeftInTheMiddle(const QString& file)
{
    return QFileInfo(file).size() > 1 && QFileInfo(file + u"-wal"_s).size() > 0 &&
           !QFile::exists(file + u"-shm"_s);
}

Finding lookAtIntegrity(const poshost::DatabaseExamination& found, const Subject& subject)
{
    switch (found.integrity) {
    case Integrity::Sound:
        return Finding::ok(Text::tr("the file is sound"));
    case Integrity::Unfinished:
        return Finding::notNeeded(Text::tr("too large for a quick look"));
    case Integrity::Damaged:
    case Integrity::Unreadable:
        break;
    }
    const QString file = subject.databaseFile();
    return Finding::fails(
        said(found.trouble),
        isLeftInTheMiddle(file)
            ? Mend::command(subject.command({u"checks"_s}))
            : Mend::words(
                  Text::tr("close all tills, keep %1 and what begins with its name, and put "
                           "a copy in their place; checks that closed since are in the kept "
                           "ones")
                      .arg(file)));
}

Finding lookAtSchema(const poshost::DatabaseExamination& found, const Subject& subject)
{
    const QString file = subject.databaseFile();
    const QString text =
        Text::tr("version %1 of %2").arg(found.schemaVersion).arg(found.newestVersion);
    if (found.schemaVersion > found.newestVersion) {
        return Finding::fails(Text::tr("%1: a newer program has written the file").arg(text),
                              Mend::words(Text::tr("install the newer version of the till")));
    }
    if (!found.isTillFile) {
        return Finding::fails(
            Text::tr("%1 is no till's database").arg(file),
            QFileInfo(file).size() == 0
                ? Mend::command(shell::words({u"rm"_s, file}))
                : Mend::words(Text::tr("name another file as database under [till]")));
    }
    if (found.schemaVersion < found.newestVersion) {
        return Finding::notDone(Text::tr("%1; brought up to date by the next sale").arg(text));
    }
    return Finding::ok(text);
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
    const QString integrity = u"database.integrity"_s;
    const bool exists = QFile::exists(subject.databaseFile());
    const auto notMade = [] { return Finding::notNeeded(Text::tr("not made yet")); };
    report.check(integrity, Text::tr("Database, content"), {u"database.file"_s}, [&] {
        if (!exists) {
            return notMade();
        }
        return found ? lookAtIntegrity(*found, subject)
                     : Finding::fails(
                           Text::tr("is not read in time"),
                           Mend::words(
                               Text::tr("see to the disk of %1").arg(subject.databaseFile())));
    });
    report.check(u"database.schema"_s, Text::tr("Database, version"), {integrity},
                 [&] { return exists ? lookAtSchema(*found, subject) : notMade(); });
}

} // namespace till::doctor
