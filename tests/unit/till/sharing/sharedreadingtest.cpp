// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What is read of the checks of all tills, and how a customer is taken out of them.

#include "till/sharing/sharedreading.h"
#include "tests/support/configured.h"
#include "tests/unit/till/sharing/fakebooks.h"
#include "tests/unit/till/tilltest.h"
#include "till/checks/checkcodec.h"
#include "till/erase/sharederasure.h"
#include "till/screen/ledger.h"
#include "till/screen/sharedlist.h"

using namespace Qt::StringLiterals;
using orvastore::KeptCheck;
using tests::FakeBooks;
using tests::refusalOf;
using till::Check;
using till::SharedReading;
using till::SharedRow;

namespace {

const QString soldTo = QStringLiteral("2200000000017");

class SharedReadingTest : public tests::TillTest
{
protected:
    SharedReadingTest()
    {
        poshost::StoreSetup setup;
        setup.shop = u"5"_s;
        shared = std::make_unique<till::SharedStore>(setup);
    }

    KeptCheck kept(const Check& check, bool isDelivered = true)
    {
        KeptCheck row;
        row.identifier = check.id();
        row.till = u"2"_s;
        row.number = check.number();
        row.closedAt = check.document->getDateTime();
        row.isDelivered = isDelivered;
        row.content = till::checkcodec::encode(check);
        return row;
    }

    FakeBooks books;
    tests::FakeBooksModule module{books};
    std::unique_ptr<till::SharedStore> shared;
};

TEST_F(SharedReadingTest, findsACheckOfAnotherTillAndSaysWhenSeveralHaveTheNumber)
{
    const Check check = sell();
    books.closed = {kept(check)};
    const SharedReading reading(*shared);
    const auto found = reading.find(QString::number(check.number()));
    ASSERT_TRUE(found);
    EXPECT_EQ(till::checkcodec::encode(SharedReading::checkOf(*found)),
              till::checkcodec::encode(check));
    EXPECT_FALSE(reading.find(u"nothing"_s));
    books.closed.append(kept(check));
    EXPECT_TRUE(refusalOf([&] {
                    reading.find(QString::number(check.number()));
                }).contains(QString::number(check.number())));
    books.fault = FakeBooks::Fault::Away;
    EXPECT_TRUE(refusalOf([&] { reading.find(check.id()); }).contains(u"so it is"_s));
}

TEST_F(SharedReadingTest, aDamagedCheckIsToldAndNotShown)
{
    KeptCheck row = kept(sell());
    row.content.chop(1);
    EXPECT_TRUE(refusalOf([&] { SharedReading::checkOf(row); }).contains(row.identifier));
    KeptCheck other = kept(sell());
    other.identifier = u"another"_s;
    EXPECT_FALSE(refusalOf([&] { SharedReading::checkOf(other); }).isEmpty());
}

TEST_F(SharedReadingTest, theLedgerCountsACheckOfBothPlacesOnce)
{
    loyalty->awards = {{1, 8.5}};
    const Check here = sell();
    const auto csvOf = [&](bool withStore) {
        QString csv;
        const till::Ledger ledger(
            [&](const std::function<void(const Check&)>& take) {
                for (const KeptCheck& row : std::as_const(books.closed)) {
                    if (withStore) {
                        take(SharedReading::checkOf(row));
                    }
                }
                store.forEachClosed(take);
            },
            *database);
        ledger.writeCsv([&csv](const QString& part) { csv += part; });
        return csv;
    };
    books.closed = {kept(here)};
    EXPECT_EQ(csvOf(true), csvOf(false));
    EXPECT_EQ(csvOf(true).count(u'\n'), 2);
}

TEST_F(SharedReadingTest, aListIsWrittenByPages)
{
    int parts = 0;
    QString text;
    till::SharedList list(200, [&](const QString& part) {
        ++parts;
        text += part;
    });
    for (int i = 0; i < 120; ++i) {
        list.add({u"id%1"_s.arg(i), i, u"4"_s, i % 2 == 0, SharedRow::State::Delivered,
                  QDateTime::currentDateTime()});
    }
    list.end();
    EXPECT_EQ(parts, 3);
    EXPECT_EQ(text.count(u"id"_s), 120);
    EXPECT_EQ(text.count(u'\n'), 121) << "one title";
}

TEST_F(SharedReadingTest, aCustomerIsTakenOutOfWhatIsDeliveredAndTheRestIsTold)
{
    const Check delivered = sell();
    const Check waiting = sell();
    openReady();
    orvastore::LeftCheck left;
    left.identifier = desk->current().id();
    left.mark = u"m"_s;
    left.content = till::checkcodec::encode(desk->current());
    books.leave(left);
    books.closed = {kept(waiting, false), kept(delivered)};
    const QByteArray untouched = books.closed.first().content;

    till::Customer customer(soldTo);
    till::SharedErasure erasure(*shared, customer);
    erasure.look();
    till::ErasureReport report;
    erasure.erase(report);
    EXPECT_EQ(report.storedChecks, 1);
    EXPECT_FALSE(customer.isInBytes(books.closed.last().content));
    EXPECT_EQ(books.closed.first().content, untouched);
    ASSERT_EQ(report.left.size(), 2);
    EXPECT_TRUE(report.left.first().contains(left.identifier));
    EXPECT_TRUE(report.left.last().contains(waiting.id()));

    till::ErasureReport again;
    till::SharedErasure second(*shared, customer);
    second.look();
    second.erase(again);
    EXPECT_EQ(again.storedChecks, 0) << "nothing is left to change";
}

TEST_F(SharedReadingTest, aStoreThatIsAwayIsToldByTheErasure)
{
    books.fault = FakeBooks::Fault::Away;
    till::Customer customer(soldTo);
    till::SharedErasure erasure(*shared, customer);
    erasure.look();
    till::ErasureReport report;
    erasure.erase(report);
    ASSERT_EQ(report.left.size(), 1);
    EXPECT_TRUE(report.left.first().contains(u"so it is"_s));
}

} // namespace
