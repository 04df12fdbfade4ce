// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/books.h"

#include "simulator/ledger/booking.h"

namespace tests {

Points Points::of(const till::Check& check)
{
    return {check.earnedKopecks(), check.spentKopecks(), check.givenBackKopecks(),
            check.takenBackKopecks()};
}

Points Points::of(const simulator::Booking& booking)
{
    return {booking.earned, booking.spent, booking.givenBack, booking.takenBack};
}

Points& Points::operator+=(const Points& other)
{
    earned += other.earned;
    spent += other.spent;
    givenBack += other.givenBack;
    takenBack += other.takenBack;
    return *this;
}

bool Books::take(const till::Check& check, int till)
{
    if (!check.confirmed) {
        return true;
    }
    if (entries.contains(check.id())) {
        return false;
    }
    Entry entry;
    entry.check = check.id();
    entry.till = till;
    entry.card = check.cardNumber();
    entry.isReturn = check.isReturn();
    entry.points = Points::of(check);
    entries.insert(entry.check, entry);
    closed[entry.card] += entry.points.change();
    pending[till].append(entry.check);
    ++closedChecks[till];
    return true;
}

const Entry* Books::find(const QString& check) const
{
    const auto found = entries.constFind(check);
    return found == entries.cend() ? nullptr : &*found;
}

void Books::count(Entry& entry, bool Entry::*mark)
{
    if (!entry.counts()) {
        counted[entry.card] += entry.points.change();
    }
    entry.*mark = true;
}

void Books::setBooked(const QString& check)
{
    Entry& entry = entries[check];
    count(entry, &Entry::booked);
    ++bookedChecks;
    total += entry.points;
}

void Books::setDelivered(const QString& check)
{
    Entry& entry = entries[check];
    count(entry, &Entry::delivered);
    pending[entry.till].removeOne(check);
}

} // namespace tests
