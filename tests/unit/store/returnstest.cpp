// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What was taken back of a sale, at whichever till: found, reserved, given back, handed over.

#include "store/client/postgresbooks.h"
#include "tests/unit/store/storefixture.h"

#include <QElapsedTimer>

#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using orvastore::PostgresBooks;
using orvastore::PostgresStore;
using orvastore::Reservation;
using orvastore::ReturnedLine;
using orvastore::SaleToReturn;
using orvastore::StoreEnd;
using orvastore::StoreResult;
using storetest::checkOf;
using storetest::settingsFor;

class Returns : public storetest::StoreTest
{
protected:
    Returns()
    {
        books.open(settingsFor(connection));
        store.open(settingsFor(connection));
    }

    /// A return of so many of the three pieces of the sale "sale".
    static Reservation pieces(const QString& identifier, int pieces, const QStringList& known = {})
    {
        return {u"shop"_s,  u"till2"_s,
                identifier, 7,
                u"sale"_s,  {ReturnedLine{1, pieces * 1000, 3000}},
                known,      "return " + identifier.toUtf8()};
    }
    static orvastore::HandedCheck handed(const Reservation& reservation)
    {
        orvastore::HandedCheck check = checkOf(reservation.identifier);
        check.till = reservation.till;
        check.number = reservation.number;
        check.saleIdentifier = reservation.saleIdentifier;
        check.returned = reservation.lines;
        check.content = reservation.content;
        return check;
    }
    StoreResult handOverReturn(const Reservation& reservation)
    {
        return store.handOver({handed(reservation)}).first();
    }
    StoreEnd reserve(const Reservation& reservation) { return books.reserve(reservation).end; }
    /// Identifiers of what was taken back of the sale.
    QStringList known()
    {
        const SaleToReturn found = books.saleToReturn(u"shop"_s, u"sale"_s);
        EXPECT_EQ(found.result.end, StoreEnd::Done) << qPrintable(found.result.error.ru());
        QStringList names;
        for (const orvastore::KeptCheck& kept : found.returns) {
            names.append(kept.identifier);
        }
        return names;
    }

    PostgresBooks books;
    PostgresStore store;
};

} // namespace

TEST_F(Returns, findsASaleByIdentifierAndByNumberWithWhatWasTakenBack)
{
    handOver(u"sale"_s);
    ASSERT_EQ(handOverReturn(pieces(u"r1"_s, 1)).end, StoreEnd::Done);
    ASSERT_EQ(reserve(pieces(u"r2"_s, 1, {u"r1"_s})), StoreEnd::Done);
    for (const QString& which : {u"sale"_s, u"1"_s}) {
        const SaleToReturn found = books.saleToReturn(u"shop"_s, which);
        ASSERT_EQ(found.result.end, StoreEnd::Done) << qPrintable(found.result.error.ru());
        ASSERT_EQ(found.sales.size(), 1);
        EXPECT_EQ(found.sales.first().identifier, u"sale"_s);
        EXPECT_EQ(found.sales.first().till, u"till1"_s);
        EXPECT_EQ(found.sales.first().content, "content");
        EXPECT_FALSE(found.sales.first().isDelivered);
        ASSERT_EQ(found.returns.size(), 2);
        EXPECT_EQ(found.returns.first().identifier, u"r1"_s);
        EXPECT_EQ(found.returns.last().content, "return r2");
        EXPECT_EQ(found.returns.last().till, u"till2"_s);
    }
    EXPECT_TRUE(books.saleToReturn(u"shop"_s, u"7"_s).sales.isEmpty()) << "a return is no sale";
    EXPECT_TRUE(books.saleToReturn(u"shop"_s, u"none"_s).sales.isEmpty());
}

TEST_F(Returns, knowsWhetherTheSaleIsDelivered)
{
    handOver(u"sale"_s);
    const auto task = book.claim();
    ASSERT_TRUE(task);
    book.finish(*task, done);
    EXPECT_TRUE(books.saleToReturn(u"shop"_s, u"sale"_s).sales.value(0).isDelivered);
}

TEST_F(Returns, handsOverEverySaleThatHasTheNumber)
{
    handOver(u"sale"_s);
    handOver(u"other"_s);
    EXPECT_EQ(books.saleToReturn(u"shop"_s, u"1"_s).sales.size(), 2);
}

TEST_F(Returns, areReservedOnce)
{
    EXPECT_EQ(reserve(pieces(u"r1"_s, 2)), StoreEnd::Done);
    EXPECT_EQ(reserve(pieces(u"r1"_s, 2)), StoreEnd::Done) << "repeating is safe";
    const StoreResult unknown = books.reserve(pieces(u"r2"_s, 1));
    EXPECT_EQ(unknown.end, StoreEnd::Refused);
    EXPECT_TRUE(unknown.isConflict);
    const QString said = unknown.error.in(poshost::Language::English);
    EXPECT_TRUE(said.contains(u"r1"_s) && said.contains(u"till2"_s) && said.contains(u"7"_s))
        << qPrintable(said);
    ASSERT_EQ(books.settleReturn(u"shop"_s, u"r1"_s).end, StoreEnd::Done);
    const StoreResult tooMuch = books.reserve(pieces(u"r2"_s, 2, {u"r1"_s}));
    EXPECT_EQ(tooMuch.end, StoreEnd::Refused);
    EXPECT_TRUE(tooMuch.isConflict);
    EXPECT_TRUE(tooMuch.error.ru().contains(u"r1"_s)) << qPrintable(tooMuch.error.ru());
    EXPECT_EQ(reserve(pieces(u"r2"_s, 1, {u"r1"_s})), StoreEnd::Done);
    EXPECT_EQ(known(), (QStringList{u"r1"_s, u"r2"_s}));
}

TEST_F(Returns, areFreeAgainOnceReleasedAndNotReservedLate)
{
    ASSERT_EQ(reserve(pieces(u"r1"_s, 3)), StoreEnd::Done);
    EXPECT_EQ(books.release(u"shop"_s, u"r1"_s).end, StoreEnd::Done);
    EXPECT_EQ(books.release(u"shop"_s, u"r1"_s).end, StoreEnd::Done);
    EXPECT_EQ(known(), QStringList());
    EXPECT_EQ(reserve(pieces(u"r2"_s, 3)), StoreEnd::Done);
    EXPECT_EQ(reserve(pieces(u"r1"_s, 3)), StoreEnd::Refused) << "a request that comes too late";
    EXPECT_EQ(books.release(u"shop"_s, u"r3"_s).end, StoreEnd::Done) << "before it was reserved";
    EXPECT_EQ(reserve(pieces(u"r3"_s, 1, {u"r2"_s})), StoreEnd::Refused);
    EXPECT_EQ(known(), QStringList{u"r2"_s});
}

TEST_F(Returns, stayOnceClosedWithoutEverBeingHandedOver)
{
    ASSERT_EQ(reserve(pieces(u"r1"_s, 3)), StoreEnd::Done);
    EXPECT_EQ(books.settleReturn(u"shop"_s, u"r1"_s).end, StoreEnd::Done);
    EXPECT_EQ(books.settleReturn(u"shop"_s, u"nothing"_s).end, StoreEnd::Done);
    EXPECT_EQ(books.release(u"shop"_s, u"r1"_s).end, StoreEnd::Done);
    EXPECT_EQ(known(), QStringList{u"r1"_s}) << "what is closed is not given back";
    ASSERT_EQ(handOverReturn(pieces(u"r1"_s, 3)).end, StoreEnd::Done) << "it may come after all";
    EXPECT_EQ(known(), QStringList{u"r1"_s});
}

TEST_F(Returns, stayOnceHandedOver)
{
    ASSERT_EQ(reserve(pieces(u"r1"_s, 3)), StoreEnd::Done);
    ASSERT_EQ(handOverReturn(pieces(u"r1"_s, 3)).end, StoreEnd::Done);
    EXPECT_EQ(books.release(u"shop"_s, u"r1"_s).end, StoreEnd::Done);
    EXPECT_EQ(known(), QStringList{u"r1"_s});
    EXPECT_EQ(handOverReturn(pieces(u"r1"_s, 3)).end, StoreEnd::Done) << "repeating is safe";
}

TEST_F(Returns, withoutReservationAreRefusedWhenMoreWouldComeBackThanWasSold)
{
    handOver(u"sale"_s);
    ASSERT_EQ(handOverReturn(pieces(u"r1"_s, 2)).end, StoreEnd::Done);
    for (int i = 0; i < 3; ++i) {
        const QList<StoreResult> results =
            store.handOver({handed(pieces(u"r2"_s, 2)), checkOf(u"next"_s)});
        ASSERT_EQ(results.size(), 2);
        EXPECT_EQ(results.first().end, StoreEnd::Refused);
        EXPECT_TRUE(results.first().isConflict);
        const QString said = results.first().error.in(poshost::Language::English);
        EXPECT_TRUE(said.contains(u"r1"_s) && said.contains(u"r2"_s)) << qPrintable(said);
        EXPECT_EQ(results.last().end, StoreEnd::Done) << "others go on";
    }
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.checks WHERE identifier = 'r2'"_s), u"0"_s);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.messages WHERE identifier = 'r2'"_s), u"0"_s);
    EXPECT_EQ(handOverReturn(pieces(u"r3"_s, 1)).end, StoreEnd::Done);
}

TEST_F(Returns, goToTheServerInTheOrderOfTheirReservationsWhicheverTillIsFaster)
{
    handOver(u"sale"_s, u"card"_s);
    const auto deliverNext = [&] {
        const auto task = book.claim();
        if (task) {
            book.finish(*task, done);
        }
        return nameOf(task);
    };
    EXPECT_EQ(deliverNext(), u"sale"_s);
    QStringList known;
    for (const QString& name : {u"r1"_s, u"r2"_s, u"r3"_s}) {
        ASSERT_EQ(reserve(pieces(name, 1, known)), StoreEnd::Done);
        ASSERT_EQ(books.settleReturn(u"shop"_s, name).end, StoreEnd::Done);
        known.append(name);
    }
    for (int i = 0; i < 2; ++i) { // and repeated
        ASSERT_EQ(handOverReturn(pieces(u"r3"_s, 1)).end, StoreEnd::Done);
        ASSERT_EQ(handOverReturn(pieces(u"r2"_s, 1)).end, StoreEnd::Done);
        EXPECT_EQ(deliverNext(), u"none"_s);
    }
    handOver(u"another"_s, u"card"_s); // the others pass
    EXPECT_EQ(deliverNext(), u"another"_s);
    ASSERT_EQ(handOverReturn(pieces(u"r1"_s, 1)).end, StoreEnd::Done);
    EXPECT_EQ(deliverNext(), u"r1"_s);
    EXPECT_EQ(deliverNext(), u"r2"_s);
    EXPECT_EQ(deliverNext(), u"r3"_s);
    EXPECT_EQ(deliverNext(), u"none"_s);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.parked"_s), u"0"_s);
    EXPECT_EQ(sql(u"SELECT sum(waiting) FROM orva.lanes"_s), u"0"_s);
}

TEST_F(Returns, closedWithoutTheStoreGoBeforeThoseThatWereReckonedBehindThem)
{
    handOver(u"sale"_s, u"card"_s);
    book.finish(*book.claim(), done);
    // r1 was closed while its till could not reach the store; another till knows r2 only
    ASSERT_EQ(reserve(pieces(u"r2"_s, 1, {u"r1"_s})), StoreEnd::Done);
    ASSERT_EQ(books.settleReturn(u"shop"_s, u"r2"_s).end, StoreEnd::Done);
    ASSERT_EQ(reserve(pieces(u"r3"_s, 1, {u"r2"_s})), StoreEnd::Done);
    ASSERT_EQ(books.settleReturn(u"shop"_s, u"r3"_s).end, StoreEnd::Done);
    for (const QString& name : {u"r3"_s, u"r1"_s, u"r2"_s}) {
        ASSERT_EQ(handOverReturn(pieces(name, 1)).end, StoreEnd::Done);
    }
    EXPECT_EQ(known(), (QStringList{u"r1"_s, u"r2"_s, u"r3"_s}));
    QStringList delivered;
    for (auto task = book.claim(); task; task = book.claim()) {
        delivered.append(nameOf(task));
        book.finish(*task, done);
    }
    EXPECT_EQ(delivered, (QStringList{u"r1"_s, u"r2"_s, u"r3"_s}));
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.parked"_s), u"0"_s);
}

TEST_F(Returns, areNotReckonedBehindOneThatMayBeGivenBackYet)
{
    ASSERT_EQ(reserve(pieces(u"r1"_s, 1)), StoreEnd::Done);
    const StoreResult undecided = books.reserve(pieces(u"r2"_s, 1, {u"r1"_s}));
    EXPECT_EQ(undecided.end, StoreEnd::Refused);
    EXPECT_TRUE(undecided.isConflict);
    EXPECT_EQ(undecided.error.code(), QLatin1String(orvastore::undecidedReturn));
    EXPECT_TRUE(undecided.error.in(poshost::Language::English).contains(u"r1"_s));
    const StoreResult unknown = books.reserve(pieces(u"r2"_s, 1));
    EXPECT_EQ(unknown.error.code(), u"store.returnUnknown"_s);
    ASSERT_EQ(books.release(u"shop"_s, u"r1"_s).end, StoreEnd::Done);
    EXPECT_EQ(reserve(pieces(u"r2"_s, 1)), StoreEnd::Done);
    ASSERT_EQ(books.settleReturn(u"shop"_s, u"r2"_s).end, StoreEnd::Done);
    EXPECT_EQ(reserve(pieces(u"r3"_s, 1, {u"r2"_s})), StoreEnd::Done);
}

TEST_F(Returns, waitNoLongerThanAnHourForOneThatDoesNotCome)
{
    handOver(u"sale"_s, u"card"_s);
    book.finish(*book.claim(), done);
    ASSERT_EQ(reserve(pieces(u"r1"_s, 1)), StoreEnd::Done);
    ASSERT_EQ(books.settleReturn(u"shop"_s, u"r1"_s).end, StoreEnd::Done);
    ASSERT_EQ(reserve(pieces(u"r2"_s, 1, {u"r1"_s})), StoreEnd::Done);
    ASSERT_EQ(handOverReturn(pieces(u"r2"_s, 1)).end, StoreEnd::Done);
    EXPECT_EQ(sql(u"SELECT waits_for FROM orva.parked"_s), u"r1"_s);
    sql(u"UPDATE orva.parked SET since = since - interval '61 minutes'"_s);
    handOver(u"another"_s, u"other card"_s);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.parked"_s), u"1"_s);
    auto second = checkOf(u"another return"_s, u"third card"_s);
    second.saleIdentifier = u"another"_s;
    orvastore::handOver(owner, second);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.parked"_s), u"0"_s);
    QStringList delivered;
    for (auto task = book.claim(); task; task = book.claim()) {
        delivered.append(nameOf(task));
        book.finish(*task, done);
    }
    EXPECT_TRUE(delivered.contains(u"r2"_s)) << qPrintable(delivered.join(u' '));
}

TEST_F(Returns, findASaleThatNoMessageBringsAndItsReturns)
{
    orvastore::HandedCheck sale = checkOf(u"sale"_s);
    sale.messages.clear();
    ASSERT_EQ(books.keep(sale).end, StoreEnd::Done);
    ASSERT_EQ(books.keep(sale).end, StoreEnd::Done);
    EXPECT_EQ(sql(u"SELECT count(*), sum(repeated) FROM orva.checks"_s), u"1|1"_s);
    const SaleToReturn found = books.saleToReturn(u"shop"_s, u"1"_s);
    ASSERT_EQ(found.sales.size(), 1);
    EXPECT_EQ(found.sales.first().content, sale.content);
    EXPECT_TRUE(found.sales.first().isDelivered);
    orvastore::HandedCheck back = handed(pieces(u"r1"_s, 2));
    back.messages.clear();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(books.keep(back).end, StoreEnd::Done);
        EXPECT_EQ(known(), QStringList{u"r1"_s});
    }
    back = handed(pieces(u"r2"_s, 2));
    back.messages.clear();
    const StoreResult tooMuch = books.keep(back);
    EXPECT_EQ(tooMuch.end, StoreEnd::Refused);
    EXPECT_TRUE(tooMuch.isConflict);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.checks"_s), u"2"_s);
    EXPECT_EQ(reserve(pieces(u"r3"_s, 1, {u"r1"_s})), StoreEnd::Done);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.lanes"_s), u"0"_s) << "nothing is delivered";
    EXPECT_EQ(sql(u"SELECT till FROM orva.handed_last ORDER BY till"_s), u"till1\ntill2"_s);
}

TEST_F(Returns, thatComeWithoutAMessageKeepNobodyWaiting)
{
    handOver(u"sale"_s, u"card"_s);
    book.finish(*book.claim(), done);
    ASSERT_EQ(reserve(pieces(u"r1"_s, 1)), StoreEnd::Done);
    ASSERT_EQ(books.settleReturn(u"shop"_s, u"r1"_s).end, StoreEnd::Done);
    ASSERT_EQ(reserve(pieces(u"r2"_s, 1, {u"r1"_s})), StoreEnd::Done);
    ASSERT_EQ(handOverReturn(pieces(u"r2"_s, 1)).end, StoreEnd::Done);
    ASSERT_EQ(nameOf(book.claim()), u"none"_s);
    orvastore::HandedCheck silent = handed(pieces(u"r1"_s, 1));
    silent.messages.clear();
    ASSERT_EQ(books.keep(silent).end, StoreEnd::Done);
    const auto task = book.claim();
    EXPECT_EQ(nameOf(task), u"r2"_s);
    book.finish(*task, done);
    ASSERT_EQ(reserve(pieces(u"r3"_s, 1, {u"r1"_s, u"r2"_s})), StoreEnd::Done);
    ASSERT_EQ(handOverReturn(pieces(u"r3"_s, 1)).end, StoreEnd::Done);
    EXPECT_EQ(nameOf(book.claim()), u"r3"_s);
}

TEST_F(Returns, withoutAMessageWaitForAStoreThatKeepsThem)
{
    sql(u"DROP FUNCTION orva.hand_over_silent"_s);
    orvastore::HandedCheck sale = checkOf(u"sale"_s);
    sale.messages.clear();
    orvastore::HandedCheck back = handed(pieces(u"r1"_s, 1));
    back.messages.clear();
    for (const orvastore::HandedCheck& check : {sale, back}) {
        const StoreResult result = books.keep(check);
        EXPECT_EQ(result.end, StoreEnd::Unreachable);
        const QString said = result.error.in(poshost::Language::English);
        EXPECT_TRUE(said.contains(u"8"_s) && said.contains(u"orva-store migrate"_s))
            << qPrintable(said);
    }
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.returns"_s), u"0"_s);
}

TEST_F(Returns, handedOverWithoutLinesAreKnownAndAsked)
{
    orvastore::HandedCheck older = handed(pieces(u"old"_s, 1));
    older.returned.clear();
    orvastore::handOver(owner, older);
    EXPECT_EQ(known(), QStringList{u"old"_s});
    EXPECT_EQ(reserve(pieces(u"r1"_s, 1)), StoreEnd::Refused);
    EXPECT_EQ(reserve(pieces(u"r1"_s, 1, {u"old"_s})), StoreEnd::Done);
}

TEST_F(Returns, ofAnotherShopCanNeitherBeSeenNorReserved)
{
    storetest::sharedCluster().sql(u"CREATE ROLE %1_till LOGIN"_s.arg(database));
    orvastore::storeschema::admitTill(owner, database + u"_till"_s, u"elsewhere"_s);
    handOver(u"sale"_s);
    ASSERT_EQ(reserve(pieces(u"r1"_s, 1)), StoreEnd::Done);
    PostgresBooks foreign;
    foreign.open(
        settingsFor(storetest::sharedCluster().connection(database + u"_till"_s, database)));
    const SaleToReturn seen = foreign.saleToReturn(u"shop"_s, u"sale"_s);
    EXPECT_EQ(seen.result.end, StoreEnd::Refused);
    EXPECT_TRUE(seen.sales.isEmpty() && seen.returns.isEmpty());
    EXPECT_EQ(foreign.reserve(pieces(u"r2"_s, 1, {u"r1"_s})).end, StoreEnd::Refused);
    EXPECT_EQ(foreign.release(u"shop"_s, u"r1"_s).end, StoreEnd::Refused);
    Reservation own = pieces(u"r2"_s, 3);
    own.shop = u"elsewhere"_s;
    EXPECT_EQ(foreign.reserve(own).end, StoreEnd::Done) << "its own shop's may have the same names";
    EXPECT_TRUE(foreign.saleToReturn(u"elsewhere"_s, u"sale"_s).sales.isEmpty());
    orvastore::HandedCheck silent = checkOf(u"silent"_s);
    silent.messages.clear();
    EXPECT_EQ(foreign.keep(silent).end, StoreEnd::Refused);
    silent.shop = u"elsewhere"_s;
    EXPECT_EQ(foreign.keep(silent).end, StoreEnd::Done);
    orvastore::Connection direct(
        settingsFor(storetest::sharedCluster().connection(database + u"_till"_s, database)), {});
    EXPECT_THROW(direct.run("SELECT * FROM orva.returns"), orvastore::StoreError);
    EXPECT_EQ(known(), QStringList{u"r1"_s});
}

TEST_F(Returns, ofTwoAtTheSameMomentOneWins)
{
    const int rounds = qEnvironmentVariableIsSet("ORVA_STORE_LONG") ? 1000 : 50;
    constexpr int rivals = 2;
    int won = 0;
    std::vector<std::unique_ptr<PostgresBooks>> tills;
    for (int i = 0; i < rivals; ++i) {
        tills.push_back(std::make_unique<PostgresBooks>());
        tills.back()->open(settingsFor(connection, 20));
    }
    for (int round = 0; round < rounds; ++round) {
        std::atomic<int> winners = 0;
        std::atomic<int> ready = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < rivals; ++i) {
            threads.emplace_back([&, i] {
                Reservation wanted = pieces(u"r%1-%2"_s.arg(round).arg(i), 3);
                wanted.saleIdentifier = u"sale%1"_s.arg(round);
                ++ready;
                while (ready < rivals) {
                    std::this_thread::yield();
                }
                winners += tills.at(size_t(i))->reserve(wanted).end == StoreEnd::Done ? 1 : 0;
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(winners, 1) << "round " << round;
        won += winners;
    }
    EXPECT_EQ(won, rounds);
}

TEST_F(Returns, waitNoLongerAltogetherThanAllowed)
{
    PostgresCluster silent;
    orvastore::Connection(settingsFor(silent.connection()), {}).open();
    silent.freeze();
    PostgresBooks waiting;
    waiting.open(settingsFor(silent.connection(), 1));
    waiting.allow(1500ms);
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(waiting.saleToReturn(u"shop"_s, u"sale"_s).result.end, StoreEnd::Unreachable);
    }
    EXPECT_LT(time.elapsed(), 1500 + 500);
    silent.thaw();
}
