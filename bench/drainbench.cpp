// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// How fast the queue drains.

#include "bench/drainscene.h"
#include "bench/rows.h"
#include "bench/suites.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

/// A confirmation is posted to two addresses; the bare loop posts as often.
void measureDrain(benchmark::State& state, int messages)
{
    DrainScene scene;
    double floorSum = 0;
    double subjectSum = 0;
    for ([[maybe_unused]] const auto turn : state) {
        scene.fill(messages);
        bool isDrained = false;
        const double time = seconds(Clock::Wall, [&] { isDrained = scene.drain(messages); });
        if (!isDrained) {
            state.SkipWithError("the queue was not drained");
            return;
        }
        subjectSum += time;
        state.SetIterationTime(time);
        floorSum += seconds(Clock::Wall, [&] { scene.post(messages); });
    }
    const auto all =
        static_cast<double>(state.iterations() * DrainScene::postsOfMessage * messages);
    report(state, floorSum / all, subjectSum / all, floorSum / subjectSum, {0.8, true});
}

/// How much sooner a queue is empty over several connections, where the server is waited for.
void measureConnections(benchmark::State& state)
{
    constexpr int messages = 2000;
    constexpr int cards = 500;
    LoopbackServer server("<ok/>", std::chrono::milliseconds(20));
    const Workplace one(server.url());
    const QVariantMap message = confirmationFor(server.url());
    const auto drain = [&](const Workplace& workplace) {
        poshost::Database database(workplace.file(u"till.sqlite"_s));
        poshost::QueueDelivery delivery(database);
        fillQueue(database, message, messages, cards);
        int delivered = 0;
        const double time =
            seconds(Clock::Wall, [&] { delivered = delivery.deliverDue().delivered; });
        return delivered == messages ? time : 0;
    };
    for ([[maybe_unused]] const auto turn : state) {
        const double alone = drain(one);
        const Workplace four(server.url(), {}, "[queue]\nconnections = 4\n");
        const double together = drain(four);
        if (alone == 0 || together == 0) {
            state.SkipWithError("the queue was not drained");
            return;
        }
        state.SetIterationTime(together);
        report(state, alone, together, alone / together, {3.5, true});
    }
}

} // namespace

void addDrainRows()
{
    // it waits for the server for a minute and a half each time; waits hardly differ
    addRow("drain/parallel", 1, measureConnections)->Repetitions(2);
    addRow("drain/10000", 1, [](benchmark::State& state) { measureDrain(state, 10'000); });
}

} // namespace bench
