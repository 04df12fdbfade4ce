// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "ourqueue.h"

#include "host/database/transaction.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"
#include "tests/support/fakeserver.h"

using namespace Qt::StringLiterals;

namespace tests {

// Whatever is stored shows in what is sent: a copy of the file is delivered to a server that takes
// everything.
QList<contract::StoredMessage> OurQueue::stored()
{
    const QString copyFile = folder.write(QStringLiteral("copy%1.db").arg(++copies), {});
    poshost::Database(file).execute(u"VACUUM INTO '%1'"_s.arg(copyFile));
    poshost::Database copied(copyFile);
    const QList<poshost::QueueEntry> entries = poshost::OutgoingQueue(copied).list();
    FakeServer server;
    poshost::QueueDelivery(copied).deliverDue();
    QList<contract::StoredMessage> found;
    auto request = server.requests.cbegin();
    for (const poshost::QueueEntry& entry : entries) {
        contract::StoredMessage message{entry.queue, {}, {}, {}, entry.extra};
        for (int step = 0; step < entry.steps; ++step, ++request) {
            message.payload = QString::fromUtf8(request->body);
            for (const auto& [name, value] : request->headers.asKeyValueRange()) {
                message.headers.insert(name, value);
            }
            message.addresses.append(request->url.toString(QUrl::FullyEncoded));
        }
        found.append(message);
    }
    return found;
}

void OurQueue::inTransaction(const std::function<void()>& work)
{
    poshost::Transaction transaction(*database);
    work();
    transaction.commit();
}

void OurQueue::inAbandonedTransaction(const std::function<void()>& work)
{
    const poshost::Transaction transaction(*database);
    work();
}

void OurQueue::breakStorage()
{
    database->execute(u"PRAGMA query_only = ON"_s);
}

} // namespace tests
