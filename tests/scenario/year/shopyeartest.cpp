// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Days of a shop whose five tills share a store: goods come back to another till, checks are left
// at one till and taken up at another, customers are forgotten everywhere. Whenever the shop is
// closed, what the tills said, what their files keep, what the store has and what the loyalty
// server has booked is the same to the kopeck.

#include "simulator/ledger/database.h"
#include "simulator/ledger/ledger.h"
#include "store/client/postgresbooks.h"
#include "tests/scenario/store/proofsize.h"
#include "tests/scenario/store/returnsproof.h"
#include "tests/scenario/store/storeshop.h"
#include "tests/scenario/year/dice.h"
#include "tests/scenario/year/journal.h"
#include "tests/scenario/year/shopbooks.h"
#include "tests/scenario/year/shopstory.h"
#include "tests/scenario/year/violation.h"
#include "tests/support/tillsettings.h"
#include "till/checks/cardnumber.h"
#include "till/checks/checkcodec.h"

#include <QDir>
#include <QElapsedTimer>

namespace {

using year::ShopBooks;
using year::Violation;

constexpr int tillsOfShop = 5;
constexpr int cardsOfShop = 60;
constexpr int daysBetweenForgetting = 2;
constexpr int daysBetweenAudits = 5; ///< of everything; the server's balances are looked at daily

int setting(const char* name, int otherwise)
{
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
}

class ShopYear : public StoreShop
{
protected:
    void SetUp() override
    {
        StoreShop::SetUp();
        writeCards();
        quietServer();
        startWorker();
        for (int number = 1; number <= tillsOfShop; ++number) {
            writeTill(number);
        }
        story = std::make_unique<year::ShopStory>(
            dice, journal, tills, books.cards(),
            [this](const till::Check& check, int till) { takeClosed(check, till); });
    }

    /// The shop's own cards beside the built-in ones.
    void writeCards()
    {
        QString rules = readFile(u"strict.toml"_s);
        for (int i = 1; i <= cardsOfShop; ++i) {
            const QString card = u"23%1"_s.arg(i, 11, 10, QLatin1Char('0'));
            const qint64 opening = dice.chance(30) ? 0 : dice.between(0, 2000'00);
            books.open(card, opening);
            rules += u"\n[[card]]\nnumber = \"%1\"\nname = \"Анна\"\nsurname = \"Соколова\"\n"
                     "balance = %2\n"_s.arg(card)
                         .arg(double(opening) / 100, 0, 'f', 2);
        }
        writeFile(u"strict.toml"_s, rules);
    }

    void writeTill(int number)
    {
        const QString name = u"till%1"_s.arg(number);
        ASSERT_TRUE(QDir(folder()).mkdir(name));
        auto settings = tests::TillSettings::numbered(number, address, QStringLiteral(ORVA_PLUGIN));
        settings.store = storeString();
        settings.storeModule = QStringLiteral(ORVA_STORE_MODULE);
        writeFile(name + u"/orva.toml"_s, settings.toml());
        tills.push_back(std::make_unique<year::ShopTill>(path(name), number));
    }

    void takeClosed(const till::Check& check, int till)
    {
        said.take(check, QString::number(till));
        if (!books.take(check, till)) {
            throw Violation(u"check %1 was closed twice"_s.arg(check.id()));
        }
    }

    void liveThrough(int days, int events)
    {
        for (int day = 1; day <= days; ++day) {
            for (const auto& till : tills) {
                till->start();
            }
            for (int i = 0; i < events; ++i) {
                story->event();
            }
            if (day == days) {
                story->ending();
            }
            closeShop();
            requireNothing(balances());
            if (day % daysBetweenForgetting == 0) {
                forgetSomebody();
            }
            if (day == days || day % daysBetweenAudits == 0) {
                requireNothing(differences());
            }
        }
    }

    void closeShop()
    {
        for (const auto& till : tills) {
            till->order(u"wait 60"_s);
            till->awaitSettledReturns();
            till->quit();
        }
        awaitDelivery();
    }

    /// At every till, whatever each of them has of the customer.
    void forgetSomebody()
    {
        const QString card = story->customerToForget();
        if (card.isEmpty()) {
            return;
        }
        story->forget(card);
        for (const auto& till : tills) {
            till->run({u"erase"_s, card});
            const QStringList files = till->filesWith(card.toUtf8());
            if (!files.isEmpty()) {
                throw Violation(
                    u"card %1 was forgotten and is in %2"_s.arg(card, files.join(u", "_s)));
            }
        }
        const QString kept = cluster.sql(
            u"SELECT identifier FROM orva.checks WHERE position('%1'::bytea IN content) "
            "> 0"_s.arg(card));
        if (!kept.isEmpty()) {
            throw Violation(u"card %1 was forgotten and the store has it in %2"_s.arg(card, kept));
        }
        ++forgotten;
    }

    QStringList balances() const
    {
        simulator::Database file(path(u"server.sqlite"_s), simulator::Database::Open::ExistingOnly);
        return year::wrongBalances(books, simulator::Ledger(file).accounts());
    }

    /// What those who keep the books say against what the tills said when they closed the checks.
    QStringList differences() const
    {
        ShopBooks files(u"the tills' files"_s);
        TakenBack fromFiles;
        for (const auto& till : tills) {
            till->forEachClosed([&](const till::Check& check) {
                files.take(check, QString::number(till->number()));
                fromFiles.add(check);
            });
        }
        ShopBooks store(u"the store"_s);
        TakenBack fromStore;
        readStore(store, fromStore);
        QStringList found =
            said.differences(files) + said.differences(store) + serversDifferences();
        const QString held = cluster.sql(
            u"SELECT identifier FROM orva.returns WHERE NOT is_closed AND NOT is_released"_s);
        if (!held.isEmpty()) {
            found.append(u"the store still holds pieces for the returns "_s + held);
        }
        if (fromFiles.lines() != fromStore.lines() || fromFiles.points() != fromStore.points()) {
            found.append(
                u"what was taken back is not the same in the tills' files and the store"_s);
        }
        return found + balances();
    }

    void readStore(ShopBooks& store, TakenBack& returned) const
    {
        orvastore::PostgresBooks connection;
        orvastore::StoreSettings settings;
        settings.database = storeString();
        settings.timeoutSeconds = 60;
        connection.open(settings);
        const auto read =
            connection.forEachCheck(u"1042"_s, {}, [&](const orvastore::KeptCheck& kept) {
                const till::Check check = till::checkcodec::decode(kept.content, kept.identifier);
                store.take(check, kept.till);
                returned.add(check);
                return true;
            });
        if (read.end != orvastore::StoreEnd::Done) {
            throw Violation(u"the store's checks cannot be read"_s);
        }
    }

    /// By the points alone: the server knows of no till and of nothing without a card.
    QStringList serversDifferences() const
    {
        ShopBooks booked(u"the loyalty server"_s);
        simulator::Database file(path(u"server.sqlite"_s), simulator::Database::Open::ExistingOnly);
        for (const simulator::Booking& booking : simulator::Ledger(file).bookings()) {
            booked.take(booking);
        }
        ShopBooks confirmed(u"the tills said"_s);
        for (const tests::Entry& entry : books.all()) {
            confirmed.take(entry);
        }
        return confirmed.differences(booked);
    }

    static void requireNothing(const QStringList& found)
    {
        if (!found.isEmpty()) {
            throw Violation(found.join(u'\n'));
        }
    }

    QString figures(int days, qint64 milliseconds) const
    {
        const year::ShopStory::Counts& count = story->counts();
        const QString goods =
            u"%1 sales, %2 returns, %3 of them at another till and %4 of forgotten customers, %5 "
            "refused for more than was left and %6 opened again behind one on its way to the "
            "store"_s.arg(count.sales)
                .arg(count.returns)
                .arg(count.elsewhere)
                .arg(count.nameless)
                .arg(count.tooMuch)
                .arg(count.again);
        const QString waiting = u"%1 checks left in the store, %2 taken up at another till while a "
                                "third one was refused %3"_s.arg(count.left)
                                    .arg(count.takenUp)
                                    .arg(count.told);
        return u"Shop of %1 tills: seed %2, %3 days, %4; %5; %6 customers forgotten, %7 kills of a "
               "till; %8 checks, the same in the tills' files, the store and the ledger; %9 s"_s
                   .arg(QString::number(tillsOfShop), QString::number(seed), QString::number(days),
                        goods, waiting, QString::number(forgotten), QString::number(count.kills),
                        QString::number(said.size()), QString::number(milliseconds / 1000));
    }

    const quint64 seed = quint64(setting("ORVA_YEAR_SEED", 1));
    year::Dice dice{seed};
    year::Journal journal{nullptr};
    tests::Books books;
    ShopBooks said{u"the tills said"_s};
    year::ShopStory::Tills tills;
    std::unique_ptr<year::ShopStory> story;
    int forgotten = 0;
};

} // namespace

TEST_F(ShopYear, LeavesTheBooksOfFiveTillsTheStoreAndTheServerTheSame)
{
    const int days = setting("ORVA_YEAR_DAYS", 2);
    QElapsedTimer time;
    time.start();
    try {
        liveThrough(days, setting("ORVA_YEAR_EVENTS", 20));
    } catch (const std::exception& error) {
        FAIL() << "with seed " << seed << ": " << error.what() << "\nThe journal up to it:\n"
               << qPrintable(journal.lastLines().join(u'\n'));
    }
    const year::ShopStory::Counts& count = story->counts();
    EXPECT_GT(count.elsewhere, 0);
    EXPECT_GT(count.takenUp, 0);
    EXPECT_EQ(count.told, count.takenUp);
    EXPECT_GT(forgotten, 0);
    printFigure(figures(days, time.elapsed()));
}

TEST_F(ShopYear, FindsACheckThatTheStoreForgotAndAKopeckThatNobodyTook)
{
    try {
        liveThrough(1, 6);
    } catch (const std::exception& error) {
        FAIL() << error.what();
    }
    ASSERT_EQ(differences(), QStringList());

    const QString check = cluster.sql(u"SELECT max(identifier) FROM orva.checks"_s);
    cluster.sql(u"CREATE TABLE kept AS SELECT * FROM orva.checks WHERE identifier = '%1'; "
                "DELETE FROM orva.checks WHERE identifier = '%1'"_s.arg(check));
    const QString inStore = differences().join(u'\n');
    EXPECT_TRUE(inStore.contains(u"check %1: the tills said: card"_s.arg(check)) &&
                inStore.contains(u"the store: nothing"_s))
        << qPrintable(inStore);
    cluster.sql(u"INSERT INTO orva.checks SELECT * FROM kept"_s);
    ASSERT_EQ(differences(), QStringList());

    simulator::Database server(path(u"server.sqlite"_s), simulator::Database::Open::ExistingOnly);
    server.execute(u"UPDATE ledger SET earned = earned + 1 WHERE sequence = 1"_s);
    const QStringList atServer = differences();
    ASSERT_EQ(atServer.size(), 2);
    EXPECT_TRUE(atServer.first().contains(u"; the loyalty server: card"_s))
        << qPrintable(atServer.first());
    EXPECT_TRUE(atServer.last().contains(u"by the tills' closed checks it must hold"_s))
        << qPrintable(atServer.last());
}
