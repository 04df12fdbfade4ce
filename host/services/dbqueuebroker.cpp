// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/dbqueuebroker.h"

#include "host/config/knownkeys.h"
#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/queue/queuemessage.h"
#include "host/services/currenttime.h"

template class Singleton<DBQueueBroker>;

using namespace Qt::StringLiterals;

namespace {

BasicException queueError(const poshost::Message& what)
{
    return BasicException(tr::Tr(u"queueError"_s, poshost::Message::of("queue", what)));
}

QSharedPointer<poshost::Database> openConfigured()
{
    const QString file = poshost::Database::configuredFile();
    if (file.isEmpty()) {
        const auto key = poshost::knownkeys::find(poshost::ConfigKey::Use::Database);
        throw queueError(key ? poshost::Message::of("queue.noFile", key->key, key->table)
                             : poshost::Message::of("queue.noKey"));
    }
    return QSharedPointer<poshost::Database>::create(file);
}

/// The row for who the message is sent as, made when there is none yet.
qint64 accountFor(poshost::Database& database, const QString& queue, const QString& authorization)
{
    poshost::Statement known(
        database, u"SELECT id FROM queue_accounts WHERE queue = ? AND authorization = ?"_s);
    if (known.bind(queue).bind(authorization).next()) {
        return known.value(0).toLongLong();
    }
    poshost::Statement added(database,
                             u"INSERT INTO queue_accounts (queue, authorization) VALUES (?, ?)"_s);
    added.bind(queue).bind(authorization).execute();
    return added.lastInsertId();
}

void store(poshost::Database& database, const QString& queue, const poshost::QueueMessage& message,
           const QString& extra)
{
    const qint64 now = CurrentTime::milliseconds();
    poshost::Transaction transaction(database);
    poshost::Statement head(
        database,
        u"INSERT INTO queue_messages (queue, account_id, extra, state, steps, created_at) "
        "VALUES (?, ?, ?, 'waiting', ?, ?)"_s);
    head.bind(queue)
        .bind(accountFor(database, queue, message.authorization))
        .bind(extra)
        .bind(message.steps)
        .bind(now)
        .execute();
    poshost::Statement body(
        database, u"INSERT INTO queue_bodies (message_id, headers, urls, payload, digest) "
                  "VALUES (?, ?, ?, ?, ?)"_s);
    body.bind(head.lastInsertId())
        .bind(QString::fromUtf8(message.headers))
        .bind(QString::fromUtf8(message.urls))
        .bind(message.payload)
        .bind(message.digest())
        .execute();
    transaction.commit();
}

} // namespace

DBQueueBroker::DBQueueBroker() = default;

DBQueueBroker::DBQueueBroker(const QSharedPointer<poshost::Database>& opened) : database(opened) {}

DBQueueBroker::~DBQueueBroker() = default;

bool DBQueueBroker::addToQueue(const QString& queueName, const QVariantMap& message,
                               const QString& extra)
{
    try {
        if (!database) {
            database = openConfigured();
        }
        store(*database, queueName, poshost::QueueMessage::fromMap(message), extra);
    } catch (const BasicException& error) {
        if (error.tr().id() == "queueError"_L1) {
            throw;
        }
        throw queueError(poshost::Message::of("queue.notStored", error.tr().message()));
    }
    return true;
}
