// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/backup/restoring.h"

#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/services/currenttime.h"
#include "till/archive/checkarchive.h"
#include "till/backup/backupfile.h"
#include "till/failure.h"
#include "till/text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till {
namespace {

const QString archiveEnding = u"-archive"_s;

int valueIn(poshost::Database& database, const QString& sql)
{
    poshost::Statement statement(database, sql);
    const qint64 value = statement.next() ? statement.value(0).toLongLong() : 0;
    return int(std::clamp<qint64>(value, 0, std::numeric_limits<int>::max() - 1));
}

/// What a copy says of itself; nothing when it is none.
std::optional<qint64> aboutIn(poshost::Database& database, const QString& key)
{
    poshost::Statement table(
        database, u"SELECT 1 FROM sqlite_schema WHERE name = 'backup_about' AND type = 'table'"_s);
    if (!table.next()) {
        return std::nullopt;
    }
    poshost::Statement statement(database, u"SELECT value FROM backup_about WHERE key = ?"_s);
    return statement.bind(key).next() ? std::optional(statement.value(0).toLongLong())
                                      : std::nullopt;
}

void requireCopy(poshost::Database& database, const QString& file)
{
    const auto version = aboutIn(database, u"version"_s);
    if (!version) {
        throw Failure(Text::tr("%1 is no copy that \"backup\" has made.").arg(file),
                      ExitCode::Usage);
    }
    if (*version > poshost::Database::schemaVersion()) {
        throw Failure(Text::tr("%1 was made by a newer till; install that version.").arg(file));
    }
    backupfile::requireSound(database);
}

/// Raises a number to the highest of some books, as far as they can be read.
void raiseToHighest(int& highest, poshost::Database& database)
{
    const auto raise = [&highest](qint64 number) {
        highest = int(std::clamp<qint64>(number, highest, std::numeric_limits<int>::max() - 1));
    };
    raise(valueIn(database, u"SELECT max(number) FROM checks"_s));
    raise(valueIn(database, u"SELECT value - 1 FROM settings WHERE key = 'nextCheckNumber'"_s));
    CheckArchive(database).forEachListed([&raise](const ArchivedCheck& kept) {
        raise(kept.number);
        return true;
    });
}

/// What the books say that are there; brings their log into the file, so that they are one again.
/// @throws Failure when somebody has them open
int highestInPresent(const QString& databaseFile)
{
    if (!QFileInfo::exists(databaseFile)) {
        return 0;
    }
    int highest = 0;
    try {
        poshost::Database present(databaseFile);
        raiseToHighest(highest, present);
    } catch (const Failure&) {
        // only its archive is damaged, or some of it is gone
    } catch (const std::exception&) {
        return highest; // damaged: that may be why the copy is wanted, and all of it is set aside
    }
    poshost::Database present(
        databaseFile, [](poshost::Database&) {}, 0);
    try {
        present.execute(u"PRAGMA journal_mode = DELETE"_s);
    } catch (const BasicException&) {
        throw Failure(Text::tr("%1 is in use; end all tills and the service, then restore.")
                          .arg(databaseFile));
    }
    return highest;
}

/// A name for a month's file that no file in the till's archive has: both have the same folder in
/// the end, and which of them count the database says that has its name just then.
QString freeName(const QDir& archive, const QString& month)
{
    QString name;
    for (int n = 1; name.isEmpty() || archive.exists(name); ++n) {
        name = u"%1-restored-%2.checks"_s.arg(month).arg(n);
    }
    return name;
}

/// Writes what the copy holds of an archive's file into a new one.
void writeMonth(poshost::Database& database, const QString& part, const QString& path)
{
    QFile file(path);
    poshost::Statement parts(database, u"SELECT content FROM backup_parts WHERE file = ? "
                                       "ORDER BY at"_s);
    parts.bind(part);
    bool isWritten = file.open(QIODevice::WriteOnly | QIODevice::NewOnly) &&
                     file.setPermissions(poshost::Database::rightsOf(path));
    while (isWritten && parts.next()) {
        const QByteArray content = parts.value(0).toByteArray();
        isWritten = file.write(content) == content.size();
    }
    if (!isWritten || !file.flush() || ::fsync(file.handle()) != 0) {
        throw Failure(Text::tr("%1 cannot be written: %2.").arg(path, file.errorString()));
    }
    archivefile::syncNameOf(path);
}

void writeArchive(poshost::Database& database, const QString& copy, const QDir& tillsArchive)
{
    CheckArchive archive(database);
    const QList<CheckArchive::Month> months = archive.months();
    const QString folder = QFileInfo(archive.lockFile()).absolutePath(); // makes it
    for (CheckArchive::Month month : months) {
        if (month.month.contains(u'/')) {
            throw Failure(Text::tr("%1 is no copy that \"backup\" has made.").arg(copy),
                          ExitCode::Usage);
        }
        const QString part = month.file;
        month.file = freeName(tillsArchive, month.month);
        writeMonth(database, part, folder + u'/' + month.file);
        archive.countIn(month);
    }
}

/// Makes a till's books of the copy, under another name.
RestoreReport prepare(const QString& file, const QString& copy, const QDir& tillsArchive,
                      int highestElsewhere)
{
    const auto check = [&](poshost::Database& opened) { requireCopy(opened, copy); };
    poshost::Database database(file, check, poshost::Database::defaultBusyMilliseconds);
    writeArchive(database, copy, tillsArchive);
    RestoreReport report;
    report.madeAt = QDateTime::fromMSecsSinceEpoch(aboutIn(database, u"madeAt"_s).value_or(0));
    report.checks = valueIn(database, u"SELECT (SELECT count(*) FROM checks) + "
                                      "(SELECT coalesce(sum(checks), 0) FROM archives)"_s);
    report.undelivered =
        valueIn(database, u"SELECT count(*) FROM queue_messages WHERE state <> 'delivered'"_s);
    report.needsCredentials =
        report.undelivered > 0 && aboutIn(database, u"withSecrets"_s).value_or(0) == 0;
    int highest = highestElsewhere;
    raiseToHighest(highest, database);
    report.nextNumber = highest + 1;
    const qint64 version = aboutIn(database, u"version"_s).value_or(0);
    {
        poshost::Transaction transaction(database);
        poshost::Statement attempted(
            database, u"UPDATE queue_messages SET attempts = attempts + 1, "
                      "step_attempts = step_attempts + 1, "
                      "attempted_at = coalesce(attempted_at, ?) WHERE state <> 'delivered'"_s);
        attempted.bind(CurrentTime::milliseconds()).execute();
        poshost::Statement next(database, u"INSERT OR REPLACE INTO settings (key, value) "
                                          "VALUES ('nextCheckNumber', ?)"_s);
        next.bind(report.nextNumber).execute();
        database.execute(u"DROP TABLE backup_parts"_s);
        database.execute(u"DROP TABLE backup_about"_s);
        database.execute(u"PRAGMA user_version = %1"_s.arg(version));
        transaction.commit();
    }
    database.execute(u"PRAGMA journal_mode = DELETE"_s);
    return report;
}

[[noreturn]] void failToWrite(const QString& path)
{
    throw Failure(Text::tr("%1 cannot be written: %2.").arg(path, qt_error_string(errno)));
}

void rename(const QString& from, const QString& to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        failToWrite(to);
    }
}

void link(const QString& from, const QString& to)
{
    if (::link(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        failToWrite(to);
    }
}

/// A folder with the rights of another one, whatever the mask of the process.
void makeLike(const QString& folder, const QString& made)
{
    struct stat information
    {};
    const QByteArray name = QFile::encodeName(made);
    if (::stat(QFile::encodeName(folder).constData(), &information) != 0 ||
        ::mkdir(name.constData(), S_IRWXU) != 0 ||
        ::chmod(name.constData(), information.st_mode & 07777) != 0) {
        failToWrite(made);
    }
}

QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList({u"*.checks"_s}, QDir::Files | QDir::NoDotAndDotDot);
}

void removeAll(const QString& file)
{
    for (const QString& part : {u""_s, u"-wal"_s, u"-shm"_s, u"-journal"_s}) {
        QFile::remove(file + part);
    }
    QDir(file + archiveEnding).removeRecursively();
}

bool isSameFile(const QString& left, const QString& right)
{
    struct stat one
    {};
    struct stat other
    {};
    return ::stat(QFile::encodeName(left).constData(), &one) == 0 &&
           ::stat(QFile::encodeName(right).constData(), &other) == 0 && one.st_ino == other.st_ino;
}

/// A name that nothing has yet, for what is there. One that is a second name of the till's database
/// is of a restoring that was broken off.
QString freeAside(const QString& databaseFile)
{
    QString aside = databaseFile + u".before-restore"_s;
    for (int n = 2;; ++n) {
        if (isSameFile(aside, databaseFile)) {
            removeAll(aside);
        }
        if (!QFileInfo::exists(aside) && !QFileInfo::exists(aside + archiveEnding)) {
            return aside;
        }
        aside = u"%1.before-restore-%2"_s.arg(databaseFile).arg(n);
    }
}

/// The books that are there get a second name for all they have; until the other ones take the
/// first, whoever opens them finds them whole.
QString setAside(const QString& databaseFile)
{
    const bool isThere = QFileInfo::exists(databaseFile);
    const QString archive = databaseFile + archiveEnding;
    if (!isThere && !QFileInfo::exists(archive)) {
        return {};
    }
    const QString aside = freeAside(databaseFile);
    if (QFileInfo::exists(archive)) {
        const QString folder = aside + archiveEnding;
        makeLike(archive, folder);
        const QStringList names = filesIn(archive);
        for (const QString& name : names) {
            link(archive + u'/' + name, folder + u'/' + name);
        }
        archivefile::syncNameOf(folder + u"/lock"_s);
    }
    if (isThere) {
        link(databaseFile, aside);
    }
    for (const QString& companion : {u"-wal"_s, u"-shm"_s}) { // of books that are damaged
        if (QFileInfo::exists(databaseFile + companion)) {
            rename(databaseFile + companion, aside + companion);
        }
    }
    archivefile::syncNameOf(aside);
    return aside;
}

/// Puts the files of an archive beside those that are there, which counts for nobody yet.
void addArchive(const QString& from, const QString& to)
{
    if (!QFileInfo::exists(to)) {
        rename(from, to);
        return;
    }
    const QStringList names = filesIn(from);
    for (const QString& name : names) {
        rename(from + u'/' + name, to + u'/' + name);
    }
    archivefile::syncNameOf(to + u"/lock"_s);
}

/// What the books do not need that are a till's now.
void removeLeftovers(const QString& target, const QString& restoring)
{
    removeAll(restoring);
    try {
        poshost::Database database(target);
        CheckArchive(database).removeLeftovers();
    } catch (const std::exception&) {
        return; // they are restored, and what is left there goes with the next change
    }
}

} // namespace

RestoreReport restoreBackup(const QString& copy, const QString& databaseFile,
                            std::optional<int> lastNumber)
{
    const QString target = QFileInfo(databaseFile).absoluteFilePath();
    const QString restoring = target + u".restoring"_s;
    RestoreReport report;
    removeAll(restoring); // of one that was broken off
    const int highest = std::max(lastNumber.value_or(0), highestInPresent(target));
    try {
        if (!QFile::copy(copy, restoring)) {
            throw Failure(Text::tr("%1 cannot be copied to %2; see to rights and room.")
                              .arg(copy, restoring));
        }
        QFile::setPermissions(restoring, poshost::Database::rightsOf(target));
        report = prepare(restoring, copy, QDir(target + archiveEnding), highest);
        report.setAside = setAside(target);
        addArchive(restoring + archiveEnding, target + archiveEnding);
        rename(restoring, target); // the one step by which everything is exchanged
        archivefile::syncNameOf(target);
    } catch (const std::exception&) {
        removeAll(restoring);
        throw;
    }
    removeLeftovers(target, restoring);
    return report;
}

} // namespace till
