// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/month/queuefile.h"

#include "host/database/database.h"
#include "host/database/statement.h"

using namespace Qt::StringLiterals;
using poshost::Statement;

namespace month {

QueueFile QueueFile::read(const QString& database)
{
    poshost::Database till(database);
    QueueFile queue;
    Statement delivered(till, u"SELECT count(*) FROM queue_messages WHERE state = 'delivered'"_s);
    delivered.next();
    queue.delivered = delivered.value(0).toLongLong();
    // outer: a message without its check would be one too many
    Statement messages(till, u"SELECT m.id, c.id, c.sale_id FROM queue_messages m "
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

} // namespace month
