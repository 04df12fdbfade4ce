// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Tills as processes that hand over to a store on a real PostgreSQL server.

#include "tests/scenario/store/proofsize.h"
#include "tests/scenario/store/storeshop.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <algorithm>

namespace {

class TillAtStore : public StoreShop
{
protected:
    /// The times that closing takes, in milliseconds, in ascending order.
    QList<qint64> closingTimes(int checks)
    {
        QList<qint64> times;
        const auto till = startTill();
        for (int i = 0; i < checks; ++i) {
            expectOk(till->command(u"open sale.toml"_s));
            QElapsedTimer time;
            time.start();
            expectOk(till->command(u"close"_s));
            times.append(time.elapsed());
        }
        std::sort(times.begin(), times.end());
        till->kill(); // what the end waits for is another matter
        till->waitForEnd();
        return times;
    }

    /// @param says what the till has to say about the store
    void expectNothingLost(const QString& says)
    {
        const RunResult run = till({u"queue"_s, u"deliver"_s});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_TRUE(run.output.contains(says)) << qPrintable(run.output);
        EXPECT_EQ(undelivered(), 1);
    }
};

TEST_F(TillAtStore, HandsOverAndSendsNothingItself)
{
    done({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"30"_s});
    done({u"return"_s, u"return.toml"_s, u"--wait"_s, u"30"_s});
    EXPECT_EQ(undelivered(), 0);
    EXPECT_EQ(stored(u"checks"_s), u"2"_s);
    EXPECT_EQ(stored(u"messages"_s), u"2"_s);
    EXPECT_EQ(serverBooks().count(u'\n'), 1) << "the till has sent a confirmation itself";
    const QJsonArray all = list({u"queue"_s, u"list"_s, u"--all"_s});
    ASSERT_EQ(all.size(), 2);
    EXPECT_TRUE(all.first().toObject().value(u"handedOver"_s).toBool());
}

TEST_F(TillAtStore, SellsOnWhileTheStoreIsAwayAndHandsOverLater)
{
    cluster.kill();
    sellMany(5);
    EXPECT_EQ(undelivered(), 5);
    cluster.start();
    done({u"queue"_s, u"deliver"_s});
    EXPECT_EQ(stored(u"checks"_s), u"5"_s);
    EXPECT_EQ(undelivered(), 0);
}

TEST_F(TillAtStore, NeverLetsASaleWaitForAStoreThatHangs)
{
    constexpr int checks = 21;
    writeConfig();
    const QList<qint64> without = closingTimes(checks);
    writeStoreConfig(storeString(), u"timeout = 20\n"_s);
    cluster.freeze();
    const QList<qint64> hanging = closingTimes(checks);
    cluster.thaw();
    const qint64 cost = hanging.at(checks / 2) - without.at(checks / 2);
    printFigure(u"closing a check: %1 ms without a store, %2 ms with one that hangs (median); %3 "
                "and %4 ms at most"_s.arg(without.at(checks / 2))
                    .arg(hanging.at(checks / 2))
                    .arg(without.last())
                    .arg(hanging.last()));
    EXPECT_LE(cost, 50);
    EXPECT_LT(hanging.last(), 5000) << "a closing waited for the store's time-out";
}

TEST_F(TillAtStore, EndsSoonWhileTheStoreHangs)
{
    writeStoreConfig(storeString(), u"timeout = 60\n"_s);
    cluster.freeze();
    const auto till = startTill();
    expectOk(till->command(u"open sale.toml"_s));
    expectOk(till->command(u"close"_s));
    QElapsedTimer time;
    time.start();
    till->send(u"quit"_s);
    EXPECT_EQ(till->waitForEnd(), 0);
    EXPECT_LT(time.elapsed(), 10'000);
    cluster.thaw();
    done({u"queue"_s, u"deliver"_s});
    EXPECT_EQ(stored(u"checks"_s), u"1"_s);
}

TEST_F(TillAtStore, SaysWhatIsWrongWithTheStoreAndLosesNothing)
{
    cluster.kill();
    sellMany(1);
    cluster.start();
    writeStoreConfig(cluster.connection(u"nobody"_s));
    expectNothingLost(u"nobody"_s);
    cluster.set(u"default_transaction_read_only"_s, u"on"_s);
    writeStoreConfig(storeString());
    expectNothingLost(QString::number(cluster.port()));
    cluster.set(u"default_transaction_read_only"_s, u"off"_s);
    cluster.sql(u"DROP SCHEMA orva CASCADE"_s);
    expectNothingLost(u"orva-store"_s);
    EXPECT_EQ(serverBooks().count(u'\n'), 1);
}

TEST_F(TillAtStore, TheDoctorKnocksAtTheStore)
{
    const auto line = [this] { return doctorLine(u"store"_s); };
    EXPECT_EQ(line(), u"ok: takes checks"_s);
    cluster.freeze();
    EXPECT_TRUE(line().startsWith(u"warning: "_s)) << qPrintable(line());
    cluster.thaw();
    cluster.sql(u"DROP SCHEMA orva CASCADE"_s);
    EXPECT_TRUE(line().contains(u"orva-store"_s)) << qPrintable(line());
    writeStoreConfig(storeString() + u" password=x"_s);
    EXPECT_TRUE(line().startsWith(u"fails: "_s) && line().contains(u"passwordFile"_s))
        << qPrintable(line());
    writeConfig();
    EXPECT_TRUE(line().startsWith(u"none in {"_s)) << qPrintable(line());
}

TEST_F(TillAtStore, IsMovedToAStoreAndBackWithAFullQueue)
{
    writeConfig();
    stopServer();
    cluster.kill();
    startServer();
    const auto till = startTill();
    expectOk(till->command(u"open sale.toml"_s));
    expectOk(till->command(u"points 50"_s));
    stopServer();
    expectOk(till->command(u"close"_s));
    till->send(u"quit"_s);
    EXPECT_EQ(till->waitForEnd(), 0);
    EXPECT_EQ(undelivered(), 1);

    cluster.start();
    writeStoreConfig(storeString());
    done({u"queue"_s, u"deliver"_s});
    EXPECT_EQ(stored(u"checks"_s), u"1"_s);

    startServer();
    writeConfig();
    done({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"30"_s});
    EXPECT_EQ(stored(u"checks"_s), u"1"_s);
    EXPECT_EQ(serverBooks().count(u'\n'), 2) << "only the later check is the till's to deliver";
}

TEST_F(TillAtStore, TakesNoPasswordFromTheConnectionString)
{
    writeStoreConfig(storeString() + u" password=geheim"_s);
    const RunResult run = till({u"queue"_s, u"list"_s});
    EXPECT_TRUE(run.output.contains(u"passwordFile"_s)) << qPrintable(run.output);
    EXPECT_FALSE(run.output.contains(u"geheim"_s)) << qPrintable(run.output);
}

} // namespace
