// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/databaseexamination.h"

#include "tests/unit/host/database/databasefixture.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

using Integrity = poshost::DatabaseExamination::Integrity;

class Examination : public DatabaseFile
{
protected:
    /// A file that is left as a till leaves it at its end.
    void fill(int rows) const
    {
        poshost::Database database(file);
        addTable(database);
        poshost::Transaction transaction(database);
        for (int i = 0; i < rows; ++i) {
            poshost::Statement(database, u"INSERT INTO t (a) VALUES (?)"_s)
                .bind(QByteArray(1000, 'x'))
                .execute();
        }
        transaction.commit();
    }
    /// The first page of a table.
    void overwritePageOf(const QString& table) const
    {
        qint64 page = 0;
        {
            poshost::Database database(file);
            page = single(database,
                          u"SELECT rootpage FROM sqlite_master WHERE name = '%1'"_s.arg(table))
                       .toLongLong();
        }
        ASSERT_GT(page, 1);
        QFile pages(file);
        ASSERT_TRUE(pages.open(QIODevice::ReadWrite));
        ASSERT_TRUE(pages.seek((page - 1) * 4096));
        pages.write(QByteArray(4096, '\x5a'));
    }
};

TEST_F(Examination, NothingCanBeWrittenThroughADatabaseForReading)
{
    fill(1);
    const auto database = poshost::Database::openForReading(file, QDeadlineTimer(5000));
    EXPECT_EQ(single(*database, u"SELECT count(*) FROM t"_s).toInt(), 1);
    EXPECT_THAT(databaseErrorOf([&] { database->execute(u"INSERT INTO t (a) VALUES (1)"_s); }),
                HasSubstr("readonly"));
    EXPECT_FALSE(QFile::exists(file + u"-wal"_s));
    EXPECT_FALSE(QFile::exists(file + u"-shm"_s));
}

TEST_F(Examination, AMissingFileIsNotMade)
{
    databaseErrorOf([&] { poshost::Database::openForReading(file, QDeadlineTimer(5000)); });
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_EQ(poshost::DatabaseExamination::of(file, 5000).integrity, Integrity::Unreadable);
}

TEST_F(Examination, AFileWithAnyNameIsRead)
{
    const QString odd = folder.file(u"касса %31?#&.db"_s);
    {
        const poshost::Database made(odd);
    }
    EXPECT_EQ(poshost::DatabaseExamination::of(odd, 5000).integrity, Integrity::Sound);
}

TEST_F(Examination, ADamagedFileIsToldInOneSentence)
{
    fill(200);
    {
        QFile pages(file);
        ASSERT_TRUE(pages.open(QIODevice::ReadWrite));
        ASSERT_TRUE(pages.seek(pages.size() - 10 * 4096));
        pages.write(QByteArray(4096, '\x5a'));
    }
    const poshost::DatabaseExamination damaged = poshost::DatabaseExamination::of(file, 5000);
    EXPECT_EQ(damaged.integrity, Integrity::Damaged);
    const std::string trouble = damaged.trouble.ru().toStdString();
    EXPECT_THAT(trouble, HasSubstr("till.db: "));
    EXPECT_THAT(trouble, HasSubstr("файл повреждён"));
    EXPECT_THAT(trouble, Not(HasSubstr("***")));
    EXPECT_THAT(trouble, Not(HasSubstr("\n")));
}

TEST_F(Examination, AnEmptiedFileIsNotTakenForANewOne)
{
    folder.write(u"till.db-wal"_s, QByteArray(5000, 'x'));
    folder.write(u"till.db"_s, {});
    const poshost::DatabaseExamination emptied = poshost::DatabaseExamination::of(file, 5000);
    EXPECT_EQ(emptied.integrity, Integrity::Unreadable);
    EXPECT_THAT(emptied.trouble.ru().toStdString(), HasSubstr("файл пуст или удалён"));
}

TEST_F(Examination, ALookThatTakesTooLongIsBrokenOff)
{
    fill(20'000);
    EXPECT_EQ(poshost::DatabaseExamination::of(file, 5000).integrity, Integrity::Sound);
    const poshost::DatabaseExamination broken = poshost::DatabaseExamination::of(file, 0);
    EXPECT_EQ(broken.integrity, Integrity::Unfinished);
    EXPECT_TRUE(broken.trouble.isEmpty()) << broken.trouble.ru().toStdString();
}

TEST_F(Examination, OfALargeFileWhatIsUndeliveredIsLookedAtAlone)
{
    fill(40'000);
    const poshost::DatabaseExamination sound = poshost::DatabaseExamination::of(file, 30'000);
    EXPECT_EQ(sound.integrity, Integrity::Unfinished);
    EXPECT_TRUE(sound.trouble.isEmpty()) << sound.trouble.ru().toStdString();
    overwritePageOf(u"t"_s);
    EXPECT_EQ(poshost::DatabaseExamination::of(file, 30'000).integrity, Integrity::Unfinished);
    overwritePageOf(u"queue_bodies"_s);
    const poshost::DatabaseExamination damaged = poshost::DatabaseExamination::of(file, 30'000);
    EXPECT_EQ(damaged.integrity, Integrity::Damaged);
    EXPECT_THAT(damaged.trouble.ru().toStdString(), HasSubstr("файл повреждён"));
}

} // namespace
