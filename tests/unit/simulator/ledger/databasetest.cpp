// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/database.h"

#include "host/database/databasefailure.h"
#include "simulator/ledger/schema.h"
#include "tests/unit/simulator/testchecks.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

class DatabaseTest : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return folder.filePath(u"deep/er/simulator.sqlite"_s); }

    /// What opening says; empty when it succeeds.
    [[nodiscard]] QString complaint(Database::Open mode = Database::Open::CreateMissing) const
    {
        try {
            const Database database(path(), mode);
        } catch (const DatabaseError& error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }

    QTemporaryDir folder;
};

int number(Database& database, const QString& statement)
{
    Statement query(database, statement);
    return query.next() ? query.value(0).toInt() : -1;
}

TEST_F(DatabaseTest, isMadeForItsOwnerOnly)
{
    Database database(path());
    database.execute(u"INSERT INTO cards VALUES('1', 0, 0)"_s);
    for (const QString& suffix : {u""_s, u"-wal"_s, u"-shm"_s}) {
        struct stat status
        {};
        ASSERT_EQ(::stat(QFile::encodeName(path() + suffix).constData(), &status), 0)
            << suffix.toStdString();
        EXPECT_EQ(status.st_mode & 0777U, 0600U) << suffix.toStdString();
    }
}

TEST_F(DatabaseTest, writesAheadSynchronouslyWithForeignKeys)
{
    Database database(path());
    Statement mode(database, u"PRAGMA journal_mode"_s);
    ASSERT_TRUE(mode.next());
    EXPECT_EQ(mode.value(0).toString(), u"wal"_s);
    EXPECT_EQ(number(database, u"PRAGMA synchronous"_s), 2); // FULL
    EXPECT_EQ(number(database, u"PRAGMA foreign_keys"_s), 1);
    EXPECT_EQ(number(database, u"PRAGMA user_version"_s), schemaVersion);
    EXPECT_EQ(number(database, u"PRAGMA busy_timeout"_s), 10'000);
}

TEST_F(DatabaseTest, ofANewerVersionIsRefused)
{
    Database(path()).execute(u"PRAGMA user_version=2"_s);
    EXPECT_EQ(
        complaint(),
        u"The database %1 was written by a newer orva-simulator: it has schema version 2, this "
        "program knows 1; use the newer program or name another file with --database"_s.arg(
            path()));
}

TEST_F(DatabaseTest, ofAnotherProgramIsRefused)
{
    Database(path()).execute(u"PRAGMA application_id=1"_s);
    EXPECT_EQ(complaint(),
              u"The database %1 is not a database of orva-simulator: name another file "
              "with --database"_s.arg(path()));
}

TEST_F(DatabaseTest, thatIsNoDatabaseIsRefused)
{
    static_cast<void>(complaint());
    QFile::remove(path());
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("text").repeated(5000));
    file.close();
    EXPECT_TRUE(complaint().startsWith(u"The database %1 cannot be opened: "_s.arg(path())))
        << complaint().toStdString();
}

TEST_F(DatabaseTest, thatIsMissingIsNotMadeForReading)
{
    EXPECT_EQ(complaint(Database::Open::ExistingOnly),
              u"There is no database %1: start orva-simulator first or name another file with "
              "--database"_s.arg(path()));
    EXPECT_FALSE(QFileInfo::exists(path()));
}

TEST_F(DatabaseTest, inAPlaceThatCannotBeWrittenIsRefusedWithThePlace)
{
    QFile file(folder.filePath(u"deep"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(complaint(), u"The folder %1 for the database cannot be made"_s.arg(
                               folder.filePath(u"deep/er"_s)));
}

TEST_F(DatabaseTest, forgetsATransactionThatIsNotCommitted)
{
    Database database(path());
    {
        const Transaction transaction(database);
        database.execute(u"INSERT INTO cards VALUES('1', 0, 0)"_s);
    }
    EXPECT_EQ(number(database, u"SELECT count(*) FROM cards"_s), 0);
    {
        Transaction transaction(database);
        database.execute(u"INSERT INTO cards VALUES('1', 0, 0)"_s);
        transaction.commit();
    }
    EXPECT_EQ(number(database, u"SELECT count(*) FROM cards"_s), 1);
}

TEST_F(DatabaseTest, saysWhyAStatementFails)
{
    Database database(path());
    const auto complaintAbout = [&database](const QString& sql) {
        try {
            database.execute(sql);
        } catch (const poshost::DatabaseFailure& failure) {
            return QString::fromUtf8(DatabaseError(failure).what());
        }
        return QString();
    };
    const QString refused = u"The database %1 refused a statement: "_s.arg(path());
    EXPECT_EQ(complaintAbout(u"SELECT unknown"_s), refused + u"no such column: unknown"_s);
    EXPECT_EQ(complaintAbout(u"INSERT INTO payment_tries VALUES('x', NULL)"_s),
              refused + u"NOT NULL constraint failed: payment_tries.digest"_s);
    EXPECT_EQ(
        complaintAbout(u"INSERT INTO ledger_lines VALUES('none', 0, 1, '', 0, 0, 0, 0, 0, 0, 0)"_s),
        refused + u"FOREIGN KEY constraint failed"_s);
}

TEST_F(DatabaseTest, whoseLogIsLeftAloneIsRefused)
{
    static_cast<void>(complaint());
    QFile::remove(path());
    QFile log(path() + u"-wal"_s);
    ASSERT_TRUE(log.open(QIODevice::WriteOnly));
    log.write(QByteArray("frames").repeated(100));
    log.close();
    EXPECT_TRUE(complaint().contains(path())) << complaint().toStdString();
    EXPECT_FALSE(QFileInfo::exists(path()));
}

} // namespace
} // namespace simulator
