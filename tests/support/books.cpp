// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/books.h"

#include "tests/scenario/year/violation.h"

using namespace Qt::StringLiterals;

namespace year {

void Books::take(const till::Check& check, int till)
{
    if (!check.confirmed) {
        return;
    }
    if (entries.contains(check.id())) {
        throw Violation(u"check %1 was closed twice"_s.arg(check.id()));
    }
    Entry entry;
    entry.check = check.id();
    entry.till = till;
    entry.card = check.cardNumber();
    entry.isReturn = check.isReturn();
    entry.earned = check.earnedKopecks();
    entry.spent = check.spentKopecks();
    entry.givenBack = check.givenBackKopecks();
    entry.takenBack = check.takenBackKopecks();
    entries.insert(entry.check, entry);
    closed[entry.card] += entry.change();
    pending[till].append(entry.check);
    ++closedChecks[till];
}

const Entry* Books::find(const QString& check) const
{
    const auto found = entries.constFind(check);
    return found == entries.cend() ? nullptr : &*found;
}

void Books::count(Entry& entry, bool Entry::*mark)
{
    if (!entry.counts()) {
        counted[entry.card] += entry.change();
    }
    entry.*mark = true;
}

void Books::setBooked(const QString& check)
{
    Entry& entry = entries[check];
    count(entry, &Entry::booked);
    ++bookedChecks;
    total.earned += entry.earned;
    total.spent += entry.spent;
    total.givenBack += entry.givenBack;
    total.takenBack += entry.takenBack;
}

void Books::setDelivered(const QString& check)
{
    Entry& entry = entries[check];
    count(entry, &Entry::delivered);
    pending[entry.till].removeOne(check);
}

} // namespace year
