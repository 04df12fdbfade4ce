// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Old checks leave the database for the archive, and are reached there.

#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "tests/unit/till/tilltest.h"
#include "till/checks/checkarchiving.h"
#include "till/erase/databaseerasure.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <future>
#include <optional>
#include <thread>

using namespace Qt::StringLiterals;
using tests::refusalOf;
using tests::StoppedClock;
using till::Check;
using till::CheckArchiving;

namespace {

constexpr int keepDays = 400;
/// When the old checks of these tests were sold, and when it is too late for them.
const QDateTime longAgo(QDate(2025, 1, 10), QTime(12, 0));
const QDateTime today = longAgo.addDays(keepDays + 1);

class ArchivingTest : public tests::TillTest
{
protected:
    Check sellAt(const QDateTime& time)
    {
        const StoppedClock clock(time);
        return sell();
    }
    Check takeBackAt(const QDateTime& time, const QString& sale)
    {
        const StoppedClock clock(time);
        desk->openReturn(returnOf(sale, {{1, 1000}}));
        return desk->close();
    }
    void deliverAll()
    {
        database->execute(u"UPDATE queue_messages SET state = 'delivered', account_id = NULL, "
                          "delivered_at = 1"_s);
    }
    /// All steps there are today. @return how many checks were moved
    int archive()
    {
        const StoppedClock clock(today);
        CheckArchiving archiving(*database, keepDays);
        int moved = 0;
        for (int step = archiving.step(); step > 0; step = archiving.step()) {
            moved += step;
        }
        return moved;
    }
    int rows()
    {
        poshost::Statement statement(*database, u"SELECT count(*) FROM checks"_s);
        statement.next();
        return statement.value(0).toInt();
    }
    QStringList closed()
    {
        QStringList ids;
        store.forEachClosed([&ids](const Check& check) { ids.append(check.id()); });
        ids.sort();
        return ids;
    }
    QStringList listed()
    {
        QStringList ids;
        for (const till::CheckRow& row : store.list()) {
            ids.append(row.id);
        }
        return ids;
    }
    QString monthFile(const QString& month = u"2025-01"_s)
    {
        return folder.file(u"till.sqlite-archive/%1.checks"_s.arg(month));
    }
};

} // namespace

TEST_F(ArchivingTest, anOldCheckIsReachedInTheArchive)
{
    const Check old = sellAt(longAgo);
    const Check young = sellAt(longAgo.addDays(2));
    deliverAll();
    EXPECT_EQ(archive(), 1);
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(store.findSale(old.id()).earnedKopecks(), old.earnedKopecks());
    EXPECT_EQ(store.findClosed(QString::number(old.number())).id(), old.id());
    EXPECT_EQ(store.findSale(u"last"_s).id(), young.id());
    EXPECT_EQ(listed(), QStringList({young.id(), old.id()}));
    EXPECT_EQ(store.list(5, young.id()).first().id, old.id());
    EXPECT_EQ(store.list(5, old.id()).size(), 0);
    QStringList both{old.id(), young.id()};
    both.sort();
    EXPECT_EQ(closed(), both);
    EXPECT_EQ(archive(), 0);
}

TEST_F(ArchivingTest, aSaleOfTheTillsOwnIsLookedForInTheArchiveOnRequestOnly)
{
    const Check old = sellAt(longAgo);
    deliverAll();
    ASSERT_EQ(archive(), 1);
    EXPECT_FALSE(store.findOwnSaleToReturn(old.id()));
    store.setReturnTerms({365, true});
    const std::optional<Check> found = store.findOwnSaleToReturn(old.id());
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id(), old.id());
    EXPECT_FALSE(store.findOwnSaleToReturn(u"another"_s));
    EXPECT_FALSE(store.findOwnSaleToReturn(u"last"_s)) << "which is one that stands here";
}

TEST_F(ArchivingTest, aCheckStaysForAsManyDaysAsSaid)
{
    sellAt(longAgo);
    deliverAll();
    const QDateTime last = longAgo.addMSecs(keepDays * 24LL * 60 * 60 * 1000);
    {
        const StoppedClock clock(last);
        EXPECT_EQ(CheckArchiving(*database, keepDays).step(), 0);
    }
    const StoppedClock clock(last.addMSecs(1));
    EXPECT_EQ(CheckArchiving(*database, keepDays).step(), 1);
}

TEST_F(ArchivingTest, manyChecksOfSeveralMonthsGoInSeveralSteps)
{
    QStringList sold;
    for (int i = 0; i < 70; ++i) {
        sold.append(sellAt(longAgo.addDays(-i)).id());
    }
    deliverAll();
    EXPECT_EQ(archive(), 70);
    EXPECT_EQ(rows(), 0);
    EXPECT_TRUE(QFile::exists(monthFile(u"2024-11"_s)));
    sold.sort();
    EXPECT_EQ(closed(), sold);
    EXPECT_EQ(listed().size(), 70);
    EXPECT_EQ(sell().number(), 71);
}

TEST_F(ArchivingTest, whatIsNotDeliveredOrSuspendedOrOpenStays)
{
    const Check waiting = sellAt(longAgo);
    QString suspended;
    {
        const StoppedClock clock(longAgo);
        openReady();
        suspended = desk->suspend();
        openReady();
    }
    EXPECT_EQ(archive(), 0);
    desk->abandon();
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(store.loadSuspended(suspended).id(), suspended);
    deliverAll();
    EXPECT_EQ(archive(), 1);
    EXPECT_EQ(store.findSale(waiting.id()).id(), waiting.id());
}

TEST_F(ArchivingTest, anAbandonedCheckGoesToo)
{
    {
        const StoppedClock clock(longAgo);
        openReady();
        desk->abandon();
    }
    EXPECT_EQ(archive(), 1);
    ASSERT_EQ(store.list().size(), 1);
    EXPECT_EQ(store.list().first().state, u"abandoned"_s);
    EXPECT_EQ(closed(), QStringList());
}

TEST_F(ArchivingTest, aReturnStaysAsLongAsItsSale)
{
    const Check sale = sellAt(longAgo);
    takeBackAt(longAgo, sale.id());
    deliverAll();
    database->execute(u"UPDATE checks SET updated_at = updated_at + 1000000000000 "
                      "WHERE sale_id IS NULL"_s);
    EXPECT_EQ(archive(), 0);
    EXPECT_EQ(rows(), 2);
}

TEST_F(ArchivingTest, anArchivedSaleIsTakenBackOnRequestAndNeverTwice)
{
    const Check sale = sellAt(longAgo);
    takeBackAt(longAgo.addSecs(60), sale.id());
    deliverAll();
    EXPECT_EQ(archive(), 2);
    const StoppedClock clock(today);
    const QString refusal = refusalOf([&] { desk->openReturn(returnOf(sale.id(), {{1, 1000}})); });
    EXPECT_TRUE(refusal.contains(u"return --archive"_s)) << refusal.toStdString();

    store.setReturnTerms({365, true});
    desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
    const Check taken = desk->close();
    EXPECT_EQ(taken.returnsBefore, 1);
    EXPECT_EQ(store.returnsOf(sale.id()).size(), 2);
    const QString tooMuch = refusalOf([&] { desk->openReturn(returnOf(sale.id(), {{1, 1000}})); });
    EXPECT_FALSE(tooMuch.isEmpty());
}

TEST_F(ArchivingTest, aSaleThatIsTooOldIsTakenBackOnRequestOnly)
{
    const Check sale = sellAt(longAgo);
    store.setReturnTerms({365, false});
    {
        const StoppedClock clock(longAgo.addDays(366));
        const QString refusal = refusalOf([&] {
            desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
        });
        EXPECT_TRUE(refusal.contains(u"2025-01-10"_s) && refusal.contains(u"365"_s))
            << refusal.toStdString();
        store.setReturnTerms({365, true});
        desk->openReturn(returnOf(sale.id(), {{1, 1000}}));
        desk->abandon();
        store.setReturnTerms({365, false});
    }
    takeBackAt(longAgo.addDays(365), sale.id());
}

TEST_F(ArchivingTest, whatAPowerCutLeavesBehindTheFilesPartThatCountsIsWrittenOver)
{
    const Check first = sellAt(longAgo);
    deliverAll();
    // the file is written, and the database is not
    till::CheckArchive(*database).write(u"2025-01"_s, {{u"torn"_s, 9, u"closed"_s, 1, {}, 0, {}}});
    EXPECT_EQ(listed(), QStringList({first.id()}));
    EXPECT_EQ(archive(), 1);
    EXPECT_EQ(listed(), QStringList({first.id()}));
    QFile file(monthFile());
    ASSERT_TRUE(file.open(QFile::Append));
    file.write("half a block");
    file.close();
    const Check second = sellAt(longAgo.addSecs(60));
    deliverAll();
    EXPECT_EQ(archive(), 1);
    EXPECT_EQ(listed(), QStringList({second.id(), first.id()}));
}

TEST_F(ArchivingTest, aChangedByteIsToldAndNeverRead)
{
    const Check sold = sellAt(longAgo);
    deliverAll();
    ASSERT_EQ(archive(), 1);
    QFile file(monthFile());
    ASSERT_TRUE(file.open(QFile::ReadWrite));
    const QByteArray good = file.readAll();
    ASSERT_GT(good.size(), 200);
    for (qsizetype at = 0; at < good.size(); ++at) {
        QByteArray bad = good;
        bad[at] = char(bad[at] ^ 0x10);
        file.seek(0);
        file.write(bad);
        file.flush();
        EXPECT_TRUE(refusalOf([this] { closed(); }).contains(u"2025-01.checks"_s)) << at;
    }
    file.resize(good.size() - 1);
    EXPECT_TRUE(refusalOf([this] { closed(); }).contains(u"damaged"_s));
}

TEST_F(ArchivingTest, anErasedCustomerIsGoneFromTheArchiveToo)
{
    const Check sold = sellAt(longAgo);
    const Check later = sellAt(longAgo.addDays(40));
    deliverAll();
    const StoppedClock clock(today.addDays(60));
    CheckArchiving(*database, keepDays).step();
    ASSERT_EQ(CheckArchiving(*database, keepDays).step(), 1);
    ASSERT_EQ(rows(), 0);
    till::Customer customer(u"2200000000017"_s);
    till::DatabaseErasure erasure(*database, store, customer);
    till::ErasureReport report;
    erasure.erase(report);
    EXPECT_EQ(report.checks, 2);
    EXPECT_EQ(report.left, QStringList());
    EXPECT_EQ(store.findSale(sold.id()).cardNumber(), u"****0017"_s);
    EXPECT_EQ(store.findSale(later.id()).earnedKopecks(), later.earnedKopecks());
    EXPECT_FALSE(QFile::exists(monthFile()));
    EXPECT_EQ(refusalOf([&] {
                  erasure.erase(report);
                  throw till::Failure(u"done"_s);
              }),
              u"done"_s);
}

TEST_F(ArchivingTest, aCheckThatChangesMeanwhileStaysWithAllThatWereToGoWithIt)
{
    const Check first = sellAt(longAgo);
    const Check second = sellAt(longAgo.addSecs(60));
    deliverAll();
    database->execute(u"CREATE TRIGGER meanwhile AFTER DELETE ON checks BEGIN UPDATE checks SET "
                      "change_number = change_number + 100; END"_s);
    const QString said = refusalOf([this] { archive(); });
    EXPECT_TRUE(said.contains(second.id())) << said.toStdString();
    EXPECT_EQ(rows(), 2);
    EXPECT_EQ(listed(), QStringList({second.id(), first.id()}));
    EXPECT_EQ(store.findClosed(second.id()).id(), second.id());
    database->execute(u"DROP TRIGGER meanwhile"_s);
    EXPECT_EQ(archive(), 2);
    EXPECT_EQ(listed(), QStringList({second.id(), first.id()}));
}

TEST_F(ArchivingTest, onlyOneMovesChecksAtATime)
{
    sellAt(longAgo);
    deliverAll();
    const StoppedClock clock(today);
    const CheckArchiving first(*database, keepDays);
    CheckArchiving second(*database, keepDays);
    EXPECT_FALSE(second.isMine());
    EXPECT_EQ(second.step(), 0);
    EXPECT_EQ(rows(), 1);
}

TEST_F(ArchivingTest, freePagesAreGivenBackBitByBit)
{
    sell();
    database->execute(u"CREATE TABLE sold AS SELECT zeroblob(800000) AS content"_s);
    database->execute(u"DROP TABLE sold"_s);
    const auto pages = [this] {
        poshost::Statement statement(*database, u"PRAGMA page_count"_s);
        statement.next();
        return statement.value(0).toInt();
    };
    CheckArchiving archiving(*database, keepDays);
    int before = pages();
    int steps = 0;
    for (; archiving.giveBackPages(); ++steps) {
        EXPECT_LT(pages(), before);
        EXPECT_GE(pages(), before - 64);
        before = pages();
    }
    EXPECT_GE(steps, 3);
    EXPECT_EQ(store.list().size(), 1);
}

TEST_F(ArchivingTest, pagesWaitForWhoeverIsWriting)
{
    database->execute(u"CREATE TABLE sold AS SELECT zeroblob(800000) AS content"_s);
    database->execute(u"DROP TABLE sold"_s);
    CheckArchiving archiving(*database, keepDays);
    std::promise<void> writing;
    std::jthread seller([&] {
        poshost::Database other(database->fileName());
        const poshost::Transaction transaction(other);
        writing.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    });
    writing.get_future().wait();
    EXPECT_TRUE(archiving.giveBackPages());
}

TEST_F(ArchivingTest, aFileOfAFormerVersionGivesPagesBackOnceItIsCompacted)
{
    const QString old = folder.file(u"old.sqlite"_s);
    const auto prepare = [](poshost::Database& made) {
        made.execute(u"PRAGMA journal_mode = DELETE"_s);
        made.execute(u"PRAGMA auto_vacuum = NONE"_s);
        made.execute(u"VACUUM"_s);
    };
    {
        const poshost::Database made(old, prepare, 1000);
    }
    poshost::Database opened(old);
    opened.execute(u"CREATE TABLE sold AS SELECT zeroblob(800000) AS content"_s);
    opened.execute(u"DROP TABLE sold"_s);
    CheckArchiving archiving(opened, keepDays);
    EXPECT_FALSE(archiving.giveBackPages());
    EXPECT_TRUE(opened.forgetDeleted());
    opened.execute(u"CREATE TABLE sold AS SELECT zeroblob(800000) AS content"_s);
    opened.execute(u"DROP TABLE sold"_s);
    EXPECT_TRUE(archiving.giveBackPages());
}
