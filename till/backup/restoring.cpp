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

/// The highest number in books that are in order.
int highestIn(poshost::Database& database)
{
    int highest = valueIn(database, u"SELECT max(number) FROM checks"_s);
    highest = std::max(highest, valueIn(database, u"SELECT value - 1 FROM settings "
                                                  "WHERE key = 'nextCheckNumber'"_s));
    CheckArchive(database).forEachListed([&highest](const ArchivedCheck& kept) {
        highest = std::max(highest,
                           int(std::min<qint64>(kept.number, std::numeric_limits<int>::max() - 1)));
        return true;
    });
    return highest;
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
        highest = highestIn(present);
    } catch (const std::exception&) {
        return 0; // damaged: that may be why the copy is wanted, and all of it is set aside
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

void writeArchive(poshost::Database& database)
{
    const QString folder = QFileInfo(CheckArchive(database).lockFile()).absolutePath();
    poshost::Statement parts(database,
                             u"SELECT file, at, content FROM backup_parts ORDER BY file, at"_s);
    while (parts.next()) {
        const QString name = parts.value(0).toString();
        QFile file(folder + u'/' + name);
        const QByteArray content = parts.value(2).toByteArray();
        if (name.contains(u'/') || !file.open(QIODevice::ReadWrite) ||
            !file.seek(parts.value(1).toLongLong()) || file.write(content) != content.size() ||
            !file.flush() || ::fsync(file.handle()) != 0) {
            throw Failure(
                Text::tr("%1 cannot be written: %2.").arg(file.fileName(), file.errorString()));
        }
        file.setPermissions(poshost::Database::rightsOf(file.fileName()));
        archivefile::syncNameOf(file.fileName());
    }
}

/// Makes a till's books of the copy, under another name.
RestoreReport prepare(const QString& file, const QString& copy, int highestElsewhere)
{
    const auto check = [&](poshost::Database& opened) { requireCopy(opened, copy); };
    poshost::Database database(file, check, poshost::Database::defaultBusyMilliseconds);
    writeArchive(database);
    RestoreReport report;
    report.madeAt = QDateTime::fromMSecsSinceEpoch(aboutIn(database, u"madeAt"_s).value_or(0));
    report.checks = valueIn(database, u"SELECT (SELECT count(*) FROM checks) + "
                                      "(SELECT coalesce(sum(checks), 0) FROM archives)"_s);
    report.undelivered =
        valueIn(database, u"SELECT count(*) FROM queue_messages WHERE state <> 'delivered'"_s);
    report.needsCredentials =
        report.undelivered > 0 && aboutIn(database, u"withSecrets"_s).value_or(0) == 0;
    report.nextNumber = std::max(highestElsewhere, highestIn(database)) + 1;
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

void rename(const QString& from, const QString& to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        throw Failure(Text::tr("%1 cannot be written: %2.").arg(to, qt_error_string(errno)));
    }
}

/// The books that are there keep all they have under a name of their own.
QString setAside(const QString& databaseFile)
{
    const bool isThere = QFileInfo::exists(databaseFile);
    const bool hasArchive = QFileInfo::exists(databaseFile + archiveEnding);
    if (!isThere && !hasArchive) {
        return {};
    }
    QString aside = databaseFile + u".before-restore"_s;
    for (int n = 2; QFileInfo::exists(aside) || QFileInfo::exists(aside + archiveEnding); ++n) {
        aside = u"%1.before-restore-%2"_s.arg(databaseFile).arg(n);
    }
    // The database has its name until the other one takes it: no till ever finds none and begins
    // anew.
    if (isThere && ::link(QFile::encodeName(databaseFile).constData(),
                          QFile::encodeName(aside).constData()) != 0) {
        throw Failure(Text::tr("%1 cannot be written: %2.").arg(aside, qt_error_string(errno)));
    }
    for (const QString& companion : {u"-wal"_s, u"-shm"_s}) {
        if (QFileInfo::exists(databaseFile + companion)) {
            rename(databaseFile + companion, aside + companion);
        }
    }
    if (hasArchive) {
        rename(databaseFile + archiveEnding, aside + archiveEnding);
    }
    return aside;
}

void removeAll(const QString& file)
{
    for (const QString& part : {u""_s, u"-wal"_s, u"-shm"_s, u"-journal"_s}) {
        QFile::remove(file + part);
    }
    QDir(file + archiveEnding).removeRecursively();
}

} // namespace

RestoreReport restoreBackup(const QString& copy, const QString& databaseFile,
                            std::optional<int> lastNumber)
{
    const QString target = QFileInfo(databaseFile).absoluteFilePath();
    const QString restoring = target + u".restoring"_s;
    removeAll(restoring); // of one that was broken off
    const int highest = std::max(lastNumber.value_or(0), highestInPresent(target));
    try {
        if (!QFile::copy(copy, restoring)) {
            throw Failure(Text::tr("%1 cannot be copied to %2; see to rights and room.")
                              .arg(copy, restoring));
        }
        QFile::setPermissions(restoring, poshost::Database::rightsOf(target));
        RestoreReport report = prepare(restoring, copy, highest);
        report.setAside = setAside(target);
        rename(restoring + archiveEnding, target + archiveEnding);
        rename(restoring, target);
        archivefile::syncNameOf(target);
        return report;
    } catch (const std::exception&) {
        removeAll(restoring);
        throw;
    }
}

} // namespace till
