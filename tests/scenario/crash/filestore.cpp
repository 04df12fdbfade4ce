// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/filestore.h"

#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/queue/outgoingqueue.h"
#include "host/services/dbqueuebroker.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;
using orvastore::HandedCheck;
using orvastore::HandedMessage;
using orvastore::StoreEnd;
using orvastore::StoreResult;

namespace {

QVariantMap mapOf(const QByteArray& json)
{
    return QJsonDocument::fromJson(json).object().toVariantMap();
}

QVariantMap contentOf(const HandedMessage& message)
{
    QVariantMap headers = mapOf(message.headers);
    if (!message.authorization.isEmpty()) {
        headers.insert(u"Authorization"_s, message.authorization);
    }
    return {{u"payload"_s, QString::fromUtf8(message.payload)},
            {u"headers"_s, headers},
            {u"urls"_s, mapOf(message.urls)}};
}

} // namespace

void FileStore::open(const orvastore::StoreSettings& settings)
{
    const QStringList words = settings.database.split(u' ');
    isAway = words.contains(u"away"_s);
    isUnanswered = words.contains(u"unanswered"_s);
    for (const QString& word : words) {
        if (word.startsWith("file="_L1)) {
            file = word.section(u'=', 1);
        }
    }
}

StoreResult FileStore::reach()
{
    if (isAway) {
        return {StoreEnd::Unreachable, poshost::Message::plain(u"the store is away"_s)};
    }
    if (!database) {
        database = QSharedPointer<poshost::Database>::create(file);
        database->execute(u"CREATE TABLE IF NOT EXISTS handed "
                          "(identifier TEXT PRIMARY KEY, message INTEGER)"_s);
        FileBooks::makeTable(*database);
    }
    return {StoreEnd::Done, {}};
}

QList<StoreResult> FileStore::handOver(const QList<HandedCheck>& checks)
{
    QList<StoreResult> results;
    bool isBroken = false;
    for (const HandedCheck& check : checks) {
        if (isBroken) {
            results.append({StoreEnd::Unreachable, {}});
            continue;
        }
        isBroken = keep(check) && isUnanswered;
        results.append({isBroken ? StoreEnd::Unknown : StoreEnd::Done, {}});
    }
    return results;
}

/// @return false: it was here before
bool FileStore::keep(const HandedCheck& check)
{
    poshost::Transaction transaction(*database);
    poshost::Statement known(*database, u"INSERT OR IGNORE INTO handed (identifier) VALUES (?)"_s);
    known.bind(check.identifier).execute();
    const bool isNew = known.affectedRows() == 1;
    if (isNew) {
        keepMessage(check);
        FileBooks::settle(*database, check);
    }
    transaction.commit();
    return isNew;
}

void FileStore::keepMessage(const HandedCheck& check)
{
    const HandedMessage& message = check.messages.first();
    DBQueueBroker(database).addToQueue(message.queue, contentOf(message), message.extra);
    poshost::OutgoingQueue queue(*database);
    const qint64 id = queue.lastAddedId();
    queue.putIntoLane(id, check.laneName);
    poshost::Statement steps(*database, u"UPDATE queue_messages SET steps_done = ?, attempts = ?, "
                                        "step_attempts = ?, last_status = 200 WHERE id = ?"_s);
    steps.bind(message.stepsDone)
        .bind(message.attempts)
        .bind(message.stepAttempts)
        .bind(id)
        .execute();
    poshost::Statement number(*database, u"UPDATE handed SET message = ? WHERE identifier = ?"_s);
    number.bind(id).bind(check.identifier).execute();
    poshost::Statement sale(*database, u"SELECT message FROM handed WHERE identifier = ?"_s);
    if (sale.bind(check.saleIdentifier).next()) {
        queue.addDependency(id, sale.value(0).toLongLong());
    }
}
