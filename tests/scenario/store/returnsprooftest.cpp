// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Goods of one till's sales come back at five others, in parts, in any order and at the same time,
// while tills and the store are stopped by chance. In the end no piece came back twice, and what
// was given back is what was taken: by the tills' files, by the store and by the loyalty server.

#include "tests/scenario/store/returnsproof.h"
#include "host/database/database.h"
#include "simulator/ledger/database.h"
#include "simulator/ledger/ledger.h"
#include "store/client/postgresbooks.h"
#include "tests/scenario/store/proofsize.h"
#include "tests/scenario/store/storeshop.h"
#include "tests/scenario/store/takinghand.h"
#include "till/checks/checkcodec.h"
#include "till/checks/checkstore.h"

#include <QThread>

#include <atomic>
#include <random>
#include <thread>

namespace {

constexpr int takers = 5;
constexpr int customersOfSale = 12;
constexpr int salesAtOnce = 3; ///< whose customers come at the same time
constexpr int positions = 2;
constexpr int minuteMilliseconds = 61'000;
constexpr char saleOfTwoLines[] =
    "type = \"sale\"\ncard = \"2200000000017\"\n"
    "[[line]]\ncode = \"1001\"\nname = \"Чай\"\nprice = 149.99\nquantity = 5\n"
    "[[line]]\ncode = \"1003\"\nname = \"Спички\"\nprice = 3.33\nquantity = 3\n";

class ReturnsProof : public StoreShop
{
protected:
    void SetUp() override
    {
        StoreShop::SetUp();
        writeTillConfig(0);
        for (int number = 1; number <= takers; ++number) {
            writeTillConfig(number);
            hands.push_back(std::make_unique<TakingHand>(folder(), u"till%1"_s.arg(number),
                                                         seed * 1000 + quint64(number)));
        }
        writeFile(u"goods.toml"_s, QString::fromUtf8(saleOfTwoLines));
        quietServer();
        startWorker();
    }

    int upTo(int most) { return std::uniform_int_distribution<>(0, most)(random); }

    /// Every second sale pays with points.
    void sellAll(int count)
    {
        const auto till = std::make_unique<Program>(
            QStringLiteral(ORVA_TILL), QStringList{u"--config"_s, u"till0.toml"_s, u"work"_s},
            folder());
        for (int i = 0; i < count; ++i) {
            expectOk(till->command(u"open goods.toml"_s));
            if (i % 2 == 1) {
                till->command(u"points all"_s);
            }
            expectOk(till->command(u"close"_s));
        }
        expectOk(till->command(u"wait 600"_s));
        till->send(u"quit"_s);
        EXPECT_EQ(till->waitForEnd(), 0);
        forEachClosed(path(u"till0.sqlite"_s),
                      [this](const till::Check& check) { model.add(check); });
    }

    /// All tills serve customers of a few sales at a time, until all have been there.
    void takeBack(int customers)
    {
        std::atomic<int> next = 0;
        std::atomic<int> atWork = takers;
        std::vector<std::thread> threads;
        for (const auto& hand : hands) {
            const quint64 number = threads.size();
            threads.emplace_back([&, number, taker = hand.get()] {
                std::mt19937_64 choice(seed + number);
                for (int customer = next++; customer < customers; customer = next++) {
                    const auto behind = qsizetype(choice() % salesAtOnce);
                    const qsizetype sale = customer / customersOfSale + behind;
                    taker->serve(sales.at(std::min(sale, sales.size() - 1)), positions);
                }
                taker->die();
                --atWork;
            });
        }
        while (atWork > 0) {
            QThread::msleep(static_cast<unsigned long>(100 + upTo(1500)));
            stopStore([this](int most) { return upTo(most); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

    /// What is left open by a killed till belongs to it for a minute: so it is older here.
    void settle()
    {
        for (const auto& hand : hands) {
            hand->die();
            poshost::Database database(hand->database());
            database.execute(u"UPDATE return_reservations SET noted_at = noted_at - %1"_s.arg(
                minuteMilliseconds));
        }
        for (const auto& hand : hands) {
            const RunResult run = hand->run({u"queue"_s, u"deliver"_s});
            EXPECT_EQ(run.exitCode, 0) << qPrintable(run.output);
        }
        awaitDelivery();
    }

    /// What customers have left comes back without trouble, so that every sale is whole.
    void takeTheRest()
    {
        for (const QString& sale : std::as_const(sales)) {
            hands.at(size_t(upTo(takers - 1)))->takeAllBack(sale, positions);
        }
        settle();
    }

    void forEachClosed(const QString& file, const std::function<void(const till::Check&)>& take)
    {
        till::CheckStore(QSharedPointer<poshost::Database>::create(file)).forEachClosed(take);
    }

    /// The same sums from the checks that the store keeps.
    TakenBack storesBooks() const
    {
        TakenBack books;
        orvastore::PostgresBooks store;
        orvastore::StoreSettings settings;
        settings.database = storeString();
        settings.timeoutSeconds = 60;
        store.open(settings);
        const auto read = store.forEachCheck(u"1042"_s, {}, [&](const orvastore::KeptCheck& kept) {
            books.add(till::checkcodec::decode(kept.content, kept.identifier));
            return true;
        });
        EXPECT_EQ(read.end, orvastore::StoreEnd::Done);
        return books;
    }

    /// The points of each sale as the loyalty server has booked them.
    QStringList serversPoints() const
    {
        QMap<QString, TakenBack::Points> sums;
        simulator::Database file(path(u"server.sqlite"_s), simulator::Database::Open::ExistingOnly);
        const simulator::Ledger ledger(file);
        for (const simulator::Booking& booking : ledger.bookings()) {
            const bool isReturn = !booking.originalId.isEmpty();
            TakenBack::Points& of = sums[isReturn ? booking.originalId : booking.checkId];
            of.spent += booking.spent;
            of.earned += booking.earned;
            of.givenBack += booking.givenBack;
            of.takenBack += booking.takenBack;
        }
        for (const simulator::Account& account : ledger.accounts()) {
            EXPECT_EQ(account.balance, account.opening) << "everything came back";
        }
        return TakenBack::pointsOf(sums);
    }

    const quint64 seed = qEnvironmentVariableIsSet("ORVA_STORE_SEED")
                             ? quint64(qEnvironmentVariable("ORVA_STORE_SEED").toULongLong())
                             : 7;
    std::mt19937_64 random{seed};
    std::vector<std::unique_ptr<TakingHand>> hands;
    QStringList sales;
    TakenBack model;
};

} // namespace

TEST_F(ReturnsProof, GiveBackWhatWasTakenAndNoPieceTwice)
{
    SCOPED_TRACE(seed);
    const int count = qEnvironmentVariableIsSet("ORVA_STORE_SALES")
                          ? qEnvironmentVariableIntValue("ORVA_STORE_SALES")
                          : sized(500, 4);
    sellAll(count);
    sales = model.soldChecks();
    ASSERT_EQ(sales.size(), count);
    awaitDelivery();
    takeBack(count * customersOfSale);
    settle();
    takeTheRest();

    int kills = 0;
    int refusals = 0;
    for (const auto& hand : hands) {
        forEachClosed(hand->database(), [this](const till::Check& check) { model.add(check); });
        kills += hand->kills();
        refusals += hand->refusals();
    }
    EXPECT_EQ(model.complaints(), QStringList());
    EXPECT_EQ(model.whole(), count) << "a piece is reserved for ever";
    const TakenBack store = storesBooks();
    EXPECT_EQ(store.complaints(), QStringList());
    EXPECT_EQ(store.lines(), model.lines());
    EXPECT_EQ(store.points(), model.points());
    EXPECT_EQ(serversPoints(), model.points());
    EXPECT_EQ(cluster.sql(u"SELECT count(*) FILTER (WHERE is_closed), count(*) FILTER (WHERE NOT "
                          "is_closed AND NOT is_released) FROM orva.returns"_s),
              u"%1|0"_s.arg(model.returned()));
    EXPECT_GT(kills, 0);
    EXPECT_GT(storeStops, 0);
    printFigure(u"seed %1: %2 sales come back in parts at %3 tills: %4 returns, %5 refusals, %6 "
                "kills of a till, %7 stops of the store; nothing given back twice"_s.arg(seed)
                    .arg(count)
                    .arg(takers)
                    .arg(model.returned())
                    .arg(refusals)
                    .arg(kills)
                    .arg(storeStops));
}
