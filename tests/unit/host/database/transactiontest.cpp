// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "databasefixture.h"

#include <QElapsedTimer>
#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace {

class TransactionOf : public DatabaseFile
{
protected:
    void SetUp() override { addTable(database); }

    void insert(int value)
    {
        poshost::Statement(database, u"INSERT INTO t (a) VALUES (?)"_s).bind(value).execute();
    }

    /// The values that another connection sees.
    std::vector<int> durable() const
    {
        poshost::Database other(file);
        poshost::Statement statement(other, u"SELECT a FROM t ORDER BY a"_s);
        std::vector<int> values;
        while (statement.next()) {
            values.push_back(statement.value(0).toInt());
        }
        return values;
    }

    poshost::Database database{file, 50};
};

using Values = std::vector<int>;

TEST_F(TransactionOf, IsDurableWithItsCommitAndNotBefore)
{
    EXPECT_FALSE(database.isInTransaction());
    poshost::Transaction transaction(database);
    EXPECT_TRUE(database.isInTransaction());
    insert(1);
    EXPECT_EQ(durable(), Values{});
    transaction.commit();
    EXPECT_EQ(durable(), Values{1});
}

TEST_F(TransactionOf, EndsWithItsCommitThoughItLivesOn)
{
    poshost::Transaction transaction(database);
    insert(1);
    transaction.commit();
    EXPECT_FALSE(database.isInTransaction());
    transaction.commit();
    {
        const poshost::Transaction another(database);
        insert(2);
        insert(3);
    }
    EXPECT_EQ(durable(), Values{1}) << "the second one is all or nothing by itself";
    databaseErrorOf([&] { database.execute(u"INSERT INTO absent VALUES (1)"_s); });
    poshost::Transaction later(database);
    insert(4);
    later.commit();
    EXPECT_EQ(durable(), (Values{1, 4}));
}

TEST_F(TransactionOf, WithoutCommitLeavesNothing)
{
    {
        const poshost::Transaction transaction(database);
        insert(1);
    }
    EXPECT_FALSE(database.isInTransaction());
    EXPECT_EQ(durable(), Values{});
    insert(2);
    EXPECT_EQ(durable(), Values{2});
}

TEST_F(TransactionOf, AnInnerOneIsDurableWithTheOuterCommit)
{
    {
        poshost::Transaction outer(database);
        {
            poshost::Transaction inner(database);
            insert(1);
            inner.commit();
        }
        EXPECT_EQ(durable(), Values{});
        outer.commit();
    }
    EXPECT_EQ(durable(), Values{1});
    {
        const poshost::Transaction outer(database);
        poshost::Transaction inner(database);
        insert(2);
        inner.commit();
    }
    EXPECT_EQ(durable(), Values{1}) << "the outer one decides";
}

TEST_F(TransactionOf, AnInnerOneWithoutCommitTakesTheOuterWithIt)
{
    {
        poshost::Transaction outer(database);
        insert(1);
        {
            const poshost::Transaction inner(database);
            insert(2);
        }
        EXPECT_THAT(databaseErrorOf([&] { insert(3); }), HasSubstr("предыдущей ошибки"));
        databaseErrorOf([&] { poshost::Transaction another(database); });
        databaseErrorOf([&] { outer.commit(); });
    }
    EXPECT_EQ(durable(), Values{});
    insert(4);
    EXPECT_EQ(durable(), Values{4});
}

TEST_F(TransactionOf, AFailedStatementMakesTheCommitImpossible)
{
    {
        poshost::Transaction transaction(database);
        insert(1);
        databaseErrorOf([&] { database.execute(u"INSERT INTO absent VALUES (1)"_s); });
        databaseErrorOf([&] { insert(2); });
        databaseErrorOf([&] { transaction.commit(); });
    }
    EXPECT_EQ(durable(), Values{});
    insert(3);
    EXPECT_EQ(durable(), Values{3});
}

TEST_F(TransactionOf, TakesTheRightToWriteAtOnceAndWaitsNoLongerThanTheBusyTime)
{
    poshost::Database other(file, 50);
    const poshost::Transaction first(other);
    QElapsedTimer clock;
    clock.start();
    EXPECT_THAT(databaseErrorOf([&] { const poshost::Transaction second(database); }),
                HasSubstr("файл занят другой программой"));
    EXPECT_GE(clock.elapsed(), 40);
    EXPECT_LE(clock.elapsed(), 1000);
    EXPECT_FALSE(database.isInTransaction());
}

TEST_F(TransactionOf, AFullDiskLeavesNothingHalfWritten)
{
    const int pages = single(database, u"PRAGMA page_count"_s).toInt();
    database.execute(u"PRAGMA max_page_count = %1"_s.arg(pages + 2));
    {
        poshost::Transaction transaction(database);
        insert(1);
        EXPECT_THAT(databaseErrorOf([&] {
                        poshost::Statement(database, u"INSERT INTO t (a) VALUES (?)"_s)
                            .bind(QByteArray(1'000'000, 'x'))
                            .execute();
                    }),
                    HasSubstr("освободите место на диске"));
        databaseErrorOf([&] { transaction.commit(); });
    }
    EXPECT_EQ(durable(), Values{});
    insert(2);
    EXPECT_EQ(durable(), Values{2});
}

} // namespace
