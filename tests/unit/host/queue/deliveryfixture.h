// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/queue/deliverypolicy.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"
#include "host/services/dbqueuebroker.h"
#include "queued.h"
#include "tests/support/configured.h"
#include "tests/support/fakeserver.h"
#include "tests/support/stoppedclock.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using Reply = FakeServer::Reply;
using Request = FakeServer::Request;

inline constexpr qint64 second = 1000;
inline constexpr qint64 minute = 60 * second;
inline constexpr qint64 hour = 60 * minute;

inline constexpr auto done = poshost::QueueState::Delivered;
inline constexpr auto waits = poshost::QueueState::Waiting;
inline constexpr auto paused = poshost::QueueState::Paused;
inline constexpr auto parked = poshost::QueueState::Parked;

/// A queue of a database of its own, a server that answers as it is told and a stopped clock.
class Delivery : public ::testing::Test
{
protected:
    /// Queues a message named by a letter, posted to the steps 1 and 2.
    qint64 add(const QString& name, const QString& authorization = u"Basic one"_s,
               const QStringList& steps = {u"1"_s, u"2"_s}, const QString& queueName = u"orva"_s)
    {
        broker.addToQueue(queueName, queuedMessage(name, authorization, steps), {});
        return queue.lastAddedId();
    }

    poshost::QueueEntry entry(qint64 id) { return queue.show(id)->entry; }
    poshost::QueueState stateOf(qint64 id) { return entry(id).state; }

    /// Delivers what is due and returns the requests made for it: "name1 name2" and so on.
    std::string deliver()
    {
        const qsizetype before = server.requests.size();
        lastReport = delivery.deliverDue();
        QStringList sent;
        for (const Request& request : server.requests.mid(before)) {
            sent.append(QString::fromUtf8(request.body) +
                        request.url.path().mid(static_cast<int>(qstrlen("/step"))));
        }
        EXPECT_EQ(lastReport.requests, sent.size());
        return sent.join(u' ').toStdString();
    }

    /// Goes from wait to wait and delivers.
    std::string deliverThrough(int count)
    {
        std::string sent;
        for (int i = 0; i < count && lastReport.nextAttempt.isValid(); ++i) {
            clock.advanceTo(lastReport.nextAttempt);
            sent += deliver() + ";";
        }
        return sent;
    }

    /// Answers by the name of the message; others get 200.
    void answerTo(const QString& name, const Reply& reply)
    {
        server.setScript([name, reply](const Request& request) {
            return request.body == name.toUtf8() ? reply : Reply();
        });
    }

    qint64 waitInMilliseconds() const { return clock.now().msecsTo(lastReport.nextAttempt); }

    TestFolder folder;
    StoppedClock clock;
    FakeServer server;
    const QSharedPointer<poshost::Database> database =
        QSharedPointer<poshost::Database>::create(folder.file(u"till.db"_s), 50);
    DBQueueBroker broker{database};
    poshost::OutgoingQueue queue{*database};
    poshost::QueueDelivery delivery{*database, 1};
    poshost::DeliveryReport lastReport;
};
