// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// How near workers come to what the loyalty server allows. Counted at that server, between two
// moments at which all of them are at work.

#include "host/services/restclient.h"
#include "store/worker/worker.h"
#include "tests/scenario/store/filledstore.h"
#include "tests/scenario/store/ledgerserver.h"
#include "tests/scenario/store/proofsize.h"
#include "tests/unit/store/storefixture.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <algorithm>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace filledstore;
using orvastore::Connection;
using orvastore::Value;
using orvastore::Worker;

namespace {

constexpr int answerMilliseconds = 20;
constexpr int warmRequestsEach = 20;

/// Processor time of a process, in milliseconds.
double processorTimeOf(const QString& process)
{
    QFile file(u"/proc/%1/stat"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    // behind the name, which is in brackets
    const QList<QByteArray> fields = file.readAll().split(')').last().split(' ');
    constexpr int user = 12;
    constexpr int system = 13;
    return (fields.value(user).toDouble() + fields.value(system).toDouble()) * 1000 /
           static_cast<double>(::sysconf(_SC_CLK_TCK));
}

double processorTimeOfPostgres()
{
    double sum = 0;
    const QStringList processes =
        storetest::sharedCluster().sql(u"SELECT pid FROM pg_stat_activity"_s).split(u'\n');
    for (const QString& process : processes) {
        sum += processorTimeOf(process);
    }
    return sum;
}

/// What came to the server between two moments at which all are at work.
struct Rate
{
    double perSecond = 0;
    double ownMilliseconds = 0;      ///< processor time of a request here: workers and server
    double postgresMilliseconds = 0; ///< the same at the database
};

Rate rateOf(const LedgerServer& server, int hands)
{
    const int before = server.requests();
    while (server.requests() < before + warmRequestsEach * hands) {
        QThread::msleep(5);
    }
    const double own = processorTimeOf(u"self"_s);
    const double postgres = processorTimeOfPostgres();
    const int start = server.requests();
    QElapsedTimer timer;
    timer.start();
    QThread::msleep(static_cast<unsigned long>(sized(5000, 1500)));
    const int counted = server.requests() - start;
    const auto taken = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    return {counted / taken, (processorTimeOf(u"self"_s) - own) / counted,
            (processorTimeOfPostgres() - postgres) / counted};
}

/// What the server gets of posts one after another.
/// @param database where a row is committed before each, with nothing else to it; empty: nowhere
Rate rateOfPosts(const LedgerServer& server, int hands, const QString& database = {})
{
    static std::atomic<int> number = 0;
    std::atomic<bool> stopping = false;
    std::vector<std::thread> threads;
    for (int i = 0; i < hands; ++i) {
        threads.emplace_back([&] {
            Connection own(storetest::settingsFor(connectionTo(database), 60), {});
            while (!stopping) {
                const int mine = ++number;
                if (!database.isEmpty()) {
                    own.run("INSERT INTO public.bare VALUES ($1::int)", {Value::number(mine)});
                }
                RestClient client;
                client.post(QUrl(server.address()),
                            "post " + QByteArray::number(mine).rightJustified(messageBytes), {});
            }
        });
    }
    const Rate rate = rateOf(server, hands);
    stopping = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    return rate;
}

Rate rateOfWorkers(const LedgerServer& server, const QString& database, int hands)
{
    std::vector<std::unique_ptr<Worker>> workers;
    std::vector<std::thread> threads;
    for (int i = 0; i < hands; ++i) {
        Worker::Manner manner;
        manner.name = QString::number(i);
        workers.push_back(std::make_unique<Worker>(storetest::settingsFor(connectionTo(database)),
                                                   manner, Worker::Complaint()));
        threads.emplace_back([worker = workers.back().get()] { worker->run(); });
    }
    const Rate rate = rateOf(server, hands);
    for (const std::unique_ptr<Worker>& worker : workers) {
        worker->stop();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return rate;
}

} // namespace

TEST(StoreWorkers, theyAddUp)
{
    LedgerServer server;
    server.setDelay(answerMilliseconds);
    QStringList shown;
    for (const int hands : {1, 2, 4, 8}) {
        const double possible = hands * 1000.0 / answerMilliseconds;
        double best = 0;
        for (int turn = 0; turn < sized(3, 1); ++turn) {
            const int messages = hands * sized(1000, 400);
            const QString database = filled(messages, messages / 5, server.address().toUtf8());
            storetest::sharedCluster().sql(u"CREATE TABLE bare (id int)"_s, database);
            const Rate posts = rateOfPosts(server, hands);
            const Rate commits = rateOfPosts(server, hands, database);
            const Rate workers = rateOfWorkers(server, database, hands);
            best = std::max(best, workers.perSecond / possible);
            shown.append(
                u"%1: %2 (posts alone %3, with a bare commit each %4; processor time of a "
                "request %5 + %6 ms)"_s.arg(hands)
                    .arg(rounded(workers.perSecond / possible), rounded(posts.perSecond / possible),
                         rounded(commits.perSecond / possible), rounded(workers.ownMilliseconds),
                         rounded(workers.postgresMilliseconds)));
        }
        // in the short form one measurement of a second and a half says little on a busy machine
        EXPECT_TRUE(best >= 0.9 || isShortProof()) << hands << " workers: " << best;
    }
    EXPECT_EQ(server.repeated(), 0);
    printFigure(
        u"requests a second of workers / 20 ms: %1 (at least 0.9)"_s.arg(shown.join(u", "_s)));
}
