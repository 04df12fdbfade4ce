// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "bench/barecurl.h"
#include "bench/baredatabase.h"
#include "bench/loopbackserver.h"
#include "bench/workplace.h"
#include "host/database/database.h"
#include "host/queue/queuedelivery.h"

#include <QVariantMap>

namespace bench {

/// A confirmation of a short check for that server, as the plug-in queues it; it is posted to two
/// addresses.
QVariantMap confirmationFor(const QString& serverUrl);

/// Queues as many of these.
/// @param cards whose messages come in turns
void fillQueue(poshost::Database& database, const QVariantMap& message, int messages,
               int cards = 1);

/// A queue of confirmations that is emptied over one connection, and the floor of that.
class DrainScene
{
public:
    static constexpr int postsOfMessage = 2;

    DrainScene();

    void fill(int messages);
    /// The subject. @return whether all of them were delivered
    bool drain(int messages);
    /// The floor: as many posts, and a durable mark for each.
    void post(int messages);

private:
    LoopbackServer server;
    Workplace workplace;
    QVariantMap message;
    QByteArray body;
    poshost::Database database;
    poshost::QueueDelivery delivery;
    BareDatabase bare;
    BareCurl curl;
    sqlite3_int64 row = 0;
};

} // namespace bench
