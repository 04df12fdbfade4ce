// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// After a day on which everything was killed, the books of tills, store and server are the same.

#include "tests/scenario/store/shopday.h"
#include "host/database/database.h"
#include "simulator/ledger/database.h"
#include "simulator/ledger/ledger.h"
#include "tests/scenario/store/proofsize.h"
#include "tests/support/cashier.h"
#include "till/checks/checkstore.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

int setting(const char* name, int otherwise)
{
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
}

/// A check that a till has closed.
struct Closed
{
    QString id;
    QString card;
    bool isConfirmed = true;
};

/// In the order in which the till closed them.
QList<Closed> closedAt(const QString& database)
{
    QList<Closed> all;
    const auto opened = QSharedPointer<poshost::Database>::create(database);
    till::CheckStore store(opened);
    QList<till::CheckRow> rows = store.list();
    std::reverse(rows.begin(), rows.end()); // the list begins with the newest
    for (const till::CheckRow& row : std::as_const(rows)) {
        if (row.state != u"closed"_s) {
            continue;
        }
        const till::Check check = store.findClosed(row.id);
        all.append({row.id, check.cardNumber(), check.confirmed});
    }
    return all;
}

/// What the loyalty server has booked.
struct Booked
{
    QMap<QString, int> times;
    QHash<QString, int> place; ///< in the order of booking
    int doubled = 0;
};

Booked bookedIn(const QString& file)
{
    simulator::Database opened(file, simulator::Database::Open::ExistingOnly);
    Booked booked;
    for (const simulator::Booking& booking : simulator::Ledger(opened).bookings()) {
        booked.doubled += booked.times[booking.checkId]++ > 0 ? 1 : 0;
        booked.place.insert(booking.checkId, static_cast<int>(booked.place.size()));
    }
    return booked;
}

/// How many of a till's checks the server has booked before an earlier one of their card.
int countOutOfOrder(const QList<Closed>& closed, const QHash<QString, int>& place)
{
    int count = 0;
    QHash<QString, int> lastOfCard;
    for (const Closed& check : closed) {
        const int here = place.value(check.id, -1);
        int& last = lastOfCard[check.card];
        count += here < last ? 1 : 0;
        last = here;
    }
    return count;
}

/// How the books of all tills compare.
struct Verdict
{
    int confirmed = 0;
    int silent = 0; ///< without a message
    int acknowledged = 0;
    int kills = 0;
    int lost = 0;
    int missingInStore = 0;
    int outOfOrder = 0;

    void add(const TillHand& hand, const Booked& booked, const QSet<QString>& inStore);
};

void Verdict::add(const TillHand& hand, const Booked& booked, const QSet<QString>& inStore)
{
    acknowledged += hand.acknowledged();
    kills += hand.kills();
    const tests::CheckCount count = tests::CheckCount::read(hand.database());
    EXPECT_GE(count.closed, hand.acknowledged()) << "a check that was closed is gone";
    EXPECT_LE(count.closed, hand.acknowledged() + hand.kills());
    QList<Closed> checks = closedAt(hand.database());
    for (const Closed& check : checks) {
        ++(check.isConfirmed ? confirmed : silent);
        lost += check.isConfirmed && !booked.place.contains(check.id) ? 1 : 0;
        missingInStore += inStore.contains(check.id) ? 0 : 1;
    }
    checks.removeIf([](const Closed& check) { return !check.isConfirmed; });
    outOfOrder += countOutOfOrder(checks, booked.place);
}

} // namespace

TEST(ShopDayVerdict, CountsACheckThatWasBookedBeforeAnEarlierOneOfItsCard)
{
    const QList<Closed> closed{
        {u"1"_s, u"a"_s}, {u"2"_s, u"b"_s}, {u"3"_s, u"a"_s}, {u"4"_s, u"b"_s}};
    const auto count = [&](const QStringList& booked) {
        QHash<QString, int> place;
        for (qsizetype i = 0; i < booked.size(); ++i) {
            place.insert(booked.at(i), static_cast<int>(i));
        }
        return countOutOfOrder(closed, place);
    };
    EXPECT_EQ(count({u"1"_s, u"2"_s, u"3"_s, u"4"_s}), 0);
    EXPECT_EQ(count({u"2"_s, u"1"_s, u"4"_s, u"3"_s}), 0) << "another card";
    EXPECT_EQ(count({u"3"_s, u"2"_s, u"1"_s, u"4"_s}), 1);
    EXPECT_EQ(count({u"4"_s, u"3"_s, u"2"_s, u"1"_s}), 2);
}

TEST_F(ShopDay, KeepsAllBooksEqualWhateverDies)
{
    const int seconds = setting("ORVA_STORE_SECONDS", sized(600, 3));
    const int tills = setting("ORVA_STORE_TILLS", sized(20, 8));
    const quint64 seed = quint64(setting("ORVA_STORE_SEED", 1));
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    startWorkers(4);
    openTills(tills, seed * 1000);
    sabotage(seconds, random);
    closeTills();
    drain();

    const Booked booked = bookedIn(path(u"server.sqlite"_s));
    const QStringList kept =
        ask(u"SELECT identifier FROM orva.checks"_s).split(u'\n', Qt::SkipEmptyParts);
    const QSet<QString> inStore(kept.cbegin(), kept.cend());
    EXPECT_EQ(inStore.size(), kept.size()) << "the store has a check twice";
    Verdict verdict;
    for (const auto& hand : hands) {
        verdict.add(*hand, booked, inStore);
    }
    printFigure(u"%1 tills and 4 workers for %2 s, seed %3: %4 checks confirmed, %5 without a "
                "message; killed: tills %6, workers %7, loyalty server %8, connections %9, primary "
                "%10"_s.arg(tills)
                    .arg(seconds)
                    .arg(seed)
                    .arg(verdict.confirmed)
                    .arg(verdict.silent)
                    .arg(verdict.kills)
                    .arg(workerKills)
                    .arg(serverKills)
                    .arg(cutConnections)
                    .arg(primaryKills));
    printFigure(u"lost %1, doubled %2, missing in the store %3, out of order %4"_s.arg(verdict.lost)
                    .arg(booked.doubled)
                    .arg(verdict.missingInStore)
                    .arg(verdict.outOfOrder));
    EXPECT_GT(verdict.confirmed, seconds / 2) << "nobody has sold anything";
    EXPECT_EQ(verdict.lost, 0);
    EXPECT_EQ(booked.doubled, 0);
    EXPECT_EQ(verdict.missingInStore, 0);
    EXPECT_EQ(verdict.outOfOrder, 0);
    EXPECT_EQ(booked.times.size(), verdict.confirmed) << "the server has what no till has closed";
    EXPECT_EQ(inStore.size(), verdict.confirmed + verdict.silent);
    EXPECT_EQ(primaryKills, 1);
}
