// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// How many connections many pre-checks open: one for each thread, over TCP and over TLS.

#include "bench/checkdata.h"
#include "bench/loopbackserver.h"
#include "bench/openorva.h"
#include "bench/rows.h"
#include "bench/suites.h"
#include "bench/workplace.h"
#include "tests/support/tlsserver.h"

#include <QTemporaryDir>

#include <barrier>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int prechecksOfThread = 100;
constexpr int linesOfCheck = 3;

/// A session for each thread.
class ThreadSession : public Session
{
public:
    QSharedPointer<AbstractDocument> getDocument() override { return document; }

    static thread_local QSharedPointer<AbstractDocument> document;
};

thread_local QSharedPointer<AbstractDocument> ThreadSession::document;

/// @return how many of the pre-checks succeeded
int precheckOften(std::barrier<>& together)
{
    OpenOrva orva;
    orva.init();
    const auto sale = makeSale(linesOfCheck, makeCard());
    ThreadSession::document = sale;
    int succeeded = 0;
    for (int i = 0; i < prechecksOfThread; ++i) {
        together.arrive_and_wait(); // all are under way at the same time
        succeeded += orva.request(sale) ? 1 : 0;
    }
    ThreadSession::document.reset();
    return succeeded;
}

/// @return whether all pre-checks of all threads succeeded
bool precheckIn(int threads)
{
    ThreadSession session;
    Session* const before = Singleton<Session>::instance;
    Singleton<Session>::instance = &session;
    std::barrier together(threads);
    std::vector<int> succeeded(static_cast<size_t>(threads));
    std::vector<std::thread> workers;
    for (int& count : succeeded) {
        workers.emplace_back([&] { count = precheckOften(together); });
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    Singleton<Session>::instance = before;
    return succeeded == std::vector<int>(static_cast<size_t>(threads), prechecksOfThread);
}

void reportCounts(benchmark::State& state, int threads, int requests, int connections)
{
    if (requests != threads * prechecksOfThread) {
        state.SkipWithError("the server was not asked once for each pre-check");
    }
    report(state, threads, connections, static_cast<double>(connections) / threads,
           {.value = 1, .isTime = false});
}

void countConnections(benchmark::State& state, int threads)
{
    for ([[maybe_unused]] const auto turn : state) {
        const LoopbackServer server(makeAnswer(linesOfCheck));
        const Workplace workplace(server.url());
        if (!precheckIn(threads)) {
            state.SkipWithError("a pre-check failed");
            return;
        }
        reportCounts(state, threads, server.requests(), server.connections());
        state.SetIterationTime(1);
    }
}

/// Each of the server's connections is a handshake.
void countHandshakes(benchmark::State& state, int threads)
{
    for ([[maybe_unused]] const auto turn : state) {
        const QTemporaryDir folder;
        const TlsServer server(folder.path() + u'/', u"localhost"_s, makeAnswer(linesOfCheck));
        const Workplace workplace(server.url(u"localhost"_s).resolved(QUrl(u"/"_s)).toString(),
                                  server.authorityFile());
        if (!precheckIn(threads)) {
            state.SkipWithError("a pre-check failed");
            return;
        }
        reportCounts(state, threads, server.requests(), server.peers());
        state.SetIterationTime(1);
    }
}

} // namespace

void addConnectionRows()
{
    for (const int threads : {1, 2}) {
        const std::string name = std::to_string(threads * prechecksOfThread) + " pre-checks of " +
                                 std::to_string(threads) + (threads > 1 ? " threads" : " thread");
        addRow("connections, " + name, 1, [threads](benchmark::State& state) {
            countConnections(state, threads);
        })->Repetitions(3);
        addRow("TLS handshakes, " + name, 1, [threads](benchmark::State& state) {
            countHandshakes(state, threads);
        })->Repetitions(3);
    }
}

} // namespace bench
