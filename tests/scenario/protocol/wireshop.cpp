// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/protocol/wireshop.h"

#include <QSqlDatabase>
#include <QSqlError>

using namespace Qt::StringLiterals;

namespace tests {

void WireShop::SetUp()
{
    Shop::SetUp();
    recorder = std::make_unique<Recorder>(address);
    writeConfig(u"secret"_s, recorder->address());
}

void WireShop::query(const QString& sql, const std::function<void(const QSqlQuery&)>& take) const
{
    const QString connection = u"stored"_s;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, connection);
        database.setDatabaseName(path(u"till.sqlite"_s));
        EXPECT_TRUE(database.open()) << qPrintable(database.lastError().text());
        QSqlQuery rows(database);
        EXPECT_TRUE(rows.exec(sql)) << qPrintable(rows.lastError().text());
        while (rows.next()) {
            take(rows);
        }
    }
    QSqlDatabase::removeDatabase(connection);
}

std::vector<StoredMessage> WireShop::storedMessages() const
{
    std::vector<StoredMessage> messages;
    query(u"SELECT headers, urls, payload FROM queue_bodies ORDER BY message_id"_s,
          [&](const QSqlQuery& row) {
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
          [&](const QSqlQuery& row) { columns.append(row.value(0).toString()); });
    return columns;
}

} // namespace tests
