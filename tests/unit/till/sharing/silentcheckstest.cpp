// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Checks that no message takes to the store of the shop.

#include "till/sharing/silentchecks.h"
#include "host/services/config.h"
#include "tests/unit/till/sharing/fakereturnbooks.h"
#include "tests/unit/till/tilltest.h"
#include "till/checks/checkarchiving.h"
#include "till/checks/checkcodec.h"
#include "till/erase/databaseerasure.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace {

using till::Check;
using End = orvastore::StoreEnd;
namespace silentchecks = till::silentchecks;

const QDateTime noon(QDate(2026, 11, 20), QTime(12, 0));

class SilentChecksTest : public tests::TillTest
{
protected:
    SilentChecksTest() { store.noteSilent(true); }

    Check sellPlain()
    {
        till::CheckFile file = twoLines();
        file.card.clear();
        desk->openSale(file);
        return desk->close();
    }
    Check takeBackPlain(const Check& sale)
    {
        desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
        return desk->close();
    }
    End handOver() { return silentchecks::handOver(*database, books, u"1042"_s).end; }
    int waiting() { return silentchecks::waiting(*database).count; }
    QStringList kept() const
    {
        QStringList names;
        for (const orvastore::HandedCheck& check : books.kept) {
            names.append(check.identifier);
        }
        return names;
    }

    FakeReturnBooks books;
};

} // namespace

TEST_F(SilentChecksTest, goToTheStoreInTheirOrderAndOnce)
{
    const Check sale = sellPlain();
    const Check back = takeBackPlain(sale);
    EXPECT_EQ(messages(), 0);
    EXPECT_EQ(waiting(), 2);
    EXPECT_EQ(silentchecks::nextDue(*database), 0);
    ASSERT_EQ(handOver(), End::Done);
    ASSERT_EQ(kept(), QStringList({sale.id(), back.id()}));
    const orvastore::HandedCheck& sold = books.kept.first();
    EXPECT_EQ(sold.shop, u"1042"_s);
    EXPECT_EQ(sold.number, sale.number());
    EXPECT_EQ(sold.saleIdentifier, QString());
    EXPECT_TRUE(sold.returned.isEmpty());
    EXPECT_TRUE(sold.messages.isEmpty());
    EXPECT_EQ(till::checkcodec::decode(sold.content, sale.id()).goodsKopecks(), 230'00);
    const orvastore::HandedCheck& returned = books.kept.last();
    EXPECT_EQ(returned.saleIdentifier, sale.id());
    ASSERT_EQ(returned.returned.size(), 1);
    EXPECT_EQ(returned.returned.first().thousandths, 1000);
    EXPECT_EQ(returned.returned.first().soldThousandths, 2000);
    EXPECT_EQ(waiting(), 0);
    EXPECT_EQ(silentchecks::nextDue(*database), std::nullopt);
    EXPECT_EQ(handOver(), End::Done);
    EXPECT_EQ(books.kept.size(), 2);
}

TEST_F(SilentChecksTest, areThoseWithoutAMessageAloneAndOnlyWithAStore)
{
    sell(); // its message takes it there
    EXPECT_EQ(waiting(), 0);
    store.noteSilent(false);
    sellPlain();
    EXPECT_EQ(waiting(), 0);
    store.noteSilent(true);
    loyalty->answers = false; // with a card, but without an answer
    desk->openSale(twoLines());
    desk->presentCard(u"2200000000017"_s);
    const Check unasked = desk->close();
    EXPECT_EQ(waiting(), 1);
    ASSERT_EQ(handOver(), End::Done);
    EXPECT_EQ(kept(), QStringList{unasked.id()});
}

TEST_F(SilentChecksTest, thatIsNotClosedIsNotNoted)
{
    till::CheckFile file = twoLines();
    file.card.clear();
    desk->openSale(file);
    desk->tender(1);
    EXPECT_FALSE(tests::refusalOf([&] { desk->close(); }).isEmpty());
    EXPECT_EQ(waiting(), 0);
    desk->abandon();
    EXPECT_EQ(waiting(), 0);
}

TEST_F(SilentChecksTest, waitForAStoreThatIsAwayAndRepeatALostAnswer)
{
    const Check first = sellPlain();
    const Check second = sellPlain();
    for (const End end : {End::Unreachable, End::Unknown}) {
        books.keeping = end;
        EXPECT_EQ(handOver(), end);
        EXPECT_EQ(kept().last(), first.id()) << "none passes it";
        EXPECT_EQ(waiting(), 2);
        EXPECT_EQ(silentchecks::nextDue(*database), 0);
    }
    books.keeping = End::Done;
    books.kept.clear();
    EXPECT_EQ(handOver(), End::Done);
    EXPECT_EQ(kept(), QStringList({first.id(), second.id()}));
    EXPECT_EQ(waiting(), 0);
}

TEST_F(SilentChecksTest, someAtATimeWhileMessagesWaitBehindThem)
{
    for (int i = 0; i < 20; ++i) {
        sellPlain();
    }
    EXPECT_EQ(handOver(), End::Done);
    EXPECT_EQ(books.kept.size(), 16);
    EXPECT_EQ(silentchecks::nextDue(*database), 0);
    EXPECT_EQ(handOver(), End::Done);
    EXPECT_EQ(books.kept.size(), 20);
    EXPECT_EQ(silentchecks::nextDue(*database), std::nullopt);
}

TEST_F(SilentChecksTest, thatAreRefusedLetTheOthersGoOnAndAreTriedAgainLater)
{
    for (const bool isConflict : {false, true}) {
        const qint64 wait = isConflict ? 3'600'000 : 60'000;
        const tests::StoppedClock clock(noon);
        const Check refused = sellPlain();
        books.keeping = End::Refused;
        books.isConflict = isConflict;
        EXPECT_EQ(handOver(), End::Done);
        const silentchecks::Waiting found = silentchecks::waiting(*database);
        EXPECT_EQ(found.refused, 1);
        EXPECT_EQ(found.refusedCheck, refused.id());
        EXPECT_EQ(found.why, poshost::Message::plain(u"so it is"_s));
        EXPECT_EQ(silentchecks::nextDue(*database), noon.toMSecsSinceEpoch() + wait);
        books.keeping = End::Done;
        books.kept.clear();
        const Check next = sellPlain();
        EXPECT_EQ(handOver(), End::Done);
        EXPECT_EQ(kept(), QStringList{next.id()});
        {
            const tests::StoppedClock later(noon.addMSecs(wait));
            EXPECT_EQ(handOver(), End::Done);
        }
        EXPECT_EQ(kept(), QStringList({next.id(), refused.id()}));
        EXPECT_EQ(waiting(), 0);
    }
}

TEST_F(SilentChecksTest, areNotLostToAClockThatIsPutBack)
{
    const Check refused = sellPlain();
    books.keeping = End::Refused;
    {
        const tests::StoppedClock clock(noon.addYears(1));
        EXPECT_EQ(handOver(), End::Done);
    }
    const tests::StoppedClock clock(noon);
    EXPECT_EQ(silentchecks::nextDue(*database), 0);
    books.keeping = End::Done;
    EXPECT_EQ(handOver(), End::Done);
    EXPECT_EQ(waiting(), 0);
}

TEST_F(SilentChecksTest, stayOutOfTheArchiveUntilTheStoreHasThem)
{
    {
        const tests::StoppedClock clock(noon.addDays(-500));
        sellPlain();
    }
    const tests::StoppedClock clock(noon);
    till::CheckArchiving archiving(*database, 400);
    EXPECT_EQ(archiving.step(), 0);
    ASSERT_EQ(handOver(), End::Done);
    EXPECT_EQ(archiving.step(), 1);
}

TEST_F(SilentChecksTest, onTheirWayAreErasedOnceTheyAreThere)
{
    Config config;
    config.load(folder.write(u"orva.toml"_s, "[store]\ndatabase = \"host=127.0.0.1\"\n"));
    const tests::InSingleton<Config> configInPlace(&config);
    loyalty->answers = false;
    desk->openSale(twoLines());
    desk->presentCard(u"2200000000017"_s);
    const Check sale = desk->close();
    const auto erase = [&] {
        till::ErasureReport report;
        till::Customer customer(u"2200000000017"_s);
        till::DatabaseErasure(*database, store, customer).erase(report);
        return report;
    };
    const till::ErasureReport early = erase();
    ASSERT_EQ(early.left.size(), 1);
    EXPECT_TRUE(early.left.first().contains(sale.id()));
    EXPECT_EQ(store.findSale(sale.id()).cardNumber(), u"2200000000017"_s);
    ASSERT_EQ(handOver(), End::Done);
    EXPECT_EQ(erase().left, QStringList());
    EXPECT_NE(store.findSale(sale.id()).cardNumber(), u"2200000000017"_s);
}
