// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/difference.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/queue/outgoingqueue.h"
#include "simulator/ledger/ledger.h"
#include "simulator/rules/rulesreader.h"
#include "tests/scenario/crash/process.h"
#include "tests/support/books.h"
#include "till/checks/checkstore.h"

#include <QMultiHash>
#include <QSet>
#include <QSharedPointer>

#include <algorithm>

using namespace Qt::StringLiterals;

using tests::Books;
using tests::Entry;
using tests::Points;

namespace {

/// The only till's.
constexpr int onlyTill = 1;

Books closedChecks(till::CheckStore& store)
{
    Books books;
    const simulator::Rules rules =
        simulator::readRules(simulator::builtInRules(), u"built-in rules"_s);
    for (const simulator::Card& card : rules.cards) {
        books.open(card.number, card.opening);
    }
    store.forEachClosed([&books](const till::Check& check) {
        if (!books.take(check, onlyTill)) {
            throw SceneError(u"the till has check %1 twice"_s.arg(check.id()));
        }
    });
    return books;
}

void compareChecks(const Books& closed, const simulator::Ledger& ledger, Difference& difference)
{
    QMultiHash<QString, simulator::Booking> booked;
    for (const simulator::Booking& booking : ledger.bookings()) {
        booked.insert(booking.checkId, booking);
        difference.doubled += closed.find(booking.checkId) == nullptr ? 1 : 0;
    }
    for (const Entry& check : closed.all()) {
        const qsizetype times = booked.count(check.check);
        difference.lost += times == 0 ? 1 : 0;
        difference.doubled += int(std::max<qsizetype>(0, times - 1));
        const simulator::Booking last = booked.value(check.check);
        const bool same =
            times == 0 || (Points::of(last) == check.points && last.cardNumber == check.card);
        difference.wrongAmounts += same ? 0 : 1;
    }
}

/// The till's view of the balances against the server's.
void compareCards(const Books& closed, const simulator::Ledger& ledger, Difference& difference)
{
    QSet<QString> known;
    for (const simulator::Account& account : ledger.accounts()) {
        known.insert(account.card);
        difference.wrongCards += account.balance == closed.inTheEnd(account.card) ? 0 : 1;
    }
    for (const QString& card : closed.usedCards()) {
        const bool moved = closed.inTheEnd(card) != closed.opening(card);
        difference.wrongCards += moved && !known.contains(card) ? 1 : 0;
    }
}

} // namespace

bool Difference::isNone() const
{
    return lost + doubled + wrongAmounts + wrongCards + undelivered == 0 && damaged.isEmpty();
}

QString Difference::text() const
{
    return u"%1 lost, %2 doubled, %3 with wrong points, %4 cards off, %5 undelivered%6"_s.arg(lost)
        .arg(doubled)
        .arg(wrongAmounts)
        .arg(wrongCards)
        .arg(undelivered)
        .arg(damaged.isEmpty() ? QString() : u"; damaged: "_s + damaged.join(u", "_s));
}

Difference Difference::between(const QString& tillDatabase, const QString& serverDatabase)
{
    Difference difference;
    const auto database = QSharedPointer<poshost::Database>::create(tillDatabase);
    till::CheckStore store(database);
    const poshost::QueueCounts counts = poshost::OutgoingQueue(*database).counts();
    difference.undelivered = counts.waiting + counts.paused + counts.parked;
    simulator::Database server(serverDatabase, simulator::Database::Open::ExistingOnly);
    const simulator::Ledger ledger(server);
    const Books closed = closedChecks(store);
    compareChecks(closed, ledger, difference);
    compareCards(closed, ledger, difference);

    poshost::Statement sound(*database, u"PRAGMA integrity_check"_s);
    poshost::Statement serverSound(server, u"PRAGMA integrity_check"_s);
    for (const QString& result :
         {sound.next() ? sound.value(0).toString() : QString(),
          serverSound.next() ? serverSound.value(0).toString() : QString()}) {
        if (result != u"ok"_s) {
            difference.damaged.append(result);
        }
    }
    return difference;
}
