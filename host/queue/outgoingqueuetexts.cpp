// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Other texts for messages that are done.

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuemessage.h"

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

QList<qint64> deliveredMessages(Database& database)
{
    QList<qint64> ids;
    Statement statement(database, u"SELECT id FROM queue_messages WHERE state = 'delivered'"_s);
    while (statement.next()) {
        ids.append(statement.value(0).toLongLong());
    }
    return ids;
}

bool changesWords(Database& database, qint64 id,
                  const std::function<QString(const QString&)>& change)
{
    QStringList former;
    {
        Statement statement(database, u"SELECT extra, coalesce(last_error, ''), "
                                      "coalesce(last_answer, '') FROM queue_messages "
                                      "WHERE id = ?"_s);
        statement.bind(id).next();
        former = {statement.value(0).toString(), statement.value(1).toString(),
                  statement.value(2).toString()};
    }
    const QStringList present{change(former.at(0)), change(former.at(1)), change(former.at(2))};
    if (present == former) {
        return false;
    }
    Statement statement(database, u"UPDATE queue_messages SET extra = ?, "
                                  "last_error = nullif(?, ''), last_answer = nullif(?, '') "
                                  "WHERE id = ?"_s);
    statement.bind(present.at(0)).bind(present.at(1)).bind(present.at(2)).bind(id).execute();
    return true;
}

bool changesBody(Database& database, qint64 id,
                 const std::function<QString(const QString&)>& change)
{
    QueueMessage message;
    bool hadDigest = false;
    {
        Statement statement(database, u"SELECT payload, headers, urls, digest FROM queue_bodies "
                                      "WHERE message_id = ?"_s);
        if (!statement.bind(id).next()) {
            return false;
        }
        message.payload = statement.value(0).toByteArray();
        message.headers = statement.value(1).toByteArray();
        message.urls = statement.value(2).toByteArray();
        hadDigest = !statement.value(3).isNull();
    }
    const QString former = QString::fromUtf8(message.payload);
    const QString present = change(former);
    if (present == former) {
        return false;
    }
    message.payload = present.toUtf8();
    Statement statement(database, u"UPDATE queue_bodies SET payload = ?, digest = ? "
                                  "WHERE message_id = ?"_s);
    statement.bind(message.payload)
        .bind(hadDigest ? QVariant(message.digest()) : QVariant())
        .bind(id)
        .execute();
    return true;
}

} // namespace

int OutgoingQueue::changeDelivered(const std::function<QString(const QString&)>& change)
{
    Transaction transaction(database);
    int changed = 0;
    const QList<qint64> ids = deliveredMessages(database);
    for (const qint64 id : ids) {
        const bool words = changesWords(database, id, change);
        const bool body = changesBody(database, id, change);
        changed += words || body ? 1 : 0;
    }
    transaction.commit();
    return changed;
}

} // namespace poshost
