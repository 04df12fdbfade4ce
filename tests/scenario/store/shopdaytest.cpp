// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// After a day on which everything was killed, the books of tills, store and server are the same.

#include "tests/scenario/store/shopday.h"
#include "host/database/database.h"
#include "simulator/ledger/database.h"
#include "simulator/ledger/ledger.h"
#include "tests/support/cashier.h"
#include "till/checks/checkstore.h"

#include <QHash>
#include <QMap>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

int setting(const char* name, int otherwise)
{
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
}

/// A check that a till has closed with a confirmation.
struct Closed
{
    QString id;
    QString card;
};

/// In the order in which the till closed them.
QList<Closed> closedAt(const QString& database)
{
    QList<Closed> all;
    const auto opened = QSharedPointer<poshost::Database>::create(database);
    till::CheckStore store(opened);
    for (const till::CheckRow& row : store.list()) {
        if (row.state != u"closed"_s) {
            continue;
        }
        const till::Check check = store.findClosed(row.id);
        if (check.confirmed) {
            all.append({row.id, check.cardNumber()});
        }
    }
    return all;
}

} // namespace

TEST_F(ShopDay, KeepsAllBooksEqualWhateverDies)
{
    const int seconds = setting("ORVA_STORE_SECONDS", 20);
    const int tills = setting("ORVA_STORE_TILLS", 20);
    const quint64 seed = quint64(setting("ORVA_STORE_SEED", 1));
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    startWorkers(4);
    openTills(tills, seed * 1000);
    sabotage(seconds, random);
    closeTills();
    drain();

    simulator::Database serverFile(path(u"server.sqlite"_s),
                                   simulator::Database::Open::ExistingOnly);
    QMap<QString, int> booked;
    QHash<QString, int> place;
    for (const simulator::Booking& booking : simulator::Ledger(serverFile).bookings()) {
        ++booked[booking.checkId];
        place.insert(booking.checkId, static_cast<int>(place.size()));
    }
    const QStringList kept =
        ask(u"SELECT identifier FROM orva.checks"_s).split(u'\n', Qt::SkipEmptyParts);
    const QSet<QString> inStore(kept.cbegin(), kept.cend());
    EXPECT_EQ(inStore.size(), kept.size()) << "the store has a check twice";

    int closed = 0;
    int lost = 0;
    int missingInStore = 0;
    int outOfOrder = 0;
    int acknowledged = 0;
    int kills = 0;
    for (const auto& hand : hands) {
        acknowledged += hand->acknowledged();
        kills += hand->kills();
        const tests::CheckCount count = tests::CheckCount::read(hand->database());
        EXPECT_GE(count.closed, hand->acknowledged()) << "a check that was closed is gone";
        EXPECT_LE(count.closed, hand->acknowledged() + hand->kills());
        QHash<QString, int> lastOfCard;
        for (const Closed& check : closedAt(hand->database())) {
            ++closed;
            lost += booked.value(check.id) == 0 ? 1 : 0;
            missingInStore += inStore.contains(check.id) ? 0 : 1;
            outOfOrder += place.value(check.id) < lastOfCard.value(check.card, -1) ? 1 : 0;
            lastOfCard.insert(check.card, place.value(check.id));
        }
    }
    int doubled = 0;
    for (const int times : std::as_const(booked)) {
        doubled += times - 1;
    }
    std::printf("%d tills, 4 workers, %d s, seed %llu: %d checks confirmed (%d acknowledged); "
                "killed: tills %d, workers %d, loyalty server %d, connections %d, primary %d; "
                "lost %d, doubled %d, missing in the store %d, out of order %d\n",
                tills, seconds, static_cast<unsigned long long>(seed), closed, acknowledged, kills,
                workerKills, serverKills, cutConnections, primaryKills, lost, doubled,
                missingInStore, outOfOrder);
    EXPECT_GT(closed, seconds / 2) << "nobody has sold anything";
    EXPECT_EQ(lost, 0);
    EXPECT_EQ(doubled, 0);
    EXPECT_EQ(missingInStore, 0);
    EXPECT_EQ(outOfOrder, 0);
    EXPECT_EQ(booked.size(), closed) << "the server has a check that no till has closed";
    EXPECT_EQ(inStore.size(), closed);
    EXPECT_GE(primaryKills, 1);
}
