// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/salebooking.h"

#include "simulator/documents/rejection.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

void requireWithin(Kopecks used, Kopecks granted, int lineId, const QString& what)
{
    if (used > granted) {
        throw Rejection(424, u"Line %1 used %2 of %3, but only %4 was granted"_s.arg(lineId).arg(
                                 writeKopecks(used), what, writeKopecks(granted)));
    }
}

/// Fills the lines and the check's sums of what was used; the points earned are left at 0.
void bookUsed(Booking& booking, const Check& check, const std::vector<LineGrant>& granted,
              const Payment& payment)
{
    for (size_t i = 0; i < check.lines.size(); ++i) {
        const Line& line = check.lines[i];
        const UsedAwards& used = payment.lines[i];
        const Kopecks discountGranted =
            checkedSum(granted[i].discount, granted[i].discountOnChange);
        requireWithin(used.discount, discountGranted, line.id, u"discount"_s);
        requireWithin(used.points, granted[i].allowBonus, line.id, u"points"_s);
        BookedLine booked;
        booked.id = line.id;
        booked.sku = line.sku;
        booked.quantity = line.quantity;
        booked.total = line.total;
        booked.discount = used.discount;
        booked.spent = used.points;
        booking.discount = checkedSum(booking.discount, used.discount);
        booking.spent = checkedSum(booking.spent, used.points);
        booking.lines.push_back(booked);
    }
}

} // namespace

Booking bookSale(const Check& check, const std::vector<LineGrant>& granted, const Payment& payment)
{
    Booking booking;
    booking.checkId = check.id;
    booking.cardNumber = check.cardNumber;
    booking.number = check.number;
    booking.date = check.date;
    booking.total = check.total;
    booking.paid = payment.amount;
    bookUsed(booking, check, granted, payment);

    const Kopecks afterDiscount = booking.total - booking.discount;
    const Kopecks toPay = afterDiscount - booking.spent;
    if (toPay != payment.amount) {
        throw Rejection(
            424,
            u"Total %1 less discount %2 less points %3 is %4, but the payment is %5"_s.arg(
                writeKopecks(booking.total), writeKopecks(booking.discount),
                writeKopecks(booking.spent), writeKopecks(toPay), writeKopecks(payment.amount)));
    }
    for (size_t i = 0; i < booking.lines.size(); ++i) {
        BookedLine& line = booking.lines[i];
        line.earned = booking.spent == 0
                          ? granted[i].awardBonus
                          : roundedShare(granted[i].awardBonus, toPay, afterDiscount);
        booking.earned = checkedSum(booking.earned, line.earned);
    }
    return booking;
}

} // namespace simulator
