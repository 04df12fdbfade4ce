// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/drainscene.h"

#include "bench/checkdata.h"
#include "client/interface.h"
#include "host/database/transaction.h"
#include "host/queue/outgoingqueue.h"

using namespace Qt::StringLiterals;

namespace bench {

namespace {

/// Checks have few lines where queues have many messages.
constexpr int linesOfCheck = 3;

} // namespace

QVariantMap confirmationFor(const QString& serverUrl)
{
    orva::Interface client;
    client.setUrl(serverUrl);
    client.setAuthData(u"till"_s, u"secret"_s, u"key"_s);
    const auto card = makeCard();
    const auto sale = makeSale(linesOfCheck, card);
    client.setLastResponse(parsedAnswer(linesOfCheck));
    return client.getSaleRequest(sale, card);
}

void fillQueue(poshost::Database& database, const QVariantMap& message, int messages, int cards)
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

DrainScene::DrainScene()
    : server("<ok/>"), workplace(server.url()), message(confirmationFor(server.url())),
      body(message.value(u"payload"_s).toString().toUtf8()),
      database(workplace.file(u"till.sqlite"_s)), delivery(database),
      bare(workplace.file(u"bare.sqlite"_s)), curl(server.url() + u"api/1.x/paymenttry"_s)
{}

void DrainScene::fill(int messages)
{
    fillQueue(database, message, messages);
    row = bare.insert(body);
}

bool DrainScene::drain(int messages)
{
    const poshost::DeliveryReport result = delivery.deliverDue();
    return result.requests == postsOfMessage * messages && result.delivered == messages;
}

void DrainScene::post(int messages)
{
    for (int number = 0; number < postsOfMessage * messages; ++number) {
        curl.post(body);
        bare.markSent(row);
    }
}

} // namespace bench
