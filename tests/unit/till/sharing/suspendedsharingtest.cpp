// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A suspended check that goes from one till to another, and whatever gets lost on its way.

#include "till/sharing/suspendedsharing.h"
#include "tests/support/configured.h"
#include "tests/unit/till/sharing/fakebooks.h"
#include "tests/unit/till/tilltest.h"
#include "till/checks/checkcodec.h"
#include "till/commands/suspendedwatch.h"

#include <QDeadlineTimer>
#include <QThread>

using namespace Qt::StringLiterals;
using tests::FakeBooks;
using tests::refusalOf;
using till::Check;
using Fault = tests::FakeBooks::Fault;

namespace {

poshost::StoreSetup shopSetup()
{
    poshost::StoreSetup setup;
    setup.settings.database = u"somewhere"_s;
    setup.shop = u"5"_s;
    return setup;
}

std::unique_ptr<till::SharedStore> storeAt(const QByteArray& tillName)
{
    const Configured config("[till]\nname = \"" + tillName + "\"\n");
    return std::make_unique<till::SharedStore>(shopSetup());
}

/// A second till beside the one of the test.
struct OtherTill
{
    explicit OtherTill(const QString& file)
        : database(QSharedPointer<poshost::Database>::create(file)), broker(database),
          brokerInPlace(&broker), store(database), desk(loyalty, store, session)
    {
        desk.share(&sharing);
    }

    QSharedPointer<poshost::Database> database;
    DBQueueBroker broker;
    tests::InSingleton<DBQueueBroker> brokerInPlace;
    Session session;
    till::CheckStore store;
    tests::FakeLoyalty loyalty;
    std::unique_ptr<till::SharedStore> shared = storeAt("2");
    till::SuspendedSharing sharing{*shared, *database, store};
    till::CashDesk desk;
};

class SuspendedSharingTest : public tests::TillTest
{
protected:
    SuspendedSharingTest() { desk->share(sharing.get()); }

    /// As after a stop of the till.
    void startAnew()
    {
        restart();
        sharing = std::make_unique<till::SuspendedSharing>(*shared, *database, store);
        desk->share(sharing.get());
    }

    QString leaveOne()
    {
        openReady();
        return desk->suspendToStore();
    }

    void befall(Fault fault, const QString& call)
    {
        books.fault = fault;
        books.faultAt = call;
    }

    QString stateOf(const QString& id)
    {
        for (const till::CheckRow& row : store.list()) {
            if (row.id == id) {
                return row.state;
            }
        }
        return u"none"_s;
    }

    void expectOnlyHere(const QString& id)
    {
        EXPECT_EQ(stateOf(id), u"suspended"_s);
        EXPECT_EQ(books.waiting(), 0) << "another till could take it up too";
    }

    FakeBooks books;
    tests::FakeBooksModule module{books};
    std::unique_ptr<till::SharedStore> shared = storeAt("1");
    std::unique_ptr<till::SuspendedSharing> sharing =
        std::make_unique<till::SuspendedSharing>(*shared, *database, store);
};

TEST_F(SuspendedSharingTest, aCheckThatOneTillLeavesIsClosedAtAnother)
{
    loyalty->discounts = {{1, 30.0}};
    openReady();
    const Check before = desk->current();
    const QString id = desk->suspendToStore();
    EXPECT_EQ(desk->takeNotices(), QStringList());
    EXPECT_EQ(stateOf(id), u"left"_s);

    OtherTill other(folder.file(u"other.sqlite"_s));
    other.desk.restore(id);
    EXPECT_EQ(till::checkcodec::encode(other.desk.current()), till::checkcodec::encode(before))
        << "the loyalty system's state comes along";
    EXPECT_EQ(other.desk.close().id(), id);
    EXPECT_EQ(poshost::OutgoingQueue(*other.database).list(true).size(), 1);
    EXPECT_EQ(messages(), 0) << "it is confirmed where it is closed";
    EXPECT_TRUE(books.rows.value(id).isSettled);
    EXPECT_TRUE(books.rows.value(id).check.content.isEmpty());
}

TEST_F(SuspendedSharingTest, whatIsLeftIsNeitherRestoredNorClosedBesideTheStore)
{
    openReady();
    store.suspend(desk->current());
    OtherTill window(folder.file(u"till.sqlite"_s)); // another process of the same till
    window.desk.restore(desk->current().id());
    desk->suspendToStore();
    EXPECT_TRUE(refusalOf([&] { window.desk.close(); }).contains(u"another till"_s));
    window.desk.abandon();
    EXPECT_EQ(store.suspended().count, 0);
}

TEST_F(SuspendedSharingTest, theTillThatLeftItGetsItBackOutOfTheStore)
{
    const QString id = leaveOne();
    desk->restore(u"last"_s);
    EXPECT_EQ(desk->current().id(), id);
    expectOnlyHere(id);
    EXPECT_EQ(desk->close().id(), id);
}

TEST_F(SuspendedSharingTest, oneOfTwoTillsGetsItAndTheOtherIsToldWho)
{
    const QString id = leaveOne();
    desk->restore(id);
    OtherTill other(folder.file(u"other.sqlite"_s));
    EXPECT_TRUE(refusalOf([&] { other.desk.restore(id); }).contains(u"at till 1"_s));
    EXPECT_FALSE(other.desk.hasCheck());
}

TEST_F(SuspendedSharingTest, itStaysHereWhileTheStoreIsAway)
{
    books.fault = Fault::Away;
    const QString id = leaveOne();
    const QStringList notices = desk->takeNotices();
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices.first().contains(id)) << qPrintable(notices.first());
    EXPECT_EQ(stateOf(id), u"suspended"_s);
    startAnew();
    desk->restore(id);
    EXPECT_EQ(desk->close().id(), id);
    EXPECT_TRUE(books.rows.isEmpty());
}

TEST_F(SuspendedSharingTest, aLeavingWithoutAReplyIsAskedAboutBeforeTheCheckIsRestored)
{
    for (const Fault fault : {Fault::LostRequest, Fault::LostReply}) {
        befall(fault, u"leave"_s);
        static_cast<void>(desk->takeNotices());
        const QString id = leaveOne();
        EXPECT_EQ(desk->takeNotices().size(), 1);
        EXPECT_EQ(stateOf(id), u"left"_s);
        books.fault = Fault::Away;
        books.faultAt.clear();
        startAnew();
        EXPECT_FALSE(refusalOf([&] { desk->restore(id); }).isEmpty())
            << "the store may have it, and another till may have it from there";
        books.fault = Fault::None;
        desk->restore(id);
        expectOnlyHere(id);
        EXPECT_EQ(desk->close().id(), id);
    }
}

TEST_F(SuspendedSharingTest, aLeavingThatIsRepeatedLateBringsNothingBack)
{
    befall(Fault::LostReply, u"leave"_s);
    const QString id = leaveOne();
    books.fault = Fault::None;
    OtherTill other(folder.file(u"other.sqlite"_s));
    other.desk.restore(id);
    other.desk.close();
    QStringList notices;
    sharing->settle(notices);
    EXPECT_EQ(notices, QStringList());
    EXPECT_EQ(books.waiting(), 0) << "it would be sold twice";
    EXPECT_EQ(stateOf(id), u"left"_s);
}

TEST_F(SuspendedSharingTest, whatAnotherProcessHasAskedAboutIsNotKeptHereWithoutTheStoresWord)
{
    openReady();
    const till::Check check = desk->current();
    till::LeftChecks left(*database, store);
    left.begin(check, u"mark"_s);
    const till::Leaving leaving = left.unfinished().first();
    poshost::Database second(database->fileName());
    till::CheckStore seconds(database);
    EXPECT_TRUE(till::LeftChecks(second, seconds).askAgain(leaving));
    EXPECT_FALSE(left.keepHere(leaving)) << "its request may have arrived";
    EXPECT_EQ(stateOf(check.id()), u"left"_s);
    left.noteTakeUp(u"token"_s, u"last"_s);
    EXPECT_TRUE(left.askAgain(left.takeUps().first()));
    left.forgetUnasked(u"token"_s);
    EXPECT_EQ(left.takeUps().size(), 1);
}

TEST_F(SuspendedSharingTest, whatIsLeftBehindIsSettledAtTheSecondLook)
{
    befall(Fault::LostRequest, u"leave"_s);
    const QString id = leaveOne();
    books.fault = Fault::None;
    books.faultAt.clear();
    QSet<QString> seen;
    QStringList notices;
    sharing->settleLeftBehind(seen, notices);
    EXPECT_EQ(books.waiting(), 0) << "a cashier may be waiting for it";
    sharing->settleLeftBehind(seen, notices);
    EXPECT_EQ(books.waiting(), 1);
    EXPECT_EQ(notices, QStringList());
    sharing->settleLeftBehind(seen, notices);
    EXPECT_TRUE(seen.isEmpty());
    EXPECT_EQ(stateOf(id), u"left"_s);
}

TEST_F(SuspendedSharingTest, theServiceSettlesWhatIsLeftBehind)
{
    befall(Fault::LostReply, u"leave"_s);
    leaveOne();
    till::LeftChecks left(*database, store);
    ASSERT_EQ(left.unfinished().size(), 1);
    books.fault = Fault::None;
    books.faultAt.clear();
    const till::SuspendedWatch watch(database->fileName(), storeAt("1"),
                                     std::chrono::milliseconds(20));
    const QDeadlineTimer deadline(20'000);
    while (!left.unfinished().isEmpty() && !deadline.hasExpired()) {
        QThread::msleep(10);
    }
    EXPECT_TRUE(left.unfinished().isEmpty());
}

TEST_F(SuspendedSharingTest, aTakeUpWithoutAReplyGetsTheSameCheckWhenItIsRepeated)
{
    for (const Fault fault : {Fault::LostRequest, Fault::LostReply}) {
        for (const QString& which : {u"last"_s, QString()}) {
            const QString id = leaveOne();
            befall(fault, u"takeUp"_s);
            const QString asked = which.isEmpty() ? id : which;
            EXPECT_FALSE(refusalOf([&] { desk->restore(asked); }).isEmpty());
            EXPECT_FALSE(desk->hasCheck());
            books.fault = Fault::None;
            startAnew();
            desk->restore(asked);
            EXPECT_EQ(desk->current().id(), id);
            expectOnlyHere(id);
            EXPECT_EQ(desk->close().id(), id);
        }
    }
}

TEST_F(SuspendedSharingTest, aTakeUpThatNobodyRepeatsIsFinishedAtTheNextChance)
{
    const QString id = leaveOne();
    befall(Fault::LostReply, u"takeUp"_s);
    EXPECT_FALSE(refusalOf([&] { desk->restore(id); }).isEmpty());
    books.fault = Fault::None;
    startAnew();
    QStringList notices;
    sharing->settle(notices);
    expectOnlyHere(id);
    EXPECT_TRUE(books.rows.value(id).isSettled);
}

TEST_F(SuspendedSharingTest, theStoreForgetsNothingBeforeItIsDurableHere)
{
    const QString id = leaveOne();
    befall(Fault::LostRequest, u"settle"_s);
    desk->restore(id);
    EXPECT_FALSE(books.rows.value(id).check.content.isEmpty());
    EXPECT_EQ(stateOf(id), u"suspended"_s);
    EXPECT_EQ(books.calls.last(), u"settle"_s);
    books.fault = Fault::None;
    QStringList notices;
    sharing->settle(notices);
    EXPECT_TRUE(books.rows.value(id).isSettled);
}

TEST_F(SuspendedSharingTest, whatWasReleasedToAnotherTillIsGivenUpHere)
{
    const QString id = leaveOne();
    befall(Fault::LostRequest, u"settle"_s);
    desk->restore(id);
    books.fault = Fault::None;
    startAnew();
    books.rows[id].token.clear();
    books.rows[id].takenBy.clear();
    QStringList notices;
    sharing->settle(notices);
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices.first().contains(id));
    EXPECT_EQ(stateOf(id), u"abandoned"_s);
}

TEST_F(SuspendedSharingTest, aCheckMayBeLeftAndTakenUpAgainAndAgain)
{
    const QString id = leaveOne();
    OtherTill other(folder.file(u"other.sqlite"_s));
    for (int i = 0; i < 3; ++i) {
        other.desk.restore(id);
        EXPECT_EQ(other.desk.suspendToStore(), id);
        desk->restore(id);
        EXPECT_EQ(desk->suspendToStore(), id);
    }
    EXPECT_EQ(books.waiting(), 1);
    other.desk.restore(id);
    EXPECT_EQ(other.desk.close().id(), id);
    QStringList notices;
    sharing->settle(notices);
    other.sharing.settle(notices);
    EXPECT_EQ(notices, QStringList());
    EXPECT_EQ(books.waiting(), 0);
}

TEST_F(SuspendedSharingTest, whatCannotBeReadHereIsLeftForTheOthers)
{
    const QString id = leaveOne();
    const QByteArray content = std::exchange(books.rows[id].check.content, "damaged");
    EXPECT_TRUE(refusalOf([&] { desk->restore(id); }).contains(u"damaged"_s));
    EXPECT_EQ(books.waiting(), 1);
    books.rows[id].check.content = content;
    desk->restore(id);
    EXPECT_EQ(desk->close().id(), id);
}

TEST_F(SuspendedSharingTest, withoutAStoreNothingIsLeft)
{
    desk->share(nullptr);
    openReady();
    EXPECT_TRUE(refusalOf([&] { desk->suspendToStore(); }).contains(u"[store]"_s));
    EXPECT_TRUE(desk->hasCheck());
    EXPECT_FALSE(refusalOf([&] {
                     desk->suspend();
                     desk->restore(u"nothing"_s);
                 }).isEmpty());
    EXPECT_EQ(books.calls, QStringList());
}

} // namespace
