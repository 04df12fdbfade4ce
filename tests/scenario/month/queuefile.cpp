// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/month/queuefile.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace month {
namespace {

const QString connectionName = u"queue file"_s;

QSqlQuery rows(const QSqlDatabase& connection, const QString& statement)
{
    QSqlQuery query(connection);
    query.setForwardOnly(true);
    if (!query.exec(statement)) {
        throw std::runtime_error(query.lastError().text().toStdString());
    }
    return query;
}

QueueFile readFrom(const QSqlDatabase& connection)
{
    QueueFile queue;
    QSqlQuery delivered =
        rows(connection, u"SELECT count(*) FROM queue_messages WHERE state = 'delivered'"_s);
    delivered.next();
    queue.delivered = delivered.value(0).toLongLong();
    // outer: a message without its check would be one too many
    QSqlQuery messages = rows(connection, u"SELECT m.id, c.id, c.sale_id FROM queue_messages m "
                                          "LEFT JOIN checks c ON c.message_id = m.id "
                                          "WHERE m.state <> 'delivered' ORDER BY m.id"_s);
    while (messages.next()) {
        if (queue.messages.isEmpty()) {
            queue.firstNumber = messages.value(0).toLongLong();
        }
        queue.messages.append({messages.value(1).toString(), messages.value(2).toString()});
    }
    return queue;
}

} // namespace

QueueFile QueueFile::read(const QString& database)
{
    QueueFile queue;
    {
        QSqlDatabase connection = QSqlDatabase::addDatabase(u"QSQLITE"_s, connectionName);
        connection.setDatabaseName(database);
        if (!connection.open()) {
            throw std::runtime_error(connection.lastError().text().toStdString());
        }
        queue = readFrom(connection);
    }
    QSqlDatabase::removeDatabase(connectionName);
    return queue;
}

} // namespace month
