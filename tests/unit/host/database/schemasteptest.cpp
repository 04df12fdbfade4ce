// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/schemastep.h"

#include "databasefixture.h"
#include "till/checks/checkschema.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace {

/// Files whose tables have another owner besides the queue and the till.
class SchemaSteps : public DatabaseFile
{
protected:
    ~SchemaSteps() override
    {
        poshost::registerSchema(u"letters"_s, {});
        poshost::registerSchema(u"checks"_s, till::checkSchema());
    }

    static void registerLetters(const QList<poshost::SchemaStep>& more = {})
    {
        poshost::registerSchema(u"letters"_s, QList<poshost::SchemaStep>{made} + more);
    }

    static int versionOf(poshost::Database& database)
    {
        return single(database, u"PRAGMA user_version"_s).toInt();
    }

    /// What stands in a file as it is opened now.
    QStringList tables() const
    {
        poshost::Database database(file);
        poshost::Statement statement(database, u"SELECT name FROM sqlite_schema WHERE type = "
                                               "'table' AND name NOT LIKE 'sqlite_%' ORDER BY 1"_s);
        QStringList names;
        while (statement.next()) {
            names.append(statement.value(0).toString());
        }
        return names;
    }

    inline static const int newest = poshost::Database::schemaVersion();
    inline static const poshost::SchemaStep made{
        newest + 1, u"letters"_s, {u"CREATE TABLE letters (a)"_s}};
};

TEST_F(SchemaSteps, OfWhoeverRegistersAreTakenByNewAndByOldFiles)
{
    {
        const poshost::Database old(file);
    }
    registerLetters();
    EXPECT_EQ(poshost::Database::schemaVersion(), newest + 1);
    for (const QString& name : {file, folder.file(u"new.db"_s)}) {
        poshost::Database database(name);
        EXPECT_EQ(versionOf(database), newest + 1);
        EXPECT_NO_THROW(database.execute(u"INSERT INTO letters VALUES (1)"_s));
    }
    registerLetters({{newest + 2, {}, {u"ALTER TABLE letters ADD COLUMN b"_s}}});
    poshost::Database database(file);
    EXPECT_EQ(versionOf(database), newest + 2);
    EXPECT_EQ(single(database, u"SELECT count(b IS NULL) FROM letters"_s).toInt(), 1);
}

TEST_F(SchemaSteps, ThatFailLeaveTheFileToThoseWhoKnowTheOldOne)
{
    {
        const poshost::Database old(file);
    }
    registerLetters({{newest + 2, {}, {u"INSERT INTO nowhere VALUES (1)"_s}}});
    EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(file); }),
                HasSubstr("nowhere"));
    poshost::registerSchema(u"letters"_s, {});
    EXPECT_FALSE(tables().contains(u"letters"_s));
}

TEST_F(SchemaSteps, ThatNobodyHasRegisteredMakeAFileTooNew)
{
    registerLetters();
    {
        const poshost::Database database(file);
    }
    poshost::registerSchema(u"letters"_s, {});
    EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(file); }),
                HasSubstr("файл записан более новой программой"));
}

TEST_F(SchemaSteps, OfTheQueueAloneMakeAFileWithNothingElse)
{
    poshost::registerSchema(u"checks"_s, {});
    EXPECT_EQ(tables(),
              QStringList({u"queue_accounts"_s, u"queue_bodies"_s, u"queue_dependencies"_s,
                           u"queue_holds"_s, u"queue_messages"_s}));
    poshost::registerSchema(u"checks"_s, till::checkSchema());
    EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(file); }),
                HasSubstr("не подходит к таблицам файла"))
        << "that version of a till's file has checks";
}

TEST_F(SchemaSteps, AreToldByEachOwnersLastMark)
{
    registerLetters(
        {{newest + 2, u"letters_last"_s, {u"CREATE INDEX letters_last ON letters (a)"_s}}});
    {
        poshost::Database database(file);
        database.execute(u"DROP INDEX letters_last"_s);
    }
    EXPECT_THAT(databaseErrorOf([&] { const poshost::Database database(file); }),
                HasSubstr("не подходит к таблицам файла"));
}

} // namespace
