// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Returns at a till of a shop whose tills share a store.

#include "till/sharing/sharedreturns.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "tests/unit/till/sharing/fakereturnbooks.h"
#include "tests/unit/till/tilltest.h"
#include "till/checks/checkcodec.h"
#include "till/checks/closedchecks.h"

#include <QElapsedTimer>

#include <chrono>
#include <future>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

using orvastore::KeptCheck;
using tests::refusalOf;
using till::Check;
using till::Reservations;
using End = orvastore::StoreEnd;

class SharedReturnsTest : public tests::TillTest
{
protected:
    SharedReturnsTest() { desk->share(sharing); }
    ~SharedReturnsTest() override { desk.reset(); }

    static poshost::StoreSetup setup()
    {
        poshost::StoreSetup found;
        found.shop = u"1042"_s;
        found.settings.timeoutSeconds = 1;
        return found;
    }
    static KeptCheck keptOf(const Check& check, const QString& till)
    {
        return {check.id(),
                till,
                check.number(),
                {},
                check.document->getSaleDocumentId(),
                true,
                till::checkcodec::encode(check)};
    }
    /// A sale that only another till has.
    Check sellElsewhere()
    {
        loyalty->discounts = {{1, 20.01}, {2, 3.0}};
        loyalty->awards = {{1, 9.01}, {2, 1.35}};
        Check sale = sell();
        forget();
        books.sales = {keptOf(sale, u"9"_s)};
        return sale;
    }
    void forget()
    {
        database->execute(u"DELETE FROM checks"_s);
        database->execute(u"UPDATE queue_messages SET state = 'delivered', account_id = NULL"_s);
    }
    /// Of returns that are not closed.
    int notes()
    {
        poshost::Statement statement(
            *database, u"SELECT count(*) FROM return_reservations WHERE state <> 'closed'"_s);
        statement.next();
        return statement.value(0).toInt();
    }
    void age()
    {
        database->execute(u"UPDATE return_reservations SET noted_at = noted_at - 61000"_s);
    }
    End release() { return Reservations::releaseDue(*database, books, u"1042"_s).end; }
    QString state(const QString& id) { return store.stateOf(id); }

    FakeReturnBooks books;
    FakeReturnModule module{books};
    till::SharedStore shared{setup()};
    till::SharedReturns sharing{store, *database, shared};
};

} // namespace

TEST_F(SharedReturnsTest, aSaleOfAnotherTillComesBackOnceTheStoreHasReservedIt)
{
    const Check sale = sellElsewhere();
    desk->openReturn(returnOf(QString::number(sale.number()), {{1, 1000}}));
    EXPECT_EQ(desk->current().cardNumber(), sale.cardNumber());
    const Check closed = desk->close();
    EXPECT_EQ(closed.document->getSaleDocumentId(), sale.id());
    EXPECT_EQ(books.asked, QStringList({u"find "_s + QString::number(sale.number()),
                                        u"reserve "_s + closed.id()}));
    EXPECT_EQ(books.reserved.saleIdentifier, sale.id());
    EXPECT_EQ(books.reserved.shop, u"1042"_s);
    ASSERT_EQ(books.reserved.lines.size(), 1);
    EXPECT_EQ(books.reserved.lines.first().position, 1);
    EXPECT_EQ(books.reserved.lines.first().thousandths, 1000);
    EXPECT_EQ(books.reserved.lines.first().soldThousandths, 2000);
    EXPECT_EQ(notes(), 0);
    EXPECT_EQ(books.allowed.size(), 1) << "one time for opening and closing";
    EXPECT_EQ(desk->takeNotices(), QStringList());
}

TEST_F(SharedReturnsTest, whatOtherTillsTookBackIsReckonedWithToTheKopeck)
{
    const Check sale = sellElsewhere();
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const Check first = desk->close();
    database->execute(u"DELETE FROM checks"_s); // another till's too
    books.returns = {keptOf(first, u"4"_s)};
    EXPECT_TRUE(refusalOf([&] {
                    desk->openReturn(returnOf(sale.id(), {{1, 2000}}));
                }).contains(u"1"_s));
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const Check second = desk->close();
    EXPECT_EQ(books.reserved.known, QStringList{first.id()});
    const till::Line* whole = sale.line(1);
    EXPECT_EQ(first.line(1)->sumKopecks + second.line(1)->sumKopecks, whole->sumKopecks);
    EXPECT_EQ(first.line(1)->discountKopecks + second.line(1)->discountKopecks,
              whole->discountKopecks);
    EXPECT_EQ(first.line(1)->takenBackKopecks + second.line(1)->takenBackKopecks,
              whole->earnedKopecks);
}

TEST_F(SharedReturnsTest, anOwnReturnThatTheStoreKnowsTooCountsOnce)
{
    const Check sale = sell();
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const Check first = desk->close();
    books.returns = {keptOf(first, u"3"_s)};
    desk->openReturn(returnOf(u"last"_s, {{1, 1000}}));
    desk->close();
    EXPECT_EQ(books.reserved.known, QStringList{first.id()});
}

TEST_F(SharedReturnsTest, withTheStoreAwayAnOwnSaleComesBackAndIsNotWaitedForAgain)
{
    const Check sale = sell();
    books.finding = End::Unreachable;
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const QStringList notices = desk->takeNotices();
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices.first().contains(u"so it is"_s)) << qPrintable(notices.first());
    const Check closed = desk->close();
    EXPECT_EQ(state(closed.id()), u"closed"_s);
    EXPECT_EQ(books.asked, QStringList{u"find "_s + sale.id()});
}

TEST_F(SharedReturnsTest, withTheStoreAwayAnotherTillsSaleDoesNotComeBack)
{
    const Check sale = sellElsewhere();
    books.finding = End::Unreachable;
    const QString said = refusalOf([&] { desk->openReturn(returnOf(sale.id(), {{1, 1000}})); });
    EXPECT_TRUE(said.contains(sale.id()) && said.contains(u"so it is"_s)) << qPrintable(said);
    EXPECT_FALSE(desk->hasCheck());
}

TEST_F(SharedReturnsTest, aConflictLeavesTheReturnOpenAndGivesNothingAway)
{
    const Check sale = sell();
    books.reserving = End::Refused;
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const QString id = desk->current().id();
    EXPECT_EQ(refusalOf([&] { desk->close(); }), u"so it is"_s);
    EXPECT_EQ(state(id), u"open"_s);
    desk->abandon();
    EXPECT_EQ(Reservations::nextDue(*database), 0);
    EXPECT_EQ(release(), End::Done);
    EXPECT_EQ(books.asked.last(), u"release "_s + id);
    EXPECT_EQ(notes(), 0);
    EXPECT_EQ(messages(), 1) << "the sale's alone";
}

TEST_F(SharedReturnsTest, anotherReturnThatIsAboutToCloseIsWaitedForWithinTheTimeOut)
{
    const Check sale = sellElsewhere();
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    books.undecided = 2;
    const Check closed = desk->close();
    EXPECT_EQ(books.asked.count(u"reserve "_s + closed.id()), 3);
    EXPECT_EQ(desk->takeNotices(), QStringList());

    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    books.undecided = 1'000'000;
    QElapsedTimer time;
    time.start();
    EXPECT_FALSE(refusalOf([&] { desk->close(); }).isEmpty());
    EXPECT_LT(time.elapsed(), shared.timeout().count() + 500);
    EXPECT_GT(books.undecided, 0);
    EXPECT_TRUE(desk->hasCheck());
    books.undecided = 0;
    desk->close();
}

TEST_F(SharedReturnsTest, aLostReplyKeepsAForeignReturnOpenUntilItIsRepeated)
{
    const Check sale = sellElsewhere();
    books.reserving = End::Unknown;
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const QString id = desk->current().id();
    EXPECT_TRUE(refusalOf([&] { desk->close(); }).contains(u"so it is"_s));
    EXPECT_EQ(state(id), u"open"_s);
    EXPECT_EQ(notes(), 1);
    books.reserving = End::Done;
    EXPECT_EQ(desk->close().id(), id);
    EXPECT_EQ(books.asked.count(u"reserve "_s + id), 2);
    EXPECT_EQ(notes(), 0);
}

TEST_F(SharedReturnsTest, whatAClosedReturnHasReservedIsTakenForGoodHandedOverOrNot)
{
    const Check sale = sell();
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const QString id = desk->close().id();
    EXPECT_EQ(Reservations::nextDue(*database), 0);
    books.releasing = End::Unreachable;
    EXPECT_EQ(release(), End::Unreachable);
    books.releasing = End::Done;
    EXPECT_EQ(release(), End::Done);
    EXPECT_EQ(books.asked.count(u"settle "_s + id), 2);
    EXPECT_EQ(books.asked.filter(u"release"_s).size(), 0);
    EXPECT_EQ(Reservations::nextDue(*database), std::nullopt);
}

TEST_F(SharedReturnsTest, aLostReplyDoesNotKeepAnOwnSale)
{
    const Check sale = sell();
    books.reserving = End::Unknown;
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const Check closed = desk->close();
    EXPECT_EQ(desk->takeNotices().size(), 1);
    EXPECT_EQ(state(closed.id()), u"closed"_s);
    EXPECT_EQ(notes(), 0) << "handing it over settles it";
}

TEST_F(SharedReturnsTest, whatADeadTillHasReservedIsFreeAfterAMinuteAndClosesNoMore)
{
    const Check sale = sellElsewhere();
    books.reserving = End::Unknown;
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const QString id = desk->current().id();
    refusalOf([&] { desk->close(); });
    EXPECT_GT(Reservations::nextDue(*database).value_or(0), 0);
    EXPECT_EQ(release(), End::Done);
    EXPECT_EQ(books.asked.filter(u"release"_s).size(), 0) << "it is the open check's own";
    age();
    books.releasing = End::Unreachable;
    EXPECT_EQ(release(), End::Unreachable);
    books.reserving = End::Done;
    refusalOf([&] { desk->close(); });
    EXPECT_EQ(state(id), u"open"_s);
    EXPECT_EQ(books.asked.filter(u"reserve"_s).size(), 1) << "the store is not asked again";
    books.releasing = End::Done;
    EXPECT_EQ(release(), End::Done);
    EXPECT_EQ(notes(), 0);
}

TEST_F(SharedReturnsTest, whatIsNotedWhileTheServiceWaitsToWriteIsNotGivenFree)
{
    const Check sale = sellElsewhere();
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const QString id = desk->current().id();
    std::future<End> released;
    {
        poshost::Transaction busy(*database);
        released = std::async(std::launch::async, [&] {
            poshost::Database ofService(database->fileName());
            return Reservations::releaseDue(ofService, books, u"1042"_s).end;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        Reservations(*database).note(id);
        busy.commit();
    }
    EXPECT_EQ(released.get(), End::Done);
    EXPECT_FALSE(books.asked.contains(u"release "_s + id));
    EXPECT_EQ(notes(), 1);
    desk->close();
}

TEST_F(SharedReturnsTest, whatIsGivenFreeBetweenReservingAndClosingDoesNotClose)
{
    const Check sale = sellElsewhere();
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const QString id = desk->current().id();
    books.whileReserving = [&] {
        age();
        EXPECT_EQ(release(), End::Done);
    };
    refusalOf([&] { desk->close(); });
    EXPECT_EQ(state(id), u"open"_s);
    EXPECT_EQ(messages(), 1) << "the sale's alone";
}

TEST_F(SharedReturnsTest, aNumberOfSeveralTillsIsRefusedWithTheirNames)
{
    const Check sale = sellElsewhere();
    books.sales.append({u"another"_s, u"4"_s, sale.number(), {}, {}, true, {}});
    const QString said = refusalOf([&] {
        desk->openReturn(returnOf(QString::number(sale.number()), {{1, 1000}}));
    });
    for (const QString& part : {sale.id(), u"9"_s, u"another"_s, u"4"_s}) {
        EXPECT_TRUE(said.contains(part)) << qPrintable(said);
    }
}

TEST_F(SharedReturnsTest, aDamagedCheckOfTheStoreIsRefused)
{
    const Check sale = sellElsewhere();
    const KeptCheck sound = books.sales.first();
    books.sales.first().content.chop(3);
    EXPECT_FALSE(refusalOf([&] { desk->openReturn(returnOf(sale.id(), {{1, 1000}})); }).isEmpty());
    books.sales.first() = sound;
    books.sales.first().identifier = u"another"_s;
    EXPECT_FALSE(refusalOf([&] { desk->openReturn(returnOf(sale.id(), {{1, 1000}})); }).isEmpty());
    EXPECT_FALSE(desk->hasCheck());
}

TEST_F(SharedReturnsTest, theServerIsNotAskedBeforeItHasTheSaleOfAnotherTill)
{
    const Check sale = sellElsewhere();
    books.sales.first().isDelivered = false;
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    EXPECT_FALSE(desk->request());
    EXPECT_EQ(desk->takeNotices().size(), 1);
    desk->abandon();
    books.sales.first().isDelivered = true;
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    EXPECT_TRUE(desk->request());
}

TEST_F(SharedReturnsTest, aSuspendedReturnIsReckonedAnewWhenItIsTakenUp)
{
    const Check sale = sellElsewhere();
    desk->openReturn(returnOf(sale.id(), {{1, 2000}}));
    ASSERT_TRUE(desk->request());
    desk->suspend();
    desk->restore(u"last"_s);
    const Check other = desk->close();
    EXPECT_EQ(books.asked.last(), u"reserve "_s + other.id());

    database->execute(u"DELETE FROM checks"_s);
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    ASSERT_TRUE(desk->request());
    desk->suspend();
    books.returns = {keptOf(other, u"4"_s)};
    EXPECT_FALSE(refusalOf([&] { desk->restore(u"last"_s); }).isEmpty());
    EXPECT_FALSE(desk->hasCheck());
}

TEST_F(SharedReturnsTest, aReturnIsHandedOverWithItsLines)
{
    const Check sale = sell();
    desk->openReturn(returnOf(sale.id(), {{1, 1000}, {2, 250}}));
    const Check closed = desk->close();
    const auto handed = till::readClosedCheck(*database, *store.messageOf(closed.id()));
    ASSERT_TRUE(handed);
    ASSERT_EQ(handed->returned.size(), 2);
    EXPECT_EQ(handed->returned.last().position, 2);
    EXPECT_EQ(handed->returned.last().thousandths, 250);
    EXPECT_EQ(handed->returned.last().soldThousandths, 500);
    const auto sold = till::readClosedCheck(*database, *store.messageOf(sale.id()));
    ASSERT_TRUE(sold);
    EXPECT_TRUE(sold->returned.isEmpty());
}
