// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// protocol/vectors against what the server books, what the till prints on its slip, and the
// definition of a rounded share; and the three against each other on checks made by chance.

#include "tests/scenario/protocol/vectors.h"
#include "simulator/documents/rejection.h"
#include "simulator/ledger/returnbooking.h"
#include "simulator/ledger/salebooking.h"
#include "till/checks/returnlines.h"
#include "till/desk/impactapplier.h"

#include <gtest/gtest.h>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;
using tests::ReturnVector;
using tests::SaleVector;

namespace {

const QString vectorFile = QStringLiteral(ORVA_SOURCE_FOLDER "/protocol/vectors/booking.json");

/// Which requirement a refusal of the server speaks of; its words when that cannot be told.
QString requirementOf(const simulator::Rejection& rejection)
{
    EXPECT_EQ(rejection.status, 424);
    const std::pair<QString, QString> known[] = {
        {u"but the payment is"_s, u"payment-agrees"_s},
        {u"was granted"_s, u"used-within-granted"_s},
        {u"more is returned than was sold"_s, u"return-within-sale"_s},
        {u"the returned part of the sale's line is"_s, u"return-shares-agree"_s},
        {u"but the returned part had spent"_s, u"return-shares-agree"_s}};
    for (const auto& [words, requirement] : known) {
        if (rejection.reason.contains(words)) {
            return requirement;
        }
    }
    return rejection.reason;
}

/// The sale as the server books it.
/// @throws simulator::Rejection
simulator::Booking bookedAtServer(const SaleVector& sale)
{
    simulator::Check check;
    std::vector<simulator::LineGrant> granted;
    simulator::Payment payment;
    int id = 0;
    for (const SaleVector::Line& line : sale.lines) {
        check.lines.push_back({++id, u"1"_s, 1000, line.total, 0, 0});
        check.total += line.total;
        // which of the two discounts is which makes no difference
        granted.push_back({id, line.discountGranted / 2,
                           line.discountGranted - line.discountGranted / 2, line.award,
                           line.pointsAllowed});
        payment.lines.push_back({line.discount, line.points});
    }
    payment.amount = sale.paid;
    return bookSale(check, granted, payment);
}

/// What each line earns on the slip.
std::vector<qint64> earnedAtTill(const SaleVector& sale)
{
    QList<till::Line> lines;
    for (const SaleVector::Line& line : sale.lines) {
        till::Line sold;
        sold.position = static_cast<int>(lines.size()) + 1;
        sold.sumKopecks = line.total;
        sold.discountKopecks = line.discount;
        sold.spentKopecks = line.points;
        sold.awardedKopecks = line.award;
        lines.append(sold);
    }
    till::Check check = till::Check::create(EDocumentType::Sale, 1, {});
    check.lines = lines;
    QStringList notices;
    till::ImpactApplier(check, 15, notices).countEarned();
    std::vector<qint64> earned;
    for (const till::Line& line : check.lines) {
        earned.push_back(line.earnedKopecks);
    }
    return earned;
}

void expectEarnedByDefinition(const SaleVector& sale, const std::vector<qint64>& earned)
{
    qint64 left = 0;
    qint64 spent = 0;
    for (const SaleVector::Line& line : sale.lines) {
        left += line.total - line.discount;
        spent += line.points;
    }
    ASSERT_EQ(earned.size(), sale.lines.size());
    for (size_t i = 0; i < earned.size(); ++i) {
        const qint64 award = sale.lines[i].award;
        EXPECT_TRUE(spent == 0 ? earned[i] == award
                               : tests::isShare(earned[i], award, left - spent, left))
            << "line " << i + 1 << " earns " << earned[i];
    }
}

void expectBooked(const SaleVector& sale, const simulator::Booking& booking)
{
    std::vector<qint64> earned;
    for (const simulator::BookedLine& line : booking.lines) {
        earned.push_back(line.earned);
    }
    EXPECT_EQ(earned, sale.earned);
    EXPECT_EQ(booking.spent, sale.spent);
    EXPECT_EQ(booking.change(), sale.change);
}

/// The returns of one line, as server and till compute them one after the other.
class Returns
{
public:
    explicit Returns(const ReturnVector& vector)
    {
        line.sold = {1, u"1"_s, vector.quantity, vector.total, 0, vector.points, vector.earned,
                     0, 0};
        till::Line sold;
        sold.position = 1;
        sold.fractional = true;
        sold.thousandths = vector.quantity;
        sold.sumKopecks = vector.total;
        sold.spentKopecks = vector.points;
        sold.earnedKopecks = vector.earned;
        sale = till::Check::create(EDocumentType::Sale, 1, {});
        sale.lines = {sold};
    }

    /// @throws simulator::Rejection
    simulator::BookedLine bookAtServer(const ReturnVector::Part& part)
    {
        simulator::Check check;
        check.lines = {{1, u"1"_s, part.quantity, part.total, 0, part.givenBack}};
        simulator::BookedLine booked = bookReturn(check, {line}).lines.at(0);
        line.returned.quantity += booked.quantity;
        line.returned.total += booked.total;
        line.returned.givenBack += booked.givenBack;
        line.returned.takenBack += booked.takenBack;
        return booked;
    }

    till::Line returnAtTill(qint64 quantity)
    {
        till::Line wanted;
        wanted.position = 1;
        wanted.returnedThousandths = quantity;
        till::Check back = till::Check::create(EDocumentType::ReturnBySale, 1, {});
        back.lines = till::returnlines::of(sale, earlier, {wanted});
        earlier.append(back);
        return back.lines.first();
    }

    /// All that was booked so far of the line.
    const simulator::SoldLine& state() const { return line; }

private:
    simulator::SoldLine line;
    till::Check sale;
    QList<till::Check> earlier;
};

void expectSoFarByDefinition(const simulator::SoldLine& line)
{
    const qint64 now = line.returned.quantity;
    const qint64 whole = line.sold.quantity;
    EXPECT_TRUE(tests::isShare(line.returned.total, line.sold.total, now, whole));
    EXPECT_TRUE(tests::isShare(line.returned.givenBack, line.sold.spent, now, whole));
    EXPECT_TRUE(tests::isShare(line.returned.takenBack, line.sold.earned, now, whole));
}

/// One return that is booked.
void expectPart(Returns& returns, const ReturnVector::Part& part)
{
    const simulator::BookedLine booked = returns.bookAtServer(part);
    EXPECT_EQ(booked.takenBack, part.takenBack);
    const till::Line slip = returns.returnAtTill(part.quantity);
    EXPECT_EQ(slip.sumKopecks, part.total);
    EXPECT_EQ(slip.givenBackKopecks, part.givenBack);
    EXPECT_EQ(slip.takenBackKopecks, part.takenBack);
    expectSoFarByDefinition(returns.state());
}

SaleVector saleByChance(std::mt19937_64& chance)
{
    const auto upTo = [&](qint64 most) {
        return std::uniform_int_distribution<qint64>(0, most)(chance);
    };
    SaleVector sale;
    for (qint64 i = 1 + upTo(7); i > 0; --i) {
        SaleVector::Line line;
        line.total = upTo(upTo(3) == 0 ? 5 : 100'000);
        line.discountGranted = upTo(line.total);
        line.discount = upTo(1) == 0 ? 0 : line.discountGranted;
        line.pointsAllowed = upTo(line.total - line.discountGranted);
        line.points = upTo(2) == 0 ? 0 : upTo(line.pointsAllowed);
        line.award = upTo(line.total);
        sale.paid += line.total - line.discount - line.points;
        sale.lines.push_back(line);
    }
    return sale;
}

} // namespace

TEST(Vectors, ofSalesAreWhatServerAndTillCount)
{
    const std::vector<SaleVector> sales = tests::saleVectors(vectorFile);
    ASSERT_GE(sales.size(), 30U);
    int refused = 0;
    for (const SaleVector& sale : sales) {
        SCOPED_TRACE(qPrintable(sale.name));
        try {
            expectBooked(sale, bookedAtServer(sale));
            EXPECT_EQ(sale.refused, QString());
            EXPECT_EQ(earnedAtTill(sale), sale.earned);
            expectEarnedByDefinition(sale, sale.earned);
        } catch (const simulator::Rejection& rejection) {
            EXPECT_EQ(requirementOf(rejection), sale.refused);
            ++refused;
        }
    }
    EXPECT_GE(refused, 5);
}

TEST(Vectors, ofReturnsAreWhatServerAndTillCount)
{
    const std::vector<ReturnVector> vectors = tests::returnVectors(vectorFile);
    ASSERT_GE(vectors.size(), 20U);
    int refused = 0;
    for (const ReturnVector& vector : vectors) {
        SCOPED_TRACE(qPrintable(vector.name));
        Returns returns(vector);
        for (const ReturnVector::Part& part : vector.returns) {
            try {
                expectPart(returns, part);
                EXPECT_EQ(part.refused, QString());
            } catch (const simulator::Rejection& rejection) {
                EXPECT_EQ(requirementOf(rejection), part.refused);
                ++refused;
            }
        }
    }
    EXPECT_GE(refused, 5);
}

TEST(Vectors, ofReturnsOfAWholeLineAddUpToIt)
{
    int whole = 0;
    for (const ReturnVector& vector : tests::returnVectors(vectorFile)) {
        ReturnVector::Part sum;
        for (const ReturnVector::Part& part : vector.returns) {
            if (part.refused.isEmpty()) {
                sum.quantity += part.quantity;
                sum.total += part.total;
                sum.givenBack += part.givenBack;
                sum.takenBack += part.takenBack;
            }
        }
        if (sum.quantity == vector.quantity) {
            ++whole;
            EXPECT_EQ(sum.total, vector.total) << qPrintable(vector.name);
            EXPECT_EQ(sum.givenBack, vector.points) << qPrintable(vector.name);
            EXPECT_EQ(sum.takenBack, vector.earned) << qPrintable(vector.name);
        }
    }
    EXPECT_GE(whole, 15);
}

TEST(ChecksByChance, earnTheSameAtServerAndTillAndByDefinition)
{
    std::mt19937_64 chance(20'240'305);
    for (int i = 0; i < 2000 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        SaleVector sale = saleByChance(chance);
        sale.earned = earnedAtTill(sale);
        expectEarnedByDefinition(sale, sale.earned);
        const simulator::Booking booking = bookedAtServer(sale);
        sale.spent = booking.spent;
        sale.change = std::accumulate(sale.earned.begin(), sale.earned.end(), -booking.spent);
        expectBooked(sale, booking);
    }
}

TEST(ChecksByChance, areReturnedInPartsAlikeAtServerAndTill)
{
    std::mt19937_64 chance(31'071'986);
    for (int i = 0; i < 1000 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        const auto from = [&](qint64 least, qint64 most) {
            return std::uniform_int_distribution<qint64>(least, most)(chance);
        };
        ReturnVector vector;
        vector.quantity = from(1, 5000);
        vector.total = from(0, 100'000);
        vector.points = from(0, vector.total);
        vector.earned = from(0, vector.total - vector.points);
        Returns returns(vector);
        qint64 left = vector.quantity;
        while (left > 0 && !HasFailure()) {
            const qint64 quantity = from(1, left);
            const till::Line slip = returns.returnAtTill(quantity);
            const simulator::BookedLine booked =
                returns.bookAtServer({quantity, slip.sumKopecks, slip.givenBackKopecks, 0, {}});
            EXPECT_EQ(booked.takenBack, slip.takenBackKopecks);
            expectSoFarByDefinition(returns.state());
            left -= quantity;
        }
        EXPECT_EQ(returns.state().returned.givenBack, vector.points);
        EXPECT_EQ(returns.state().returned.takenBack, vector.earned);
    }
}
