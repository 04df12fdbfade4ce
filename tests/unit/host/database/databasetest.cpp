// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "databasefixture.h"
#include "host/database/filelock.h"

#include "host/database/databasefailure.h"

#include <QDir>
#include <atomic>
#include <cstring>
#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <thread>

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

mode_t rightsOf(const QString& file)
{
    struct stat information
    {};
    EXPECT_EQ(::stat(QFile::encodeName(file).constData(), &information), 0) << file.toStdString();
    return information.st_mode & 07777;
}

TEST_F(DatabaseFile, IsCreatedForItsOwnerOnly)
{
    const mode_t former = ::umask(0);
    const poshost::Database database(file);
    ::umask(former);
    EXPECT_EQ(rightsOf(file), 0600u);
    EXPECT_EQ(rightsOf(file + u"-wal"_s), 0600u);
    EXPECT_EQ(rightsOf(file + u"-shm"_s), 0600u);
    EXPECT_EQ(database.fileName(), file);
}

TEST_F(DatabaseFile, TooOpenRightsAreTightened)
{
    {
        const poshost::Database database(file);
    }
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0664), 0);
    // a program that was killed leaves its log behind
    const QString log = folder.write(u"till.db-wal"_s, {});
    ASSERT_EQ(::chmod(QFile::encodeName(log).constData(), 0664), 0);
    ::testing::internal::CaptureStderr();
    const poshost::Database database(file);
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), HasSubstr("доступ закрыт"));
    EXPECT_EQ(rightsOf(file), 0600u);
    EXPECT_EQ(rightsOf(log), 0600u);
}

TEST_F(DatabaseFile, ForgetsWhatWasDeletedAndOverwritten)
{
    const auto bytes = [this] {
        QByteArray all;
        for (const QString& end : {QString(), u"-wal"_s}) {
            QFile part(file + end);
            all += part.open(QFile::ReadOnly) ? part.readAll() : QByteArray();
        }
        return all;
    };
    poshost::Database database(file);
    database.execute(u"CREATE TABLE notes (text)"_s);
    for (int i = 0; i < 50; ++i) {
        poshost::Statement insert(database, u"INSERT INTO notes VALUES (?)"_s);
        insert.bind(u"canary %1 "_s.arg(i).repeated(100)).execute();
    }
    database.execute(u"UPDATE notes SET text = 'kept' WHERE rowid < 20"_s);
    database.execute(u"DELETE FROM notes WHERE rowid >= 20"_s);
    ASSERT_TRUE(bytes().contains("canary"));
    EXPECT_TRUE(database.forgetDeleted());
    EXPECT_FALSE(bytes().contains("canary"));
    EXPECT_TRUE(bytes().contains("kept"));
    poshost::Statement rows(database, u"SELECT count(*) FROM notes"_s);
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.value(0).toInt(), 19);
}

TEST_F(DatabaseFile, SaysThatAnotherConnectionKeepsItFromForgetting)
{
    poshost::Database database(file, 100);
    poshost::Database reader(file);
    poshost::Statement look(reader, u"SELECT name FROM sqlite_schema"_s);
    ASSERT_TRUE(look.next());
    EXPECT_FALSE(database.forgetDeleted());
}

TEST_F(DatabaseFile, InAFolderSharedWithItsGroupIsTheGroupsToo)
{
    const QString shared = folder.file(u"shared"_s);
    ASSERT_TRUE(QDir().mkdir(shared));
    ASSERT_EQ(::chmod(QFile::encodeName(shared).constData(), 02770), 0);
    const QString till = shared + u"/till.db"_s;
    const mode_t former = ::umask(077);
    {
        const poshost::Database database(till);
        EXPECT_TRUE(poshost::FileLock(till + u".lock"_s).isHeld());
        EXPECT_EQ(rightsOf(till + u"-wal"_s), 0660u);
        EXPECT_EQ(rightsOf(till + u"-shm"_s), 0660u);
    }
    ::umask(former);
    EXPECT_EQ(rightsOf(till), 0660u);
    EXPECT_EQ(rightsOf(till + u".lock"_s), 0660u);
    EXPECT_TRUE(poshost::Database::rightsOf(till) & QFile::WriteGroup);

    ASSERT_EQ(::chmod(QFile::encodeName(till).constData(), 0666), 0);
    ::testing::internal::CaptureStderr();
    const poshost::Database database(till);
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), HasSubstr("доступ закрыт"));
    EXPECT_EQ(rightsOf(till), 0660u) << "nobody else's";
}

TEST_F(DatabaseFile, AFolderThatOthersMayEnterIsNotShared)
{
    for (const mode_t rights : {0770u, 02750u, 02777u, 02771u}) {
        const QString open = folder.file(u"open%1"_s.arg(rights, 0, 8));
        ASSERT_TRUE(QDir().mkdir(open));
        ASSERT_EQ(::chmod(QFile::encodeName(open).constData(), rights), 0);
        const poshost::Database database(open + u"/till.db"_s);
        EXPECT_EQ(rightsOf(open + u"/till.db"_s), 0600u) << open.toStdString();
    }
}

TEST_F(DatabaseFile, SyncsEveryCommitAndChecksForeignKeys)
{
    poshost::Database database(file);
    EXPECT_EQ(single(database, u"PRAGMA journal_mode"_s).toString(), u"wal"_s);
    EXPECT_EQ(single(database, u"PRAGMA synchronous"_s).toInt(), 2);
    EXPECT_EQ(single(database, u"PRAGMA foreign_keys"_s).toInt(), 1);
    EXPECT_EQ(single(database, u"PRAGMA user_version"_s).toInt(),
              poshost::Database::schemaVersion());
    EXPECT_THAT(databaseErrorOf([&] {
                    database.execute(u"INSERT INTO checks (id, state, message_id) "
                                     "VALUES ('a', 'closed', 77)"_s);
                }),
                HasSubstr("FOREIGN KEY"));
}

TEST_F(DatabaseFile, OfOtherTablesHasThoseThatItsOwnerMakes)
{
    const auto prepare = [](poshost::Database& opened) {
        opened.execute(u"CREATE TABLE IF NOT EXISTS cards(number TEXT)"_s);
    };
    {
        poshost::Database database(file, prepare, 100);
        EXPECT_EQ(single(database, u"SELECT group_concat(name) FROM sqlite_schema"_s).toString(),
                  u"cards"_s);
        EXPECT_EQ(single(database, u"PRAGMA synchronous"_s).toInt(), 2);
    }
    EXPECT_THAT(databaseErrorOf([&] { poshost::Database(file, 100); }), HasSubstr("номер схемы 0"))
        << "it is no till's";
    const auto refuse = [](poshost::Database&) { throw std::runtime_error("not mine"); };
    EXPECT_THROW(poshost::Database(file, refuse, 100), std::runtime_error);
}

TEST_F(DatabaseFile, AFailureNamesTheFileAndTheCauseApart)
{
    poshost::Database database(file);
    try {
        database.execute(u"SELECT unknown"_s);
        ADD_FAILURE() << "must be refused";
    } catch (const poshost::DatabaseFailure& failure) {
        EXPECT_EQ(failure.file(), file);
        EXPECT_EQ(failure.cause(), u"no such column: unknown"_s);
        EXPECT_EQ(failure.tr().id(), u"databaseError"_s);
    }
}

TEST_F(DatabaseFile, ACheckHasOneOfFourStates)
{
    poshost::Database database(file);
    for (const auto* state : {"open", "suspended", "closed", "abandoned"}) {
        database.execute(
            u"INSERT INTO checks (id, state) VALUES ('%1', '%1')"_s.arg(QLatin1StringView(state)));
    }
    EXPECT_EQ(single(database, u"SELECT count(*) FROM checks"_s).toInt(), 4);
    databaseErrorOf(
        [&] { database.execute(u"INSERT INTO checks (id, state) VALUES ('x', 'lost')"_s); });
    EXPECT_EQ(single(database, u"SELECT count(*) FROM checks"_s).toInt(), 4);
}

TEST_F(DatabaseFile, AnErrorNamesFileCauseAndWhatToDo)
{
    const QString unreachable = folder.file(u"absent/till.db"_s);
    EXPECT_EQ(databaseErrorOf([&] { const poshost::Database database(unreachable); }),
              u"База данных %1: %2; проверьте путь и права"_s
                  .arg(unreachable, QString::fromLocal8Bit(std::strerror(ENOENT)))
                  .toStdString());
    const QString notADatabase = folder.write(u"note.txt"_s, QByteArray(4096, 'x'));
    ASSERT_TRUE(QFile::setPermissions(notADatabase,
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(notADatabase); }),
                HasSubstr("note.txt: file is not a database; файл повреждён"));
    EXPECT_NE(rightsOf(notADatabase) & 0077u, 0u) << "another program's file is left alone";
    EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(folder.file(u"."_s)); }),
                HasSubstr("База данных"));
}

TEST_F(DatabaseFile, ANewerSchemaIsRefusedAndLeftAlone)
{
    const int known = poshost::Database::schemaVersion();
    {
        poshost::Database database(file);
        database.execute(u"PRAGMA user_version = %1"_s.arg(known + 1));
    }
    const QString words =
        u"файл записан более новой программой (схема %1, известна %2); обновите"_s;
    EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(file); }),
                HasSubstr(words.arg(known + 1).arg(known).toStdString()));
}

TEST_F(DatabaseFile, AVersionThatIsNotTheFilesIsRefusedAndTheFileLeftAlone)
{
    {
        poshost::Database database(file);
        database.execute(u"INSERT INTO checks (id, state) VALUES ('kept', 'open')"_s);
    }
    const auto setVersion = [this](const QString& version) {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(QFile::encodeName(file).constData(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, ("PRAGMA user_version = " + version.toUtf8()).constData(),
                               nullptr, nullptr, nullptr),
                  SQLITE_OK);
        sqlite3_close(handle);
    };
    const int newest = poshost::Database::schemaVersion();
    for (int bit = 0; bit < 32; ++bit) {
        const qint32 version = newest ^ static_cast<qint32>(1U << unsigned(bit));
        setVersion(QString::number(version));
        EXPECT_THAT(
            databaseErrorOf([&] { const poshost::Database database(file); }),
            HasSubstr(version > newest ? "более новой программой" : "не подходит к таблицам файла"))
            << "version " << version;
    }
    for (int version = 0; version < newest; ++version) {
        setVersion(QString::number(version));
        EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(file); }),
                    HasSubstr("не подходит к таблицам файла"))
            << "version " << version;
    }
    setVersion(QString::number(newest));
    poshost::Database database(file);
    EXPECT_EQ(single(database, u"SELECT count(*) FROM checks"_s).toInt(), 1);
}

TEST_F(DatabaseFile, ADatabaseOfAnotherProgramIsRefusedAndLeftAlone)
{
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(file).constData(), &handle), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, "CREATE TABLE letters (a)", nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(handle);
    EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(file); }),
                HasSubstr("база другой программы"));
}

TEST_F(DatabaseFile, AnEmptiedFileWithALogIsRefusedAndTheLogKept)
{
    const QByteArray frames(32 + 24 + 4096, 'x');
    const QString log = folder.write(u"till.db-wal"_s, frames);
    const auto expectRefused = [&](const std::string& what) {
        EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(file); }),
                    HasSubstr("файл пуст или удалён"))
            << what;
        EXPECT_EQ(QFile(log).size(), frames.size()) << what;
    };
    expectRefused("no file");
    EXPECT_FALSE(QFile::exists(file));
    folder.write(u"till.db"_s, {});
    expectRefused("no byte");
    folder.write(u"till.db"_s, QByteArray(1, '\0'));
    expectRefused("one byte");
}

TEST_F(DatabaseFile, AFileThatIsEmptyWithoutALogIsANewOne)
{
    folder.write(u"till.db"_s, {});
    folder.write(u"till.db-wal"_s, {});
    const poshost::Database database(file);
    EXPECT_EQ(database.fileName(), file);
}

void run(const QString& scriptName, const QString& file)
{
    QFile script(QStringLiteral(ORVA_SERVICES_DATA "/") + scriptName);
    ASSERT_TRUE(script.open(QIODevice::ReadOnly)) << script.fileName().toStdString();
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(file).constData(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, script.readAll().constData(), nullptr, nullptr, nullptr),
              SQLITE_OK)
        << sqlite3_errmsg(handle);
    sqlite3_close(handle);
}

/// Makes a file as a program that knew nothing newer than version 1 left it.
void makeVersion1(const QString& file)
{
    run(u"schema1.sql"_s, file);
}

void makeVersion3(const QString& file)
{
    run(u"schema1.sql"_s, file);
    run(u"schema3.sql"_s, file);
}

TEST_F(DatabaseFile, AFileOfVersion1IsMigratedAndKeepsItsMessages)
{
    ASSERT_NO_FATAL_FAILURE(makeVersion1(file));
    poshost::Database database(file);
    EXPECT_EQ(single(database, u"PRAGMA user_version"_s).toInt(),
              poshost::Database::schemaVersion());
    EXPECT_EQ(single(database, u"SELECT count(*) FROM checks"_s).toInt(), 0);
    const std::optional<poshost::QueueContent> message = poshost::OutgoingQueue(database).show(5);
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->payload, u"<old/>"_s);
    EXPECT_EQ(message->entry.extra, u"kept"_s);
}

TEST_F(DatabaseFile, ChecksOfVersion3GetTheirChangesNumberedInTheOrderOfTheirTimes)
{
    ASSERT_NO_FATAL_FAILURE(makeVersion3(file));
    poshost::Database database(file);
    poshost::Statement statement(database, u"SELECT id, change_number, data FROM checks ORDER BY "
                                           "change_number"_s);
    QStringList found;
    while (statement.next()) {
        found.append(statement.value(0).toString() + u' ' + statement.value(1).toString() + u' ' +
                     QString::fromLatin1(statement.value(2).toByteArray().toHex()));
    }
    EXPECT_EQ(found,
              QStringList({u"first 1 01"_s, u"third 2 03"_s, u"fourth 3 "_s, u"second 4 02"_s}));
    EXPECT_EQ(poshost::OutgoingQueue(database).show(5)->payload, u"<old/>"_s);
}

TEST_F(DatabaseFile, AMigratedFileHasTheSchemaOfANewOne)
{
    const QString version3 = folder.file(u"version3.db"_s);
    ASSERT_NO_FATAL_FAILURE(makeVersion1(file));
    ASSERT_NO_FATAL_FAILURE(makeVersion3(version3));
    const auto schemaOf = [](const QString& name) {
        poshost::Database database(name);
        poshost::Statement statement(
            database, u"SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL ORDER BY name"_s);
        QStringList lines;
        while (statement.next()) {
            lines.append(statement.value(0).toString());
        }
        return lines;
    };
    const QStringList migrated = schemaOf(file);
    EXPECT_EQ(migrated.join(u'\n').toStdString(),
              schemaOf(folder.file(u"new.db"_s)).join(u'\n').toStdString());
    EXPECT_EQ(schemaOf(version3).join(u'\n').toStdString(), migrated.join(u'\n').toStdString());
    EXPECT_GT(migrated.size(), 8);
}

TEST_F(DatabaseFile, AMigrationThatFailsLeavesTheOldFile)
{
    ASSERT_NO_FATAL_FAILURE(makeVersion1(file));
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(file).constData(), &handle), SQLITE_OK);
    // stands in the way of the last table that the step makes
    sqlite3_exec(handle, "CREATE TABLE settings (a)", nullptr, nullptr, nullptr);
    EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(file); }),
                HasSubstr("settings"));

    const auto count = [handle](const char* sql) {
        int result = -1;
        sqlite3_exec(
            handle, sql,
            [](void* to, int, char** values, char**) {
                *static_cast<int*>(to) = std::atoi(values[0]);
                return 0;
            },
            &result, nullptr);
        return result;
    };
    EXPECT_EQ(count("PRAGMA user_version"), 1);
    EXPECT_EQ(count("SELECT count(*) FROM sqlite_schema WHERE name = 'checks'"), 0);
    EXPECT_EQ(count("SELECT count(*) FROM queue_messages"), 1);
    sqlite3_exec(handle, "DROP TABLE settings", nullptr, nullptr, nullptr);
    sqlite3_close(handle);
    EXPECT_NO_THROW(const poshost::Database database(file));
}

/// How SQLite goes about a statement, all steps in one line.
std::string planOf(poshost::Database& database, const QString& sql)
{
    poshost::Statement statement(database, u"EXPLAIN QUERY PLAN "_s + sql);
    QStringList steps;
    while (statement.next()) {
        steps.append(statement.value(3).toString());
    }
    return steps.join(u"; "_s).toStdString();
}

TEST_F(DatabaseFile, TheLastSaleIsFoundWithoutReadingAllChecks)
{
    poshost::Database database(file);
    for (const QString& condition : {QString(), u" AND type = 1"_s}) {
        const std::string plan =
            planOf(database, u"SELECT data FROM checks WHERE state = 'closed'"_s + condition +
                                 u" ORDER BY change_number DESC LIMIT 2"_s);
        EXPECT_THAT(plan, HasSubstr("checks_last"));
        EXPECT_THAT(plan, Not(HasSubstr("SCAN")));
        EXPECT_THAT(plan, Not(HasSubstr("TEMP B-TREE")));
    }
}

TEST_F(DatabaseFile, ManyConnectionsMayOpenANewFileAtOnce)
{
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            try {
                poshost::Database database(file);
                database.execute(u"INSERT INTO checks (id, state) VALUES (hex(randomblob(8)), "
                                 "'open')"_s);
            } catch (const BasicException&) {
                ++failures;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(failures, 0);
    poshost::Database database(file);
    EXPECT_EQ(single(database, u"SELECT count(*) FROM checks"_s).toInt(), 8);
}

TEST_F(DatabaseFile, IsFoundThroughTheConfiguration)
{
    EXPECT_EQ(poshost::Database::configuredFile(), QString());
    const Configured configured("[till]\ndatabase = \"/var/lib/till.db\"\n");
    EXPECT_EQ(poshost::Database::configuredFile(), u"/var/lib/till.db"_s);
}

} // namespace
