// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/protocol/wireshop.h"

#include "host/database/database.h"
#include "host/database/statement.h"

using namespace Qt::StringLiterals;

namespace tests {

void WireShop::SetUp()
{
    Shop::SetUp();
    recorder = std::make_unique<Recorder>(address);
    writeConfig(u"secret"_s, recorder->address());
}

void WireShop::query(const QString& sql,
                     const std::function<void(const poshost::Statement&)>& take) const
{
    poshost::Database database(path(u"till.sqlite"_s));
    poshost::Statement rows(database, sql);
    while (rows.next()) {
        take(rows);
    }
}

std::vector<StoredMessage> WireShop::storedMessages() const
{
    std::vector<StoredMessage> messages;
    query(u"SELECT headers, urls, payload FROM queue_bodies ORDER BY message_id"_s,
          [&](const poshost::Statement& row) {
              messages.push_back({row.value(0).toByteArray(), row.value(1).toByteArray(),
                                  row.value(2).toByteArray()});
          });
    return messages;
}

QStringList WireShop::queueColumns() const
{
    QStringList columns;
    query(u"SELECT tables.name || '.' || columns.name FROM sqlite_schema AS tables, "
          "pragma_table_info(tables.name) AS columns WHERE tables.name LIKE 'queue_%'"_s,
          [&](const poshost::Statement& row) { columns.append(row.value(0).toString()); });
    return columns;
}

} // namespace tests
