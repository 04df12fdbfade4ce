// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/returnbooking.h"

#include "simulator/documents/rejection.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

[[noreturn]] void reject(int lineId, const QString& why)
{
    throw Rejection(424, u"Line %1: %2"_s.arg(lineId).arg(why));
}

/// The share of a booked amount that falls to this return.
Kopecks shareNow(Kopecks booked, Thousandths returned, Thousandths sold, Kopecks before)
{
    return roundedShare(booked, returned, sold) - before;
}

BookedLine bookLine(const Line& line, const SoldLine& source)
{
    const BookedLine& sold = source.sold;
    if (line.sku != sold.sku) {
        reject(line.id, u"goods code %1 is returned, but %2 was sold"_s.arg(line.sku, sold.sku));
    }
    const Thousandths returned = checkedSum(source.returned.quantity, line.quantity);
    if (returned > sold.quantity) {
        reject(line.id, u"more is returned than was sold"_s);
    }
    BookedLine booked;
    booked.id = line.id;
    booked.sku = line.sku;
    booked.quantity = line.quantity;
    booked.total = shareNow(sold.total, returned, sold.quantity, source.returned.total);
    booked.givenBack = shareNow(sold.spent, returned, sold.quantity, source.returned.givenBack);
    booked.takenBack = shareNow(sold.earned, returned, sold.quantity, source.returned.takenBack);
    if (line.total != booked.total) {
        reject(line.id, u"the total is %1, but the returned part of the sale's line is %2"_s.arg(
                            writeKopecks(line.total), writeKopecks(booked.total)));
    }
    if (line.givenBack != booked.givenBack) {
        reject(line.id, u"%1 points are given back, but the returned part had spent %2"_s.arg(
                            writeKopecks(line.givenBack), writeKopecks(booked.givenBack)));
    }
    return booked;
}

} // namespace

Booking bookReturn(const Check& check, const std::vector<SoldLine>& sold)
{
    QHash<int, const SoldLine*> byId;
    for (const SoldLine& line : sold) {
        byId.insert(line.sold.id, &line);
    }
    Booking booking;
    booking.checkId = check.id;
    booking.type = Check::Type::Return;
    booking.originalId = check.originalId;
    booking.cardNumber = check.cardNumber;
    booking.number = check.number;
    booking.date = check.date;
    booking.total = check.total;
    for (const Line& line : check.lines) {
        const SoldLine* source = byId.value(line.id);
        if (source == nullptr) {
            reject(line.id, u"the sale has no line with this id"_s);
        }
        // cppcheck-suppress nullPointerRedundantCheck ; reject does not return
        booking.lines.push_back(bookLine(line, *source));
        booking.givenBack = checkedSum(booking.givenBack, booking.lines.back().givenBack);
        booking.takenBack = checkedSum(booking.takenBack, booking.lines.back().takenBack);
    }
    return booking;
}

} // namespace simulator
