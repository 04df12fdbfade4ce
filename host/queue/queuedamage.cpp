// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/queuedamage_p.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/queue/contentdigest_p.h"
#include "host/queue/deliverylog_p.h"
#include "host/queue/queuemessage.h"

#include <QList>
#include <limits>

namespace poshost {

using namespace Qt::StringLiterals;

namespace queuedamage {

namespace {

Message compareAndSettle(const char* what)
{
    return Message::of("queue.damaged", Message::of(what));
}

/// A message that no delivery takes.
struct Overlooked
{
    qint64 id = 0;
    QString queue;
    bool hasAccount = false;
};

QList<Overlooked> overlooked(Database& database)
{
    Statement statement(database,
                        u"SELECT m.id, m.queue, a.id IS NOT NULL FROM queue_messages m "
                        "LEFT JOIN queue_accounts a ON a.id = m.account_id "
                        "WHERE coalesce(m.state, '') NOT IN ('waiting', 'parked', 'delivered') "
                        "OR (m.state <> 'delivered' AND a.id IS NULL)"_s);
    QList<Overlooked> found;
    while (statement.next()) {
        found.append({statement.value(0).toLongLong(), statement.value(1).toString(),
                      statement.value(2).toBool()});
    }
    return found;
}

void giveAccount(Database& database, const Overlooked& message)
{
    Statement account(database,
                      u"INSERT INTO queue_accounts (queue, authorization) VALUES (?, '')"_s);
    account.bind(message.queue).execute();
    Statement owner(database, u"UPDATE queue_messages SET state = 'parked', account_id = ? "
                              "WHERE id = ?"_s);
    owner.bind(account.lastInsertId()).bind(message.id).execute();
}

void park(Database& database, const Overlooked& message)
{
    const Message sentence = message.hasAccount ? compareAndSettle("queue.damagedState")
                                                : Message::of("queue.noAccount");
    if (!message.hasAccount) {
        giveAccount(database, message);
    }
    Statement parked(database, u"UPDATE queue_messages SET state = 'parked', last_error = ? "
                               "WHERE id = ?"_s);
    parked.bind(sentence.stored()).bind(message.id).execute();
    qCWarning(logDelivery).noquote()
        << u"Очередь %1, сообщение %2: %3"_s.arg(message.queue).arg(message.id).arg(sentence.ru());
}

/// @return nothing: headers or addresses are damaged
std::optional<qsizetype> countAddresses(const QueueMessage& content)
{
    if (!QueueMessage::isTextObject(content.headers) || !QueueMessage::isTextObject(content.urls)) {
        return std::nullopt;
    }
    return QueueMessage::addressesOf(content.urls).size();
}

} // namespace

Message of(const StoredMessage& message)
{
    QueueMessage content;
    content.payload = message.payload.toByteArray();
    content.headers = message.headers.toUtf8();
    content.urls = message.urls.toUtf8();
    if (message.payload.isNull()) {
        return compareAndSettle("queue.damagedEmpty");
    }
    const bool isOther =
        !message.digest.isNull() && !contentdigest::isOf(message.digest.toByteArray(), content);
    const std::optional<qsizetype> addresses =
        message.knownAddresses ? message.knownAddresses : countAddresses(content);
    if (isOther || !addresses) {
        return compareAndSettle("queue.damagedContent");
    }
    if (*addresses == 0 && countIn(message.steps) == 0) {
        return Message::of("queue.noAddress");
    }
    // a step that was done has left its status
    const qint64 done = message.stepsDone.toLongLong();
    if (message.steps.toLongLong() != *addresses || done < 0 || done >= *addresses ||
        (done > 0 && message.lastStatus.isNull())) {
        return compareAndSettle("queue.damagedSteps");
    }
    return {};
}

int countIn(const QVariant& value)
{
    const qint64 number = value.toLongLong();
    return number < 0 || number > std::numeric_limits<int>::max() ? 0 : static_cast<int>(number);
}

int parkOverlooked(Database& database)
{
    if (overlooked(database).isEmpty()) { // looked up without the right to write
        return 0;
    }
    Transaction transaction(database);
    const QList<Overlooked> found = overlooked(database);
    for (const Overlooked& message : found) {
        park(database, message);
    }
    transaction.commit();
    return static_cast<int>(found.size());
}

} // namespace queuedamage

} // namespace poshost
