// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/difference.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/queue/outgoingqueue.h"
#include "simulator/ledger/ledger.h"
#include "simulator/rules/rulesreader.h"
#include "till/checks/checkstore.h"

#include <QHash>
#include <QMultiHash>
#include <QSharedPointer>

#include <cstdlib>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

/// What one check did to its card, in kopecks.
using Points = std::tuple<qint64, qint64, qint64, qint64>;

struct Entry
{
    QString card;
    Points points;

    qint64 change() const
    {
        const auto [earned, spent, givenBack, takenBack] = points;
        return earned - spent + givenBack - takenBack;
    }
};

QHash<QString, Entry> closedChecks(till::CheckStore& store)
{
    QHash<QString, Entry> checks;
    store.forEachClosed([&checks](const till::Check& check) {
        if (check.confirmed) {
            checks.insert(check.id(), {check.cardNumber(),
                                       {check.earnedKopecks(), check.spentKopecks(),
                                        check.givenBackKopecks(), check.takenBackKopecks()}});
        }
    });
    return checks;
}

QMultiHash<QString, Entry> bookedChecks(const simulator::Ledger& ledger)
{
    QMultiHash<QString, Entry> booked;
    for (const simulator::Booking& booking : ledger.bookings()) {
        booked.insert(booking.checkId,
                      {booking.cardNumber,
                       {booking.earned, booking.spent, booking.givenBack, booking.takenBack}});
    }
    return booked;
}

void compareChecks(const QHash<QString, Entry>& closed, const QMultiHash<QString, Entry>& booked,
                   Difference& difference)
{
    for (auto check = closed.cbegin(); check != closed.cend(); ++check) {
        const qsizetype times = booked.count(check.key());
        difference.lost += times == 0 ? 1 : 0;
        difference.doubled += int(std::max<qsizetype>(0, times - 1));
        const bool same = times == 0 || (booked.value(check.key()).points == check->points &&
                                         booked.value(check.key()).card == check->card);
        difference.wrongAmounts += same ? 0 : 1;
    }
    for (auto check = booked.cbegin(); check != booked.cend(); ++check) {
        difference.doubled += closed.contains(check.key()) ? 0 : 1;
    }
}

/// The till's view of the balances against the server's.
void compareCards(const QHash<QString, Entry>& closed, const simulator::Ledger& ledger,
                  Difference& difference)
{
    const simulator::Rules rules =
        simulator::readRules(simulator::builtInRules(), u"built-in rules"_s);
    QHash<QString, qint64> expected;
    for (const Entry& check : closed) {
        expected[check.card] += check.change();
    }
    for (const simulator::Account& account : ledger.accounts()) {
        const simulator::Card* card = rules.card(account.card);
        const qint64 opening = card == nullptr ? 0 : card->opening;
        const bool right = account.balance == opening + expected.take(account.card);
        difference.wrongCards += right ? 0 : 1;
    }
    for (const qint64 change : std::as_const(expected)) {
        difference.wrongCards += change == 0 ? 0 : 1;
    }
}

} // namespace

TillBooks TillBooks::read(const QString& tillDatabase)
{
    TillBooks books;
    till::CheckStore store(QSharedPointer<poshost::Database>::create(tillDatabase));
    for (const till::CheckRow& row : store.list()) {
        books.closed += row.state == u"closed"_s ? 1 : 0;
        books.suspended += row.state == u"suspended"_s ? 1 : 0;
    }
    return books;
}

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
    const QHash<QString, Entry> closed = closedChecks(store);
    compareChecks(closed, bookedChecks(ledger), difference);
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
