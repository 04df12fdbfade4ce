// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the books keep of what is booked, without any requests.

#include "simulator/ledger/ledger.h"
#include "tests/unit/simulator/testchecks.h"

#include <QDir>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

/// Two lines whose identifiers are in no order.
Booking saleNamed(const QString& id)
{
    Booking sale;
    sale.checkId = id;
    sale.cardNumber = u"17"_s;
    sale.originalId = u""_s; // as good as none
    sale.number = u"117"_s;
    sale.date = u"2024-03-05 14:20:31"_s;
    sale.total = 30'000;
    sale.discount = 1'500;
    sale.paid = 28'100;
    sale.spent = 400;
    sale.earned = 1'346;
    sale.lines = {{7, u"b"_s, 3'000, 20'000, 1'000, 100, 897, 0, 0},
                  {3, {}, 500, 10'000, 500, 300, 449, 0, 0}};
    return sale;
}

Booking returnOf(const QString& sale, const QString& id, const std::vector<BookedLine>& lines)
{
    Booking booking;
    booking.checkId = id;
    booking.type = Check::Type::Return;
    booking.originalId = sale;
    booking.cardNumber = u"17"_s;
    booking.date = u"2024-03-04 09:00:00"_s; // a till's clock may go back
    booking.lines = lines;
    for (const BookedLine& line : lines) {
        booking.total += line.total;
        booking.givenBack += line.givenBack;
        booking.takenBack += line.takenBack;
    }
    return booking;
}

class Books : public testing::Test
{
protected:
    /// The balance of a card that was seen.
    Kopecks balanceOf(const QString& card)
    {
        for (const Account& account : ledger.accounts()) {
            if (account.card == card) {
                EXPECT_EQ(account.expected(), account.balance);
                return account.balance;
            }
        }
        ADD_FAILURE() << "no card " << card.toStdString();
        return 0;
    }

    QTemporaryDir folder{QDir::tempPath() + u"/Books-XXXXXX"_s};
    Database database{folder.filePath(u"simulator.sqlite"_s)};
    Ledger ledger{database};
};

TEST_F(Books, aCardKeepsItsFirstOpeningAlsoWhenItsBalanceIsNothing)
{
    EXPECT_EQ(ledger.balance(u"17"_s, 400), 400);
    EXPECT_EQ(ledger.balance(u"24"_s, 0), 0);
    EXPECT_EQ(ledger.balance(u"24"_s, 900), 0);
    Booking sale;
    sale.checkId = u"sale"_s;
    sale.cardNumber = u"17"_s;
    sale.spent = 400;
    ledger.book(sale);
    EXPECT_EQ(ledger.balance(u"17"_s, 900), 0);
    const std::vector<Account> accounts = ledger.accounts();
    ASSERT_EQ(accounts.size(), 2U);
    EXPECT_EQ(accounts[0].opening, 400);
    EXPECT_EQ(accounts[1].opening, 0);
}

TEST_F(Books, accountsStandInTheOrderOfTheirNumbersAndEachHasItsOwnFigures)
{
    ledger.balance(u"24"_s, 100);
    ledger.balance(u"17"_s, 50'000);
    ledger.balance(u"31"_s, 0);
    ledger.book(saleNamed(u"sale"_s));
    ledger.book(returnOf(u"sale"_s, u"r"_s, {{7, u"b"_s, 1'000, 6'667, 0, 0, 0, 33, 299}}));
    const std::vector<Account> accounts = ledger.accounts();
    ASSERT_EQ(accounts.size(), 3U);
    EXPECT_EQ(accounts[0].card, u"17"_s);
    EXPECT_EQ(accounts[0].earned, 1'346);
    EXPECT_EQ(accounts[0].spent, 400);
    EXPECT_EQ(accounts[0].givenBack, 33);
    EXPECT_EQ(accounts[0].takenBack, 299);
    EXPECT_EQ(accounts[1].card, u"24"_s);
    EXPECT_EQ(accounts[2].card, u"31"_s);
    EXPECT_EQ(balanceOf(u"17"_s), 50'000 + 1'346 - 400 + 33 - 299);
    EXPECT_EQ(balanceOf(u"24"_s), 100);
    EXPECT_EQ(balanceOf(u"31"_s), 0);
}

TEST_F(Books, aSaleIsFoundWithItsLinesInItsOrderAndNothingReturned)
{
    ledger.balance(u"17"_s, 0);
    EXPECT_FALSE(ledger.isBooked(u"sale"_s));
    EXPECT_EQ(ledger.cardOfSale(u"sale"_s), std::nullopt);
    const Booking sale = saleNamed(u"sale"_s);
    ledger.book(sale);
    EXPECT_TRUE(ledger.isBooked(u"sale"_s));
    EXPECT_FALSE(ledger.isBooked(u"sal"_s));
    EXPECT_EQ(ledger.cardOfSale(u"sale"_s), u"17"_s);
    const std::vector<SoldLine> lines = ledger.soldLines(u"sale"_s);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].sold, sale.lines[0]);
    EXPECT_EQ(lines[1].sold.id, 3);
    EXPECT_EQ(lines[1].sold.sku, QString());
    EXPECT_EQ(lines[1].sold.discount, 500);
    EXPECT_EQ(lines[0].returned, BookedLine());
    EXPECT_EQ(lines[1].returned, BookedLine());
}

TEST_F(Books, returnsAreSummedByLineAndOnlyThoseOfTheSale)
{
    ledger.balance(u"17"_s, 0);
    for (const QString& sale : {u"a"_s, u"b"_s, u"c"_s}) {
        ledger.book(saleNamed(sale));
    }
    ledger.book(returnOf(
        u"b"_s, u"r1"_s,
        {{7, u"b"_s, 1'000, 6'667, 0, 0, 0, 33, 299}, {3, {}, 100, 2'000, 0, 0, 0, 60, 90}}));
    ledger.book(returnOf(u"b"_s, u"r2"_s, {{7, u"b"_s, 500, 3'333, 0, 0, 0, 17, 150}}));
    ledger.book(returnOf(u"b"_s, u"r3"_s, {{7, u"b"_s, 1'500, 10'000, 0, 0, 0, 50, 448}}));
    for (const QString& sale : {u"a"_s, u"c"_s}) {
        for (const SoldLine& line : ledger.soldLines(sale)) {
            EXPECT_EQ(line.returned, BookedLine()) << sale.toStdString();
        }
    }
    const std::vector<SoldLine> lines = ledger.soldLines(u"b"_s);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].returned, (BookedLine{0, {}, 3'000, 20'000, 0, 0, 0, 100, 897}));
    EXPECT_EQ(lines[1].returned, (BookedLine{0, {}, 100, 2'000, 0, 0, 0, 60, 90}));
    EXPECT_EQ(ledger.cardOfSale(u"r1"_s), std::nullopt) << "a return is no sale";
}

TEST_F(Books, bookingsStandInTheOrderInWhichTheyWereMadeWithAllTheirFigures)
{
    ledger.balance(u"17"_s, 0);
    const Booking sale = saleNamed(u"z-sale"_s);
    const Booking given =
        returnOf(u"z-sale"_s, u"a-return"_s, {{7, u"b"_s, 1'000, 6'667, 0, 0, 0, 33, 299}});
    ledger.book(sale);
    ledger.book(given);
    const std::vector<Booking> bookings = ledger.bookings();
    ASSERT_EQ(bookings.size(), 2U);
    const Booking& first = bookings[0];
    EXPECT_EQ(first.checkId, sale.checkId);
    EXPECT_EQ(first.type, Check::Type::Sale);
    EXPECT_EQ(first.cardNumber, sale.cardNumber);
    EXPECT_EQ(first.originalId, QString());
    EXPECT_EQ(first.number, sale.number);
    EXPECT_EQ(first.date, sale.date);
    EXPECT_EQ(first.total, sale.total);
    EXPECT_EQ(first.discount, sale.discount);
    EXPECT_EQ(first.paid, sale.paid);
    EXPECT_EQ(first.spent, sale.spent);
    EXPECT_EQ(first.earned, sale.earned);
    const Booking& second = bookings[1];
    EXPECT_EQ(second.checkId, given.checkId);
    EXPECT_EQ(second.type, Check::Type::Return);
    EXPECT_EQ(second.originalId, u"z-sale"_s);
    EXPECT_EQ(second.givenBack, 33);
    EXPECT_EQ(second.takenBack, 299);
    EXPECT_EQ(second.paid, 0);
}

} // namespace
} // namespace simulator::test
