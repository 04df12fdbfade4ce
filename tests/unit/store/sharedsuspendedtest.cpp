// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Suspended checks and the reading of closed ones on a real server, with the rights of tills.

#include "store/client/postgresbooks.h"
#include "tests/unit/store/storefixture.h"

#include <QElapsedTimer>
#include <thread>

using namespace Qt::StringLiterals;
using orvastore::KeptCheck;
using orvastore::LeftCheck;
using orvastore::PostgresBooks;
using orvastore::StoreEnd;
using orvastore::TakeUp;
using storetest::checkOf;

namespace {

LeftCheck suspendedOf(const QString& identifier, const QString& till = u"1"_s,
                      const QString& mark = u"m1"_s)
{
    LeftCheck check;
    check.shop = u"shop"_s;
    check.till = till;
    check.identifier = identifier;
    check.number = 7;
    check.leftAt = QDateTime::fromMSecsSinceEpoch(1'790'000'000'123);
    check.mark = mark;
    check.content = "suspended " + identifier.toUtf8();
    return check;
}

/// Two tills of a shop and one of another.
class SharedSuspended : public storetest::StoreTest
{
protected:
    SharedSuspended()
    {
        const QString first = admitted(u"shop"_s);
        one.open(storetest::settingsFor(first));
        two.open(storetest::settingsFor(admitted(u"shop"_s)));
        foreign.open(storetest::settingsFor(admitted(u"elsewhere"_s)));
    }

    QString admitted(const QString& shop)
    {
        static int made = 0;
        const QString role = u"suspending%1"_s.arg(++made);
        sql(u"CREATE ROLE %1 LOGIN"_s.arg(role));
        orvastore::storeschema::admitTill(owner, role, shop);
        return storetest::sharedCluster().connection(role, database);
    }

    static QByteArray contentOf(const TakeUp& taken)
    {
        return taken.check ? taken.check->content : QByteArray("none");
    }

    QStringList identifiers(PostgresBooks& books, const QString& before = {}, int most = 1000)
    {
        QStringList all;
        const auto result = books.forEachCheck(u"shop"_s, before, [&](const KeptCheck& check) {
            all.append(check.identifier);
            return all.size() < most;
        });
        EXPECT_EQ(result.end, StoreEnd::Done) << qPrintable(result.error.ru());
        return all;
    }

    PostgresBooks one;
    PostgresBooks two;
    PostgresBooks foreign;
};

TEST_F(SharedSuspended, goesFromOneTillToAnotherAndIsForgottenThere)
{
    ASSERT_EQ(one.leave(suspendedOf(u"a"_s)).end, StoreEnd::Done);
    QStringList waiting;
    EXPECT_EQ(two.forEachLeft(u"shop"_s,
                              [&](const LeftCheck& check) { waiting.append(check.identifier); })
                  .end,
              StoreEnd::Done);
    EXPECT_EQ(waiting, QStringList{u"a"_s});
    const TakeUp taken = two.takeUp(u"shop"_s, u"a"_s, u"2"_s, u"t1"_s);
    ASSERT_TRUE(taken.check) << qPrintable(taken.result.error.ru());
    EXPECT_EQ(taken.check->content, "suspended a");
    EXPECT_EQ(taken.check->till, u"1"_s);
    EXPECT_EQ(taken.check->number, 7);
    EXPECT_EQ(taken.check->leftAt.toMSecsSinceEpoch(), 1'790'000'000'123);
    EXPECT_EQ(two.settleTakeUp(u"shop"_s, u"t1"_s).end, StoreEnd::Done);
    EXPECT_EQ(two.settleTakeUp(u"shop"_s, u"t1"_s).end, StoreEnd::Done) << "safe to repeat";
    EXPECT_EQ(sql(u"SELECT length(content) FROM orva.suspended"_s), u"0"_s);
    const TakeUp again = one.takeUp(u"shop"_s, u"a"_s, u"1"_s, u"t2"_s);
    EXPECT_EQ(again.result.end, StoreEnd::Refused);
    EXPECT_TRUE(again.isOver);
    EXPECT_TRUE(again.result.error.in(poshost::Language::English).contains(u"till 2"_s));
}

TEST_F(SharedSuspended, repeatingATakeUpGivesTheSameCheckAndNoOther)
{
    one.leave(suspendedOf(u"a"_s));
    one.leave(suspendedOf(u"b"_s));
    const QByteArray first = contentOf(two.takeUp(u"shop"_s, u"last"_s, u"2"_s, u"t1"_s));
    EXPECT_EQ(first, "suspended b");
    EXPECT_EQ(contentOf(two.takeUp(u"shop"_s, u"last"_s, u"2"_s, u"t1"_s)), first);
    EXPECT_EQ(contentOf(one.takeUp(u"shop"_s, u"last"_s, u"1"_s, u"t2"_s)), "suspended a");
    EXPECT_TRUE(two.takeUp(u"shop"_s, u"last"_s, u"2"_s, u"t3"_s).isOver);
}

TEST_F(SharedSuspended, aLeavingThatIsRepeatedLateChangesNothing)
{
    EXPECT_EQ(one.leave(suspendedOf(u"a"_s)).end, StoreEnd::Done);
    two.takeUp(u"shop"_s, u"a"_s, u"2"_s, u"t1"_s);
    two.settleTakeUp(u"shop"_s, u"t1"_s);
    EXPECT_EQ(one.leave(suspendedOf(u"a"_s)).end, StoreEnd::Done);
    EXPECT_TRUE(one.takeUp(u"shop"_s, u"a"_s, u"1"_s, u"t2"_s).isOver) << "it would be sold twice";
    EXPECT_EQ(two.leave(suspendedOf(u"a"_s, u"2"_s, u"m2"_s)).end, StoreEnd::Done)
        << "who has it may leave it again";
    EXPECT_EQ(one.leave(suspendedOf(u"a"_s)).end, StoreEnd::Done);
    EXPECT_EQ(contentOf(one.takeUp(u"shop"_s, u"a"_s, u"1"_s, u"t3"_s)), "suspended a");
    EXPECT_EQ(two.leave(suspendedOf(u"a"_s, u"2"_s, u"m3"_s)).end, StoreEnd::Refused)
        << "who has it no more may not";
}

TEST_F(SharedSuspended, aClosedCheckIsNotLeft)
{
    handOver(u"a"_s);
    const auto result = one.leave(suspendedOf(u"a"_s));
    EXPECT_EQ(result.end, StoreEnd::Refused);
    EXPECT_TRUE(result.error.in(poshost::Language::English).contains(u"till1"_s));
    EXPECT_TRUE(two.takeUp(u"shop"_s, u"a"_s, u"2"_s, u"t1"_s).isOver);
}

TEST_F(SharedSuspended, aPersonReleasesWhatATillHasAskedForAndNeverGot)
{
    one.leave(suspendedOf(u"a"_s));
    two.takeUp(u"shop"_s, u"a"_s, u"2"_s, u"t1"_s);
    EXPECT_EQ(sql(u"SELECT orva.release_suspended('a')"_s), u"t"_s);
    EXPECT_EQ(contentOf(one.takeUp(u"shop"_s, u"a"_s, u"1"_s, u"t2"_s)), "suspended a");
    EXPECT_EQ(two.settleTakeUp(u"shop"_s, u"t1"_s).end, StoreEnd::Refused);
    one.settleTakeUp(u"shop"_s, u"t2"_s);
    EXPECT_EQ(sql(u"SELECT orva.release_suspended('a')"_s), u"f"_s) << "a till has it durably";
}

TEST_F(SharedSuspended, anotherShopNeitherSeesNorTakesNorChangesAnything)
{
    one.leave(suspendedOf(u"a"_s));
    handOver(u"closed"_s);
    for (const QString& shop : {u"shop"_s, u"elsewhere"_s}) {
        int seen = 0;
        foreign.forEachLeft(shop, [&](const LeftCheck&) { ++seen; });
        foreign.forEachCheck(shop, {}, [&](const KeptCheck&) {
            ++seen;
            return true;
        });
        QList<KeptCheck> found;
        foreign.findChecks(shop, u"closed"_s, found);
        EXPECT_EQ(seen + found.size(), 0);
        EXPECT_EQ(foreign.takeUp(shop, u"a"_s, u"9"_s, u"t9"_s).result.end, StoreEnd::Refused);
        EXPECT_EQ(foreign.rewrite(shop, u"closed"_s, "x").end, StoreEnd::Refused);
        EXPECT_NE(foreign.settleTakeUp(shop, u"t1"_s).end, StoreEnd::Done);
    }
    EXPECT_EQ(foreign.leave(suspendedOf(u"b"_s)).end, StoreEnd::Refused);
    EXPECT_EQ(contentOf(one.takeUp(u"shop"_s, u"a"_s, u"1"_s, u"t1"_s)), "suspended a");
}

TEST_F(SharedSuspended, oneOfTwoTillsGetsItEachTime)
{
    const int rounds = qEnvironmentVariableIsSet("ORVA_STORE_LONG") ? 1000 : 25;
    int wins = 0;
    int sentences = 0;
    for (int round = 0; round < rounds; ++round) {
        const QString identifier = QString::number(round);
        ASSERT_EQ(one.leave(suspendedOf(identifier)).end, StoreEnd::Done);
        const QString which = round % 2 == 0 ? identifier : u"last"_s;
        TakeUp taken[2];
        std::thread rival(
            [&] { taken[1] = two.takeUp(u"shop"_s, which, u"2"_s, u"b%1"_s.arg(round)); });
        taken[0] = one.takeUp(u"shop"_s, which, u"1"_s, u"a%1"_s.arg(round));
        rival.join();
        for (const TakeUp& end : taken) {
            wins += end.check ? 1 : 0;
            sentences += end.isOver && !end.result.error.isEmpty() ? 1 : 0;
        }
        ASSERT_EQ(wins, round + 1);
        ASSERT_EQ(sentences, round + 1);
    }
    std::printf("figure: a suspended check wanted by two tills: %d rounds, one got it in %d\n",
                rounds, wins);
}

TEST_F(SharedSuspended, waitsForASilentStoreNoLongerThanTheTimeInAll)
{
    PostgresBooks hasty;
    hasty.open(storetest::settingsFor(connection, 20));
    ASSERT_EQ(hasty.leave(suspendedOf(u"a"_s)).end, StoreEnd::Done);
    owner.runAll("BEGIN");
    owner.run("UPDATE orva.suspended SET number = 8");
    hasty.setEnd(QDeadlineTimer(1000));
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(hasty.takeUp(u"shop"_s, u"a"_s, u"2"_s, u"t1"_s).result.end, StoreEnd::Unknown);
    EXPECT_EQ(hasty.settleTakeUp(u"shop"_s, u"t1"_s).end, StoreEnd::Unreachable);
    EXPECT_LT(time.elapsed(), 5000);
    owner.runAll("ROLLBACK");
    hasty.setEnd(QDeadlineTimer::Forever);
    EXPECT_EQ(contentOf(hasty.takeUp(u"shop"_s, u"a"_s, u"2"_s, u"t1"_s)), "suspended a");
}

TEST_F(SharedSuspended, listsClosedChecksByPartsTheNewestFirst)
{
    constexpr int checks = 130;
    const QDateTime noon = QDateTime::currentDateTimeUtc().addDays(-1);
    QStringList newestFirst;
    for (int i = 0; i < checks; ++i) {
        orvastore::HandedCheck check = checkOf(u"c%1"_s.arg(i, 3, 10, QChar(u'0')));
        check.closedAt = noon.addSecs(i * 700); // over midnight
        check.number = i % 100;
        orvastore::handOver(owner, check);
        newestFirst.prepend(check.identifier);
    }
    EXPECT_EQ(identifiers(one), newestFirst);
    EXPECT_EQ(identifiers(one, newestFirst.at(54), 60), newestFirst.mid(55, 60));
    EXPECT_EQ(one.forEachCheck(u"shop"_s, u"nothing"_s, [](const KeptCheck&) { return true; }).end,
              StoreEnd::Refused);
    QList<KeptCheck> found;
    EXPECT_EQ(one.findChecks(u"shop"_s, u"7"_s, found).end, StoreEnd::Done);
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found.first().till, u"till1"_s);
    EXPECT_FALSE(found.first().isDelivered);
    EXPECT_EQ(found.first().content, "content");
}

TEST_F(SharedSuspended, aPartOfALongListIsFoundWithoutReadingTheRest)
{
    sql(u"INSERT INTO orva.checks (closed_on, shop, identifier, till, number, closed_at, lane, "
        "sale, content) SELECT (now() + n * interval '3 s')::date, 'shop', md5(n::text), '1', n, "
        "now() + n * interval '3 s', 0, '', repeat(md5(n::text), 20)::bytea "
        "FROM generate_series(1, 40000) n; ANALYZE orva.checks"_s);
    const auto pagesOf = [&](const QByteArray& beginning) {
        return storetest::buffersOf(owner.run(
            "EXPLAIN (ANALYZE, BUFFERS, FORMAT JSON) SELECT content FROM orva.checks c WHERE "
            "c.shop = 'shop' " +
            beginning +
            " ORDER BY c.closed_on DESC, c.closed_at DESC, c.identifier DESC LIMIT 50"));
    };
    constexpr int most = 500; // of more than 4,000 that the checks have
    EXPECT_LT(pagesOf({}), most);
    EXPECT_LT(pagesOf("AND c.closed_on <= current_date + 1 AND (c.closed_on, c.closed_at, "
                      "c.identifier) < (current_date + 1, now() + interval '20 h', 'f')"),
              most);
    EXPECT_EQ(identifiers(one, {}, 120).size(), 120);
}

TEST_F(SharedSuspended, onlyWhatIsDeliveredIsRewrittenAndWhoHasDoneItStaysKnown)
{
    handOver(u"a"_s);
    EXPECT_EQ(one.rewrite(u"shop"_s, u"a"_s, "masked").end, StoreEnd::Refused);
    EXPECT_EQ(sql(u"SELECT content = 'content' FROM orva.checks"_s), u"t"_s);
    const auto task = book.claim();
    ASSERT_TRUE(task);
    book.finish(*task, done);
    EXPECT_EQ(one.rewrite(u"shop"_s, u"a"_s, "masked").end, StoreEnd::Done);
    EXPECT_EQ(sql(u"SELECT content = 'masked' FROM orva.checks"_s), u"t"_s);
    EXPECT_EQ(sql(u"SELECT length(payload) FROM orva.messages"_s), u"0"_s);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.erasures WHERE role LIKE 'suspending%'"_s), u"1"_s);
    QList<KeptCheck> found;
    one.findChecks(u"shop"_s, u"a"_s, found);
    ASSERT_EQ(found.size(), 1);
    EXPECT_TRUE(found.first().isDelivered);
}

TEST_F(SharedSuspended, aCustomerIsTakenOutOfAReturnWhereverItIsKept)
{
    orvastore::HandedCheck given = checkOf(u"r"_s);
    given.saleIdentifier = u"a"_s;
    given.returned = {{1, 1000, 1000}};
    orvastore::handOver(owner, given);
    const auto task = book.claim();
    ASSERT_TRUE(task);
    book.finish(*task, done);
    EXPECT_EQ(one.rewrite(u"shop"_s, u"r"_s, "masked").end, StoreEnd::Done);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.checks WHERE content = 'masked'"_s), u"1"_s);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.returns WHERE content = 'masked'"_s), u"1"_s);
}

} // namespace
