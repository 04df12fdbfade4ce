// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// How fast the queue drains.

#include "bench/barecurl.h"
#include "bench/baredatabase.h"
#include "bench/checkdata.h"
#include "bench/loopbackserver.h"
#include "bench/rows.h"
#include "bench/suites.h"
#include "bench/workplace.h"
#include "client/interface.h"
#include "host/database/database.h"
#include "host/database/transaction.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

/// Checks have few lines where queues have many messages.
constexpr int linesOfCheck = 3;

QVariantMap makeMessage(const QString& serverUrl)
{
    orva::Interface client;
    client.setUrl(serverUrl);
    client.setAuthData(u"till"_s, u"secret"_s, u"key"_s);
    const auto card = makeCard();
    const auto sale = makeSale(linesOfCheck, card);
    client.setLastResponse(parsedAnswer(linesOfCheck));
    return client.getSaleRequest(sale, card);
}

/// @param cards whose messages come in turns
void fill(poshost::Database& database, const QVariantMap& message, int messages, int cards = 1)
{
    DBQueueBroker broker(QSharedPointer<poshost::Database>(&database, [](poshost::Database*) {}));
    poshost::Transaction transaction(database);
    for (int number = 0; number < messages; ++number) {
        broker.addToQueue(u"orva"_s, message, QString());
        if (cards > 1) {
            poshost::OutgoingQueue queue(database);
            queue.putIntoLane(queue.lastAddedId(), QString::number(number % cards));
        }
    }
    transaction.commit();
    // a queue that was filled check by check has long been carried over from the log to the file
    database.execute(u"PRAGMA wal_checkpoint(RESTART)"_s);
}

/// A confirmation is posted to two addresses; the bare loop posts as often.
void measureDrain(benchmark::State& state, int messages)
{
    LoopbackServer server("<ok/>");
    const Workplace workplace(server.url());
    const QVariantMap message = makeMessage(server.url());
    const QByteArray body = message.value(u"payload"_s).toString().toUtf8();
    poshost::Database database(workplace.file(u"till.sqlite"_s));
    poshost::QueueDelivery delivery(database);
    BareDatabase bare(workplace.file(u"bare.sqlite"_s));
    BareCurl curl(server.url() + u"api/1.x/paymenttry"_s);
    const int posts = 2 * messages;
    double floorSum = 0;
    double subjectSum = 0;
    for ([[maybe_unused]] const auto turn : state) {
        fill(database, message, messages);
        poshost::DeliveryReport result;
        const double time = seconds(Clock::Wall, [&] { result = delivery.deliverDue(); });
        if (result.requests != posts || result.delivered != messages) {
            state.SkipWithError("the queue was not drained");
            return;
        }
        subjectSum += time;
        state.SetIterationTime(time);
        const sqlite3_int64 row = bare.insert(body);
        floorSum += seconds(Clock::Wall, [&] {
            for (int number = 0; number < posts; ++number) {
                curl.post(body);
                bare.markSent(row);
            }
        });
    }
    const auto all = static_cast<double>(state.iterations() * posts);
    report(state, floorSum / all, subjectSum / all, floorSum / subjectSum, {0.8, true});
}

/// How much sooner a queue is empty over several connections, where the server is waited for.
void measureConnections(benchmark::State& state)
{
    constexpr int messages = 2000;
    constexpr int cards = 500;
    LoopbackServer server("<ok/>", std::chrono::milliseconds(20));
    const Workplace one(server.url());
    const QVariantMap message = makeMessage(server.url());
    const auto drain = [&](const Workplace& workplace) {
        poshost::Database database(workplace.file(u"till.sqlite"_s));
        poshost::QueueDelivery delivery(database);
        fill(database, message, messages, cards);
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
