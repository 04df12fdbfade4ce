// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a session reads whose plans are from when a day's tables were empty.

#include "tests/unit/store/storefixture.h"

using namespace Qt::StringLiterals;
using orvastore::Task;
using orvastore::Value;
using poshost::deliverypolicy::Meaning;

namespace {

constexpr int lanes = 2000;
constexpr int inLine = 5;

class Plans : public storetest::StoreTest
{
protected:
    /// The tables are known to be empty, and then the session makes all its plans.
    void planWhileEmpty()
    {
        sql(u"VACUUM ANALYZE"_s);
        handOver(u"a"_s, u"card"_s);
        handOver(u"b"_s, u"card"_s);
        std::optional<Task> task = book.claim();
        ASSERT_EQ(nameOf(task), u"a"_s);
        task = book.finish(*task, storetest::resultOf(Meaning::Refused, 400)).task;
        ASSERT_EQ(nameOf(task), u"b"_s) << "by the closer look";
        EXPECT_FALSE(book.finish(*task, done).task);
        EXPECT_TRUE(owner.run("SELECT orva.settle(message) FROM orva.parked").isTrue(0, 0));
        handOver(u"c"_s);
        task = book.claim();
        ASSERT_EQ(nameOf(task), u"c"_s) << "by its key";
        EXPECT_FALSE(book.finish(*task, done).task);
    }

    /// As it is at the end of a day: much is delivered, some is parked, much waits.
    void fill() const
    {
        sql(u"INSERT INTO orva.lanes (shop, name, waiting, handed, last_day, head_day) "
            "SELECT 'shop', sha256(n::text::bytea), %2, %2, current_date, current_date "
            "FROM generate_series(1, %1) n"_s.arg(lanes)
                .arg(inLine));
        sql(u"INSERT INTO orva.messages (day, lane, number, id, shop, identifier, sale, account, "
            "queue, extra, headers, urls, payload, steps, steps_done, attempts, step_attempts) "
            "SELECT current_date, l.id, n, nextval('orva.message_ids'), 'shop', l.id || '-' || n, "
            "'', 1, 'Orva', '', '{}', '{\"0\":\"http://h/\"}', 'x', 1, 0, 0, 0 "
            "FROM generate_series(1, %1) n, orva.lanes l WHERE l.handed = %1"_s.arg(inLine));
        sql(u"INSERT INTO orva.deliveries (day, message, shop, status) "
            "SELECT current_date, 1000000 + n, 'shop', 200 FROM generate_series(1, 20000) n"_s);
        sql(u"INSERT INTO orva.attempts (day, message, attempt, step, worker) "
            "SELECT current_date, 1000000 + n, 1, 0, 'w' FROM generate_series(1, 20000) n"_s);
        sql(u"INSERT INTO orva.parked (message, day, lane, number, shop, identifier, error) "
            "SELECT 2000000 + n, current_date, 1000000 + n, 1, 'shop', 'p' || n, '' "
            "FROM generate_series(1, 5000) n"_s);
        sql(u"INSERT INTO orva.ready (lane, account, queue) SELECT id, 1, 'Orva' FROM orva.lanes "
            "WHERE handed = %1 ORDER BY id"_s.arg(inLine));
    }

    int buffersOfAClaim()
    {
        return storetest::buffersOf(first.run("EXPLAIN (ANALYZE, BUFFERS, FORMAT JSON) "
                                              "SELECT * FROM orva.claim(1, 'reader')"));
    }
};

} // namespace

TEST_F(Plans, fromAnEmptyDayReadNoMoreOnceItIsFull)
{
    planWhileEmpty();
    fill();
    constexpr int mostByKey = 40;
    constexpr int mostLookedAtClosely = 80;
    const int byKey = buffersOfAClaim();
    EXPECT_GT(byKey, 0);
    EXPECT_LE(byKey, mostByKey);
    first.run("SELECT pg_advisory_unlock_all()");
    sql(u"UPDATE orva.lanes SET winding = true; DELETE FROM orva.attempts WHERE worker = 'reader'"_s);
    const int closely = buffersOfAClaim();
    EXPECT_GT(closely, byKey);
    EXPECT_LE(closely, mostLookedAtClosely);
}
