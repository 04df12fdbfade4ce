// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Copies of a till's books, and the way back.

#include "host/core/basicexception.h"
#include "host/database/statement.h"
#include "tests/unit/till/tilltest.h"
#include "till/backup/backupfile.h"
#include "till/backup/restoring.h"
#include "till/checks/checkarchiving.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

using namespace Qt::StringLiterals;
using tests::refusalOf;
using till::Check;

namespace {

class BackupTest : public tests::TillTest
{
protected:
    BackupTest() : copy(folder.file(u"copy.orva"_s)), file(folder.file(u"left.sqlite"_s)) {}

    void deliver(const QString& condition)
    {
        database->execute(u"UPDATE queue_messages SET state = 'delivered', account_id = NULL, "
                          "delivered_at = 1 WHERE %1"_s.arg(condition));
    }
    void archiveAll()
    {
        deliver(u"1"_s);
        till::CheckArchiving archiving(*database, 0);
        const tests::StoppedClock clock(QDateTime::currentDateTime().addDays(1));
        ASSERT_EQ(archiving.step(), 1);
    }
    /// Restores in the place of books that nobody has open, and opens these.
    till::RestoreReport restoreAndOpen(std::optional<int> lastNumber = {})
    {
        leaveBooks();
        const till::RestoreReport report = till::restoreBackup(copy, file, lastNumber);
        restored = QSharedPointer<poshost::Database>::create(file);
        return report;
    }
    /// The books as they are now, left by everybody.
    void leaveBooks()
    {
        poshost::Statement(*database, u"VACUUM INTO ?"_s).bind(file).execute();
        const QDir archive(database->fileName() + u"-archive"_s);
        QDir().mkpath(file + u"-archive"_s);
        for (const QString& name : archive.entryList(QDir::Files)) {
            QFile::copy(archive.filePath(name), file + u"-archive/"_s + name);
        }
    }
    QVariant single(const QString& sql)
    {
        poshost::Statement statement(*restored, sql);
        return statement.next() ? statement.value(0) : QVariant();
    }

    const QString copy;
    const QString file;
    QSharedPointer<poshost::Database> restored;
};

} // namespace

TEST_F(BackupTest, aCopyIsForItsOwnerOnlyWithoutSecretsAndNoTillsDatabase)
{
    sell();
    database->execute(u"UPDATE queue_accounts SET authorization = 'Basic c2VjcmV0'"_s);
    const till::BackupReport report = till::backupfile::write(*database, copy, false);
    EXPECT_EQ(report.checks, 1);
    EXPECT_EQ(report.undelivered, 1);
    EXPECT_EQ(QFile::permissions(copy) & (QFile::ReadGroup | QFile::ReadOther), 0);
    QFile content(copy);
    ASSERT_TRUE(content.open(QFile::ReadOnly));
    EXPECT_FALSE(content.readAll().contains("c2VjcmV0"));
    EXPECT_THROW(poshost::Database{copy}, BasicException);
    EXPECT_TRUE(
        refusalOf([&] { till::backupfile::write(*database, copy, false); }).contains(u"already"_s));
    const QString whole = folder.file(u"whole.orva"_s);
    EXPECT_TRUE(till::backupfile::write(*database, whole, true).hasSecrets);
    QFile secrets(whole);
    ASSERT_TRUE(secrets.open(QFile::ReadOnly));
    EXPECT_TRUE(secrets.readAll().contains("c2VjcmV0"));
}

TEST_F(BackupTest, restoringBringsBackChecksQueueAndArchive)
{
    const Check archived = sell();
    ASSERT_NO_FATAL_FAILURE(archiveAll());
    const Check kept = sell();
    till::backupfile::write(*database, copy, false);
    const Check later = sell();
    const till::RestoreReport report = restoreAndOpen();
    EXPECT_EQ(report.checks, 2);
    EXPECT_EQ(report.undelivered, 1);
    EXPECT_TRUE(report.needsCredentials);
    EXPECT_EQ(report.nextNumber, later.number() + 1);
    till::CheckStore books(restored);
    EXPECT_EQ(books.findSale(archived.id()).id(), archived.id());
    EXPECT_EQ(books.findSale(u"last"_s).id(), kept.id());
    EXPECT_EQ(books.takeNumber(), later.number() + 1);
    // what was there before is whole, too
    ASSERT_FALSE(report.setAside.isEmpty());
    till::CheckStore before(QSharedPointer<poshost::Database>::create(report.setAside));
    EXPECT_EQ(before.findSale(u"last"_s).id(), later.id());
    EXPECT_EQ(before.findSale(archived.id()).id(), archived.id());
}

// From the exchange of the months' files to that of the database the former books count: a power
// cut in between must find their month as it was.
TEST_F(BackupTest, restoringAgainWritesOverNoMonthThatCounts)
{
    const Check archived = sell();
    ASSERT_NO_FATAL_FAILURE(archiveAll());
    till::backupfile::write(*database, copy, false);
    restoreAndOpen();
    const QString month = u"SELECT file FROM archives"_s;
    const QString former = single(month).toString();
    EXPECT_TRUE(former.contains(u"-restored-"_s)) << former.toStdString();
    restored.reset();
    const till::RestoreReport report = till::restoreBackup(copy, file, {});
    restored = QSharedPointer<poshost::Database>::create(file);
    EXPECT_NE(single(month).toString(), former);
    EXPECT_EQ(till::CheckStore(restored).findSale(archived.id()).id(), archived.id());
    till::CheckStore before(QSharedPointer<poshost::Database>::create(report.setAside));
    EXPECT_EQ(before.findSale(archived.id()).id(), archived.id());
}

TEST_F(BackupTest, whatWasNotDeliveredCountsAsPerhapsSent)
{
    sell();
    sell();
    deliver(u"id = 1"_s);
    till::backupfile::write(*database, copy, true);
    const till::RestoreReport report = restoreAndOpen();
    EXPECT_EQ(report.undelivered, 1);
    EXPECT_FALSE(report.needsCredentials);
    EXPECT_EQ(single(u"SELECT attempts FROM queue_messages WHERE id = 1"_s).toInt(), 0);
    EXPECT_EQ(single(u"SELECT attempts FROM queue_messages WHERE id = 2"_s).toInt(), 1);
    EXPECT_EQ(single(u"SELECT step_attempts FROM queue_messages WHERE id = 2"_s).toInt(), 1);
}

TEST_F(BackupTest, numbersGoOnBehindTheHighestThatAnybodyKnows)
{
    sell();
    till::backupfile::write(*database, copy, false);
    EXPECT_EQ(till::restoreBackup(copy, file, {}).nextNumber, 2);
    EXPECT_EQ(till::restoreBackup(copy, file, 77).nextNumber, 78);
    EXPECT_EQ(till::restoreBackup(copy, file, 5).nextNumber, 78);
}

TEST_F(BackupTest, numbersOfBooksWhoseArchiveIsGoneStillCount)
{
    sell();
    ASSERT_NO_FATAL_FAILURE(archiveAll());
    till::backupfile::write(*database, copy, false);
    const Check later = sell();
    leaveBooks();
    ASSERT_TRUE(QDir(file + u"-archive"_s).removeRecursively());
    EXPECT_EQ(till::restoreBackup(copy, file, {}).nextNumber, later.number() + 1);
}

TEST_F(BackupTest, aRestoringThatWasBrokenOffLeavesNothingBehind)
{
    sell();
    till::backupfile::write(*database, copy, false);
    leaveBooks();
    const QString aside = file + u".before-restore"_s;
    ASSERT_EQ(::link(QFile::encodeName(file).constData(), QFile::encodeName(aside).constData()), 0);
    ASSERT_TRUE(QDir().mkdir(aside + u"-archive"_s));
    ASSERT_TRUE(QFile::copy(copy, file + u".restoring"_s));
    EXPECT_EQ(till::restoreBackup(copy, file, {}).setAside, aside);
    EXPECT_FALSE(QFileInfo::exists(file + u".restoring"_s));
    EXPECT_FALSE(QFileInfo::exists(aside + u"-2"_s));
    till::CheckStore books(QSharedPointer<poshost::Database>::create(aside));
    EXPECT_EQ(books.findSale(u"last"_s).number(), 1);
}

TEST_F(BackupTest, numbersOfTheArchiveCountWhereNothingElseKnowsThem)
{
    sell();
    ASSERT_NO_FATAL_FAILURE(archiveAll());
    database->execute(u"DELETE FROM settings"_s);
    till::backupfile::write(*database, copy, false);
    EXPECT_EQ(till::restoreBackup(copy, file, {}).nextNumber, 2);
}

TEST_F(BackupTest, noCopyIsMadeOfADamagedArchive)
{
    sell();
    ASSERT_NO_FATAL_FAILURE(archiveAll());
    const QDir archive(database->fileName() + u"-archive"_s);
    const QStringList months = archive.entryList({u"*.checks"_s}, QDir::Files);
    ASSERT_EQ(months.size(), 1);
    QFile month(archive.filePath(months.first()));
    ASSERT_TRUE(month.open(QFile::ReadWrite));
    ASSERT_TRUE(month.seek(month.size() - 1));
    char last = 0;
    ASSERT_TRUE(month.getChar(&last) && month.seek(month.size() - 1));
    ASSERT_TRUE(month.putChar(static_cast<char>(last ^ 1)));
    month.close();
    EXPECT_TRUE(
        refusalOf([&] { till::backupfile::write(*database, copy, false); }).contains(u"damaged"_s));
    EXPECT_EQ(QFileInfo::exists(copy) || QFileInfo::exists(copy + u".unfinished"_s), false);
}

TEST_F(BackupTest, aSecretLongerThanAPageIsNotInTheCopyEither)
{
    sell();
    constexpr int moreThanAPage = 6000;
    poshost::Statement secret(*database, u"UPDATE queue_accounts SET authorization = ?"_s);
    secret.bind(QString(moreThanAPage, u'A') + u"c2VjcmV0"_s).execute();
    till::backupfile::write(*database, copy, false);
    QFile content(copy);
    ASSERT_TRUE(content.open(QFile::ReadOnly));
    EXPECT_FALSE(content.readAll().contains("c2VjcmV0"));
}

TEST_F(BackupTest, booksInUseOrACopyThatIsNoneAreLeftAlone)
{
    const Check sold = sell();
    till::backupfile::write(*database, copy, false);
    EXPECT_TRUE(refusalOf([&] {
                    till::restoreBackup(copy, database->fileName(), {});
                }).contains(u"in use"_s));
    const QString other = folder.file(u"other.sqlite"_s);
    {
        poshost::Database(other).execute(u"PRAGMA user_version"_s);
    }
    leaveBooks();
    EXPECT_TRUE(refusalOf([&] { till::restoreBackup(other, file, {}); }).contains(u"no copy"_s));
    QFile bad(copy);
    ASSERT_TRUE(bad.open(QFile::ReadWrite));
    ASSERT_TRUE(bad.seek(bad.size() / 2));
    bad.write(QByteArray(8192, '\xa5'));
    bad.close();
    EXPECT_ANY_THROW(till::restoreBackup(copy, file, {}));
    EXPECT_FALSE(QFileInfo::exists(file + u".restoring"_s));
    till::CheckStore books(QSharedPointer<poshost::Database>::create(file));
    EXPECT_EQ(books.findSale(u"last"_s).id(), sold.id());
}
