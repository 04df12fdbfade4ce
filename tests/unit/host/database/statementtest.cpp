// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/statement.h"

#include "databasefixture.h"

#include <gmock/gmock.h>
#include <limits>

using ::testing::HasSubstr;

namespace {

TEST_F(DatabaseFile, AStatementTellsNoRowFromAnError)
{
    poshost::Database database(file);
    addTable(database);
    poshost::Statement statement(database, u"SELECT a FROM t WHERE a = ?"_s);
    EXPECT_FALSE(statement.bind(1).next());
    EXPECT_THAT(databaseErrorOf([&] { poshost::Statement broken(database, u"SELECT b FROM t"_s); }),
                HasSubstr("no such column"));
    EXPECT_THAT(databaseErrorOf([&] {
                    poshost::Statement late(database,
                                            u"SELECT abs(?)"_s); // fails only when it runs
                    late.bind(std::numeric_limits<qlonglong>::min()).next();
                }),
                HasSubstr("integer overflow"));
}

TEST_F(DatabaseFile, AStatementCanBeRunAgainWithOtherValues)
{
    poshost::Database database(file);
    addTable(database);
    poshost::Statement insert(database, u"INSERT INTO t (a) VALUES (?)"_s);
    for (int i = 1; i <= 3; ++i) {
        insert.bind(i).execute();
        EXPECT_EQ(insert.lastInsertId(), i);
        EXPECT_EQ(insert.affectedRows(), 1);
    }
    poshost::Statement select(database, u"SELECT a FROM t WHERE a >= ? ORDER BY a"_s);
    EXPECT_TRUE(select.bind(2).next());
    EXPECT_EQ(select.value(0).toInt(), 2);
    EXPECT_TRUE(select.next());
    EXPECT_EQ(select.value(0).toInt(), 3);
    EXPECT_FALSE(select.next());
    EXPECT_TRUE(select.bind(3).next());
    EXPECT_EQ(select.value(0).toInt(), 3);
}

TEST_F(DatabaseFile, ValuesComeBackAsTheyWereBound)
{
    poshost::Database database(file);
    addTable(database);
    QByteArray allBytes;
    for (int i = 0; i < 256; ++i) {
        allBytes.append(static_cast<char>(i));
    }
    const QVariant values[] = {u"Ёж \U0001F600"_s,
                               QString(),
                               allBytes,
                               QByteArray(),
                               u"before\0behind"_s,
                               true,
                               -1,
                               std::numeric_limits<qlonglong>::max(),
                               0.1};
    for (const QVariant& value : values) {
        poshost::Statement(database, u"DELETE FROM t"_s).execute();
        poshost::Statement(database, u"INSERT INTO t (a) VALUES (?)"_s).bind(value).execute();
        const QVariant read = single(database, u"SELECT a FROM t"_s);
        EXPECT_FALSE(read.isNull()) << "null texts are empty ones";
        if (value.typeId() == QMetaType::Bool) {
            EXPECT_EQ(read, QVariant(1)) << "SQLite knows no other truth";
        } else {
            EXPECT_EQ(read.toByteArray(), value.toByteArray());
        }
    }
    poshost::Statement(database, u"DELETE FROM t"_s).execute();
    poshost::Statement(database, u"INSERT INTO t (a) VALUES (?)"_s).bind(QVariant()).execute();
    EXPECT_TRUE(single(database, u"SELECT a FROM t"_s).isNull());
}

TEST_F(DatabaseFile, AStatementIsNotRunWithTooFewOrTooManyValues)
{
    poshost::Database database(file);
    addTable(database);
    const QString sql = u"INSERT INTO t (a) VALUES (?)"_s;
    poshost::Statement(database, sql)
        .bind(1)
        .execute(); // is kept, and must not run with that again
    EXPECT_THAT(databaseErrorOf([&] { poshost::Statement(database, sql).execute(); }),
                HasSubstr("0 values for: INSERT"));
    EXPECT_THAT(
        databaseErrorOf([&] { poshost::Statement(database, sql).bind(2).bind(3).execute(); }),
        HasSubstr("2 values for: INSERT"));
    EXPECT_EQ(single(database, u"SELECT count(*) FROM t"_s).toInt(), 1);
}

TEST_F(DatabaseFile, AnEndedStatementDoesNotHoldUpTheLog)
{
    poshost::Database database(file);
    addTable(database);
    database.execute(u"INSERT INTO t (a) VALUES (1), (2)"_s);
    {
        poshost::Statement reading(database, u"SELECT a FROM t"_s);
        ASSERT_TRUE(reading.next()); // is left in the middle
    }
    poshost::Statement checkpoint(database, u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
    ASSERT_TRUE(checkpoint.next());
    EXPECT_EQ(checkpoint.value(0).toInt(), 0) << "busy";
    EXPECT_EQ(QFile(file + u"-wal"_s).size(), 0);
}

} // namespace
