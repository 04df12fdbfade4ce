// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/backup/backupfile.h"

#include "host/database/database.h"
#include "host/database/filelock.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/services/currenttime.h"
#include "till/archive/checkarchive.h"
#include "till/failure.h"
#include "till/text.h"

#include <QFile>
#include <QFileInfo>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till::backupfile {
namespace {

constexpr qint64 bytesOfAPart = 4LL * 1024 * 1024;
constexpr int patience = 5000;

int numberOf(poshost::Database& database, const QString& sql)
{
    poshost::Statement statement(database, sql);
    return statement.next() ? statement.value(0).toInt() : 0;
}

/// An empty file for its owner only, which SQLite then fills.
void makeEmpty(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                   QFile::ReadOwner | QFile::WriteOwner)) {
        throw Failure(Text::tr("%1 cannot be written: %2.").arg(path, file.errorString()));
    }
}

void syncFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite) || ::fsync(file.handle()) != 0) {
        throw Failure(Text::tr("%1 cannot be written: %2.").arg(path, file.errorString()));
    }
}

/// @throws Failure when one is damaged
void copyArchive(const CheckArchive& archive, const QList<CheckArchive::Month>& months,
                 poshost::Database& copy)
{
    for (const CheckArchive::Month& month : months) {
        for (archivefile::Reader reader(archive.pathOf(month), month.length); reader.next();) {
            static_cast<void>(reader.whole());
        }
        QFile file(archive.pathOf(month));
        if (!file.open(QIODevice::ReadOnly)) {
            throw Failure(Text::tr("The archive %1 cannot be read: %2.")
                              .arg(file.fileName(), file.errorString()));
        }
        for (qint64 at = 0; at < month.length; at += bytesOfAPart) {
            poshost::Statement part(copy, u"INSERT INTO backup_parts VALUES (?, ?, ?)"_s);
            part.bind(month.file)
                .bind(at)
                .bind(file.read(std::min(bytesOfAPart, month.length - at)))
                .execute();
        }
    }
}

void removeSecrets(poshost::Database& copy)
{
    if (numberOf(copy, u"SELECT count(*) FROM queue_bodies WHERE urls LIKE '%://%@%'"_s) > 0) {
        throw Failure(Text::tr("Addresses of the queue hold a user's password; the copy can be "
                               "made with --with-secrets only."));
    }
    copy.execute(u"PRAGMA secure_delete = ON"_s);
    copy.execute(u"UPDATE queue_accounts SET authorization = ''"_s);
}

/// The parts of a copy that are no till's.
void describe(poshost::Database& copy, bool withSecrets)
{
    copy.execute(u"CREATE TABLE backup_about (key TEXT PRIMARY KEY, value) WITHOUT ROWID"_s);
    copy.execute(u"CREATE TABLE backup_parts (file TEXT, at INTEGER, content BLOB, "
                 "PRIMARY KEY (file, at))"_s);
    poshost::Statement about(copy, u"INSERT INTO backup_about VALUES ('madeAt', ?), "
                                   "('version', ?), ('withSecrets', ?)"_s);
    about.bind(CurrentTime::milliseconds())
        .bind(numberOf(copy, u"PRAGMA user_version"_s))
        .bind(withSecrets ? 1 : 0)
        .execute();
    copy.execute(u"PRAGMA user_version = 0"_s); // so that no till takes it for its database
}

BackupReport fill(const QString& path, const CheckArchive& archive, bool withSecrets)
{
    poshost::Database copy(
        path, [](poshost::Database&) {}, patience);
    const QList<CheckArchive::Month> months = CheckArchive(copy).months();
    BackupReport report;
    report.hasSecrets = withSecrets;
    report.checks = numberOf(copy, u"SELECT (SELECT count(*) FROM checks) + "
                                   "(SELECT coalesce(sum(checks), 0) FROM archives)"_s);
    report.undelivered = numberOf(copy, u"SELECT count(*) FROM queue_messages "
                                        "WHERE state <> 'delivered'"_s);
    {
        poshost::Transaction transaction(copy);
        describe(copy, withSecrets);
        if (!withSecrets) {
            removeSecrets(copy);
        }
        copyArchive(archive, months, copy);
        transaction.commit();
    }
    requireSound(copy);
    copy.execute(u"PRAGMA journal_mode = DELETE"_s); // one file, without a log beside it
    return report;
}

} // namespace

void requireSound(poshost::Database& database)
{
    poshost::Statement statement(database, u"PRAGMA integrity_check(1)"_s);
    const QString said = statement.next() ? statement.value(0).toString() : QString();
    if (said != u"ok"_s) {
        throw Failure(Text::tr("%1 is damaged: %2.").arg(database.fileName(), said));
    }
}

BackupReport write(poshost::Database& database, const QString& file, bool withSecrets)
{
    if (QFileInfo::exists(file)) {
        throw Failure(Text::tr("%1 is there already; name a new file.").arg(file));
    }
    const CheckArchive archive(database);
    const poshost::FileLock lock(archive.lockFile()); // the archive's files stay as they are
    if (!lock.isHeld()) {
        throw Failure(Text::tr("Another process works on the archive of %1; wait until it has "
                               "ended.")
                          .arg(database.fileName()));
    }
    const QString unfinished = file + u".unfinished"_s;
    QFile::remove(unfinished); // of a copy that was broken off
    makeEmpty(unfinished);
    try {
        poshost::Statement(database, u"VACUUM INTO ?"_s).bind(unfinished).execute();
        const BackupReport report = fill(unfinished, archive, withSecrets);
        syncFile(unfinished);
        if (!QFile::rename(unfinished, file)) {
            throw Failure(Text::tr("%1 is there already; name a new file.").arg(file));
        }
        archivefile::syncNameOf(file);
        return report;
    } catch (const std::exception&) {
        for (const QString& part : {u""_s, u"-wal"_s, u"-shm"_s, u"-journal"_s}) {
            QFile::remove(unfinished + part);
        }
        throw;
    }
}

} // namespace till::backupfile
