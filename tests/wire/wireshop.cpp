// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/wire/wireshop.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace tests {

void WireShop::SetUp()
{
    Shop::SetUp();
    recorder = std::make_unique<Recorder>(address);
    writeConfig(u"secret"_s, recorder->address());
}

void WireShop::run(const QStringList& arguments) const
{
    const RunResult result = till(arguments);
    EXPECT_EQ(result.exitCode, 0) << qPrintable(arguments.join(u' ')) << '\n'
                                  << qPrintable(result.output);
}

std::vector<StoredMessage> WireShop::storedMessages() const
{
    std::vector<StoredMessage> messages;
    const QString connection = u"stored"_s;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, connection);
        database.setDatabaseName(path(u"till.sqlite"_s));
        EXPECT_TRUE(database.open()) << qPrintable(database.lastError().text());
        QSqlQuery query(database);
        query.exec(u"SELECT headers, urls, payload FROM queue_bodies ORDER BY message_id"_s);
        while (query.next()) {
            messages.push_back({query.value(0).toByteArray(), query.value(1).toByteArray(),
                                query.value(2).toByteArray()});
        }
    }
    QSqlDatabase::removeDatabase(connection);
    return messages;
}

} // namespace tests
