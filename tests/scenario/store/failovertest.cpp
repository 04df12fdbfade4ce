// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The primary is killed under load and its standby promoted. A control shows that the test would
// see a loss: without synchronous commits there is one.

#include "tests/scenario/store/ledgerserver.h"
#include "tests/scenario/store/proofsize.h"
#include "tests/scenario/store/workerprocess.h"
#include "tests/unit/store/storefixture.h"

#include <QSet>
#include <QThread>

#include <thread>

using namespace Qt::StringLiterals;
using orvastore::StoreEnd;
using storetest::settingsFor;

namespace {

/// Tills that hand over until they are told to end, and note what was acknowledged.
class Tills
{
public:
    Tills(const QString& database, const QString& server, int count)
    {
        for (int till = 0; till < count; ++till) {
            threads.emplace_back([this, database, server, till] { work(database, server, till); });
        }
    }
    ~Tills() { end(); }
    Tills(const Tills&) = delete;
    Tills& operator=(const Tills&) = delete;

    /// @return what was acknowledged
    QSet<QString> end()
    {
        ending = true;
        for (std::thread& thread : threads) {
            thread.join();
        }
        threads.clear();
        return acknowledged;
    }

private:
    void work(const QString& database, const QString& server, int till)
    {
        orvastore::PostgresStore store;
        store.open(settingsFor(database, 2));
        for (int n = 0; !ending; ++n) {
            orvastore::HandedCheck check =
                storetest::checkOf(u"t%1c%2"_s.arg(till).arg(n), u"card %1"_s.arg(n % 7));
            check.messages.first().urls = R"({"0":")" + server.toUtf8() + R"("})";
            while (!ending && store.handOver({check}).first().end != StoreEnd::Done) {
                QThread::msleep(50);
            }
            if (!ending) {
                const std::lock_guard guard(mutex);
                acknowledged.insert(check.identifier);
            }
        }
    }

    std::vector<std::thread> threads;
    std::atomic<bool> ending = false;
    std::mutex mutex;
    QSet<QString> acknowledged;
};

QSet<QString> linesOf(const QString& text)
{
    const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    return {lines.begin(), lines.end()};
}

struct Outcome
{
    qsizetype acknowledged = 0;
    qsizetype missing = 0;
    qsizetype notBooked = 0;
    qsizetype doubled = 0;
};

class Failover : public ::testing::Test
{
protected:
    /// @param isSynchronous whether commits wait for the standby
    /// @param deafSeconds how long before the kill the standby hears nothing any more
    Outcome round(bool isSynchronous, double deafSeconds)
    {
        PostgresCluster primary;
        orvastore::Connection owner(settingsFor(primary.connection()), {});
        orvastore::storeschema::migrate(owner);
        owner.close();
        const std::unique_ptr<PostgresCluster> standby = primary.makeStandby(u"second"_s);
        if (isSynchronous) {
            primary.set(u"synchronous_standby_names"_s, u"second"_s);
        }
        EXPECT_TRUE(primary.waitFor(
            u"SELECT count(*) FROM pg_stat_replication WHERE sync_state = '%1'"_s.arg(
                isSynchronous ? u"sync"_s : u"async"_s),
            u"1"_s));
        const TestFolder folder;
        LedgerServer server;
        const QString both = primary.connectionBefore(*standby);
        Tills tills(both, server.address(), 4);
        std::unique_ptr<WorkerProcess> first;
        std::unique_ptr<WorkerProcess> second;
        if (deafSeconds == 0) {
            first = std::make_unique<WorkerProcess>(folder, u"w1"_s, both);
            second = std::make_unique<WorkerProcess>(folder, u"w2"_s, both);
        }
        QThread::msleep(2000);
        if (deafSeconds > 0) {
            standby->freeze();
            QThread::msleep(static_cast<unsigned long>(deafSeconds * 1000));
        }
        QSet<QString> acknowledged;
        if (deafSeconds > 0) {
            // nobody is left to repeat what was acknowledged
            primary.kill();
            acknowledged = tills.end();
            // what lies unread in its socket goes with its machine
            standby->kill();
            standby->start();
            standby->promote();
        } else {
            primary.kill();
            standby->promote();
            QThread::msleep(2000); // tills and workers find the other one by themselves
            acknowledged = tills.end();
            EXPECT_TRUE(
                standby->waitFor(u"SELECT coalesce(sum(waiting), 0) FROM orva.lanes"_s, u"0"_s));
        }
        return examine(*standby, server, acknowledged, deafSeconds == 0);
    }

    static Outcome examine(const PostgresCluster& kept, const LedgerServer& server,
                           const QSet<QString>& acknowledged, bool isDelivered)
    {
        Outcome outcome;
        outcome.acknowledged = acknowledged.size();
        const QSet<QString> stored = linesOf(kept.sql(u"SELECT identifier FROM orva.checks"_s));
        outcome.missing = (acknowledged - stored).size();
        QSet<QByteArray> booked;
        for (const QByteArray& body : server.booked()) {
            outcome.doubled += booked.contains(body) ? 1 : 0;
            booked.insert(body);
        }
        outcome.doubled +=
            kept.sql(u"SELECT count(*) - count(DISTINCT identifier) FROM orva.messages"_s)
                .toLongLong();
        for (const QString& identifier : acknowledged) {
            const bool isBooked = booked.contains("<check>" + identifier.toUtf8() + "</check>");
            outcome.notBooked += !isDelivered || isBooked ? 0 : 1;
        }
        outcome.doubled += kept.sql(u"SELECT count(*) FROM orva.parked"_s).toLongLong();
        return outcome;
    }
};

} // namespace

TEST_F(Failover, losesAndDoublesNothingThatWasAcknowledged)
{
    const int rounds = sized(3, 1);
    for (int i = 1; i <= rounds; ++i) {
        const Outcome outcome = round(true, 0);
        printFigure(u"failover %1 of %2: %3 checks acknowledged, %4 missing, %5 not booked, "
                    "%6 doubled"_s.arg(i)
                        .arg(rounds)
                        .arg(outcome.acknowledged)
                        .arg(outcome.missing)
                        .arg(outcome.notBooked)
                        .arg(outcome.doubled));
        EXPECT_GT(outcome.acknowledged, 20);
        EXPECT_EQ(outcome.missing, 0);
        EXPECT_EQ(outcome.notBooked, 0);
        EXPECT_EQ(outcome.doubled, 0);
    }
}

TEST_F(Failover, theControlLosesWhatNoStandbyHasConfirmed)
{
    const Outcome loose = round(false, 1.5);
    const Outcome strict = round(true, 1.5);
    printFigure(u"control: asynchronous %1 of %2 missing, synchronous %3 of %4"_s.arg(loose.missing)
                    .arg(loose.acknowledged)
                    .arg(strict.missing)
                    .arg(strict.acknowledged));
    EXPECT_GT(loose.missing, 0) << "a test that cannot see a loss proves nothing";
    EXPECT_EQ(strict.missing, 0);
    EXPECT_GT(strict.acknowledged, 0);
}
