// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/rejection.h"
#include "simulator/ledger/returnbooking.h"
#include "simulator/ledger/salebooking.h"
#include "tests/unit/simulator/testchecks.h"

#include <iostream>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

Check saleOf(const std::vector<Kopecks>& totals)
{
    Check check;
    check.id = u"sale"_s;
    check.cardNumber = u"1"_s;
    for (const Kopecks total : totals) {
        const int id = static_cast<int>(check.lines.size()) + 1;
        check.lines.push_back({id, u"a"_s, 1000, total, 0, 0});
        check.total += total;
    }
    return check;
}

/// The reason for which a booking is rejected; empty when it is not.
template <typename Book>
QString rejectionOf(Book book)
{
    try {
        book();
    } catch (const Rejection& rejection) {
        EXPECT_EQ(rejection.status, 424);
        return rejection.reason;
    }
    return {};
}

TEST(SaleBooking, scalesWhatEachLineEarns)
{
    // G 300.00, D 30.00, P 90.00: (G - D - P) / (G - D) = 180 / 270
    const Booking booking =
        bookSale(saleOf({10'000, 20'000}), {{1, 1'000, 0, 450, 4'500}, {2, 2'000, 0, 901, 9'000}},
                 {{{1'000, 3'000}, {2'000, 6'000}}, 18'000});
    EXPECT_EQ(booking.total, 30'000);
    EXPECT_EQ(booking.discount, 3'000);
    EXPECT_EQ(booking.spent, 9'000);
    EXPECT_EQ(booking.paid, 18'000);
    EXPECT_EQ(booking.lines.at(0).earned, 300);
    EXPECT_EQ(booking.lines.at(1).earned, 601); // 600.67
    EXPECT_EQ(booking.earned, 901);
    EXPECT_EQ(booking.change(), 901 - 9'000);
}

TEST(SaleBooking, keepsWhatTheCheckAndEachLineAre)
{
    Check check;
    check.id = u"sale"_s;
    check.cardNumber = u"17"_s;
    check.number = u"117"_s;
    check.date = u"2024-03-05 14:20:31"_s;
    check.total = 30'000;
    check.lines = {{7, u"b"_s, 2'000, 20'000, 0, 0}, {3, u"a"_s, 500, 10'000, 0, 0}};
    const Booking booking = bookSale(check, {{7, 1'000, 20, 900, 9'000}, {3, 500, 0, 450, 5'000}},
                                     {{{1'020, 100}, {500, 300}}, 28'080});
    EXPECT_EQ(booking.checkId, u"sale"_s);
    EXPECT_EQ(booking.type, Check::Type::Sale);
    EXPECT_EQ(booking.originalId, QString());
    EXPECT_EQ(booking.cardNumber, u"17"_s);
    EXPECT_EQ(booking.number, u"117"_s);
    EXPECT_EQ(booking.date, u"2024-03-05 14:20:31"_s);
    // 9.00 and 4.50 x 280.80 / 284.80: 8.874, 4.437
    const std::vector<BookedLine> lines{{7, u"b"_s, 2'000, 20'000, 1'020, 100, 887, 0, 0},
                                        {3, u"a"_s, 500, 10'000, 500, 300, 444, 0, 0}};
    EXPECT_EQ(booking.lines, lines);
    EXPECT_EQ(booking.discount, 1'520);
    EXPECT_EQ(booking.spent, 400);
    EXPECT_EQ(booking.earned, 887 + 444);
}

TEST(SaleBooking, earnsAsLongAsAKopeckIsLeft)
{
    EXPECT_EQ(bookSale(saleOf({100}), {{1, 99, 0, 5, 0}}, {{{99, 0}}, 1}).earned, 5);
}

TEST(SaleBooking, earnsAllWithoutPointsAndNothingWhenPointsPayAll)
{
    EXPECT_EQ(bookSale(saleOf({10'000}), {{1, 500, 0, 475, 9'500}}, {{{500, 0}}, 9'500}).earned,
              475);
    EXPECT_EQ(bookSale(saleOf({10'000}), {{1, 500, 0, 475, 9'500}}, {{{500, 9'500}}, 0}).earned, 0);
}

TEST(SaleBooking, earnsAsAwardedWhenDiscountsTakeAllAsTheSlipSays)
{
    const Booking booking =
        bookSale(saleOf({10'000}), {{1, 10'000, 0, 475, 0}}, {{{10'000, 0}}, 0});
    EXPECT_EQ(booking.earned, 475);
    EXPECT_EQ(bookSale(saleOf({}), {}, {{}, 0}).earned, 0);
}

TEST(SaleBooking, countsTheChangeDiscountAsGranted)
{
    const Booking booking = bookSale(saleOf({10'030}), {{1, 500, 30, 475, 0}}, {{{530, 0}}, 9'500});
    EXPECT_EQ(booking.discount, 530);
}

TEST(SaleBooking, rejectsWhatWasNotGrantedOrDoesNotAddUp)
{
    const Check check = saleOf({10'000});
    const std::vector<LineGrant> granted{{1, 500, 10, 475, 4'000}};
    const auto reason = [&](Kopecks discount, Kopecks points, Kopecks amount) {
        return rejectionOf([&] { bookSale(check, granted, {{{discount, points}}, amount}); });
    };
    EXPECT_EQ(reason(510, 4'000, 5'490), QString());
    EXPECT_EQ(reason(0, 0, 10'000), QString());
    EXPECT_EQ(reason(511, 0, 9'489), u"Line 1 used 5.11 of discount, but only 5.10 was granted"_s);
    EXPECT_EQ(reason(0, 4'001, 5'999),
              u"Line 1 used 40.01 of points, but only 40.00 was granted"_s);
    EXPECT_EQ(reason(510, 4'000, 5'489),
              u"Total 100.00 less discount 5.10 less points 40.00 is 54.90, but the payment is "
              "54.89"_s);
    EXPECT_EQ(reason(510, 4'000, 5'491),
              u"Total 100.00 less discount 5.10 less points 40.00 is 54.90, but the payment is "
              "54.91"_s);
}

/// A line sold with what it booked, nothing of it returned.
SoldLine soldLine(Thousandths quantity, Kopecks total, Kopecks spent, Kopecks earned)
{
    SoldLine line;
    line.sold = {1, u"a"_s, quantity, total, 0, spent, earned, 0, 0};
    return line;
}

Check returnOf(const Line& line)
{
    Check check;
    check.id = u"return"_s;
    check.type = Check::Type::Return;
    check.originalId = u"sale"_s;
    check.cardNumber = u"1"_s;
    check.total = line.total;
    check.lines = {line};
    return check;
}

TEST(ReturnBooking, givesAndTakesTheRoundedShareSoFar)
{
    // a third of 1.00, three times: 0.33, 0.34, 0.33
    SoldLine line = soldLine(3'000, 100, 100, 100);
    std::vector<Kopecks> parts;
    for (const Kopecks part : {33, 34, 33}) {
        const Booking booking = bookReturn(returnOf({1, u"a"_s, 1'000, part, 0, part}), {line});
        EXPECT_EQ(booking.givenBack, part);
        EXPECT_EQ(booking.takenBack, part);
        EXPECT_EQ(booking.change(), 0);
        line.returned.quantity += 1'000;
        line.returned.total += part;
        line.returned.givenBack += part;
        line.returned.takenBack += part;
    }
}

TEST(ReturnBooking, keepsWhatTheCheckAndEachLineAre)
{
    SoldLine first;
    first.sold = {7, u"b"_s, 2'000, 20'000, 1'000, 100, 897, 0, 0};
    SoldLine second;
    second.sold = {3, u"a"_s, 500, 10'000, 500, 300, 449, 0, 0};
    second.returned = {3, {}, 100, 2'000, 0, 0, 0, 60, 90};
    Check check;
    check.id = u"return"_s;
    check.type = Check::Type::Return;
    check.originalId = u"sale"_s;
    check.cardNumber = u"17"_s;
    check.number = u"118"_s;
    check.date = u"2024-03-06 10:00:00"_s;
    check.total = 18'000;
    check.lines = {{3, u"a"_s, 400, 8'000, 0, 240}, {7, u"b"_s, 1'000, 10'000, 0, 50}};
    const Booking booking = bookReturn(check, {first, second});
    EXPECT_EQ(booking.checkId, u"return"_s);
    EXPECT_EQ(booking.type, Check::Type::Return);
    EXPECT_EQ(booking.originalId, u"sale"_s);
    EXPECT_EQ(booking.cardNumber, u"17"_s);
    EXPECT_EQ(booking.number, u"118"_s);
    EXPECT_EQ(booking.date, u"2024-03-06 10:00:00"_s);
    EXPECT_EQ(booking.total, 18'000);
    const std::vector<BookedLine> lines{{3, u"a"_s, 400, 8'000, 0, 0, 0, 240, 359},
                                        {7, u"b"_s, 1'000, 10'000, 0, 0, 0, 50, 449}};
    EXPECT_EQ(booking.lines, lines);
    EXPECT_EQ(booking.givenBack, 240 + 50);
    EXPECT_EQ(booking.takenBack, 359 + 449);
    EXPECT_EQ(booking.change(), 290 - 808);
}

TEST(ReturnBooking, rejectsWhatIsNotOfTheSale)
{
    SoldLine line = soldLine(2'000, 1'000, 300, 50);
    const auto reason = [&](const Line& returned) {
        return rejectionOf([&] { bookReturn(returnOf(returned), {line}); });
    };
    EXPECT_EQ(reason({1, u"a"_s, 1'000, 500, 0, 150}), QString());
    EXPECT_EQ(reason({2, u"a"_s, 1'000, 500, 0, 150}),
              u"Line 2: the sale has no line with this id"_s);
    EXPECT_EQ(reason({1, u"b"_s, 1'000, 500, 0, 150}),
              u"Line 1: goods code b is returned, but a was sold"_s);
    EXPECT_EQ(reason({1, u"a"_s, 2'001, 1'000, 0, 300}),
              u"Line 1: more is returned than was sold"_s);
    EXPECT_EQ(reason({1, u"a"_s, 1'000, 499, 0, 150}),
              u"Line 1: the total is 4.99, but the returned part of the sale's line is 5.00"_s);
    EXPECT_EQ(reason({1, u"a"_s, 1'000, 500, 0, 151}),
              u"Line 1: 1.51 points are given back, but the returned part had spent 1.50"_s);
    EXPECT_EQ(reason({1, u"a"_s, 1'000, 501, 0, 150}),
              u"Line 1: the total is 5.01, but the returned part of the sale's line is 5.00"_s);
    EXPECT_EQ(reason({1, u"a"_s, 1'000, 500, 0, 149}),
              u"Line 1: 1.49 points are given back, but the returned part had spent 1.50"_s);
    line.returned.quantity = 1'001;
    EXPECT_EQ(reason({1, u"a"_s, 1'000, 500, 0, 150}), u"Line 1: more is returned than was sold"_s);
}

/// Returns a line in parts of the given quantities and finds what was booked in all.
void expectPartsAddUp(SoldLine line, const std::vector<Thousandths>& parts)
{
    for (const Thousandths part : parts) {
        // the till's side of the rule, by remainders instead of by doubling
        const Thousandths soFar = line.returned.quantity + part;
        const auto share = [&](Kopecks amount, Kopecks before) {
            const Kopecks product = amount * soFar;
            const Kopecks rest = product % line.sold.quantity;
            return product / line.sold.quantity + (rest * 2 >= line.sold.quantity ? 1 : 0) - before;
        };
        const Line returned{1,    u"a"_s,
                            part, share(line.sold.total, line.returned.total),
                            0,    share(line.sold.spent, line.returned.givenBack)};
        const Booking booking = bookReturn(returnOf(returned), {line});
        ASSERT_GE(booking.givenBack, 0);
        ASSERT_GE(booking.takenBack, 0);
        line.returned.quantity += part;
        line.returned.total += booking.total;
        line.returned.givenBack += booking.givenBack;
        line.returned.takenBack += booking.takenBack;
    }
    ASSERT_EQ(line.returned.total, line.sold.total);
    ASSERT_EQ(line.returned.givenBack, line.sold.spent);
    ASSERT_EQ(line.returned.takenBack, line.sold.earned);
}

/// Calls visit with every way to write a number as a sum of positive numbers in order.
template <typename Visit>
void forEverySplit(Thousandths number, std::vector<Thousandths>& parts, Visit visit)
{
    if (number == 0) {
        visit(parts);
        return;
    }
    for (Thousandths part = 1; part <= number; ++part) {
        parts.push_back(part);
        forEverySplit(number - part, parts, visit);
        parts.pop_back();
    }
}

TEST(ReturnBooking, addsUpInEverySplitOfALine)
{
    int splits = 0;
    for (Thousandths quantity = 1; quantity <= 8; ++quantity) {
        for (Kopecks amount = 0; amount <= 20; ++amount) {
            std::vector<Thousandths> parts;
            forEverySplit(quantity, parts, [&](const std::vector<Thousandths>& split) {
                ++splits;
                expectPartsAddUp(soldLine(quantity, 10 + amount, amount, 20 - amount), split);
            });
        }
    }
    EXPECT_EQ(splits, 21 * 255); // 2^(n-1) splits of n
}

TEST(ReturnBooking, addsUpInRandomSplitsOfRandomLines)
{
    const int given = qEnvironmentVariableIntValue("ORVA_TEST_SEED");
    const unsigned seed = given == 0 ? 7U : static_cast<unsigned>(given);
    std::cout << "seed " << seed << " (ORVA_TEST_SEED)\n";
    std::mt19937 random(seed);
    for (int run = 0; run < 20'000; ++run) {
        const Thousandths quantity = 1 + random() % 20'000;
        const Kopecks total = random() % 5'000'000;
        const Kopecks spent = total == 0 ? 0 : Kopecks(random()) % total;
        const SoldLine line = soldLine(quantity, total, spent, random() % 100'000);
        std::vector<Thousandths> parts;
        for (Thousandths left = quantity; left > 0; left -= parts.back()) {
            parts.push_back(1 + static_cast<Thousandths>(random()) % left);
        }
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", run " << run);
        expectPartsAddUp(line, parts);
        if (HasFatalFailure()) {
            return;
        }
    }
}

} // namespace
} // namespace simulator
