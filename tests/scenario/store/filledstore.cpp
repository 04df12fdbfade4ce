// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/store/filledstore.h"

#include "tests/unit/store/storefixture.h"

#include <algorithm>

using orvastore::Connection;
using storetest::settingsFor;

QString filledstore::connectionTo(const QString& database)
{
    return storetest::sharedCluster().connection(u"postgres"_s, database);
}

QString filledstore::filled(int messages, int lanes, const QByteArray& address)
{
    const QString database = storetest::freshStore();
    Connection owner(settingsFor(connectionTo(database)), {});
    owner.setLimit(std::chrono::minutes(60));
    const QByteArray each = QByteArray::number(messages / lanes);
    owner.runAll(
        "ALTER TABLE orva.messages ALTER COLUMN payload SET STORAGE EXTERNAL;"
        "INSERT INTO orva.accounts (shop, queue, credentials) VALUES ('shop', 'Orva', 'secret');"
        "INSERT INTO orva.lanes (shop, name, waiting, handed, last_day, head_day) "
        "SELECT 'shop', sha256(n::text::bytea), " +
        each + "," + each + ", current_date, current_date FROM generate_series(1, " +
        QByteArray::number(lanes) +
        ") n;"
        "INSERT INTO orva.messages (day, lane, number, id, shop, identifier, sale, account, queue, "
        "extra, headers, urls, payload, steps, steps_done, attempts, step_attempts) "
        "SELECT current_date, l.id, n, nextval('orva.message_ids'), 'shop', l.id || '-' || n, '', "
        "1, 'Orva', '', '{}', '{\"0\":\"" +
        address + "\"}', convert_to(rpad(current_database() || ' ' || l.id || '-' || n, " +
        QByteArray::number(messageBytes) + ", '.'), 'UTF8'), 1, 0, 0, 0 FROM generate_series(1, " +
        each +
        ") n, orva.lanes l;"
        "INSERT INTO orva.ready (lane, account, queue) SELECT id, 1, 'Orva' FROM orva.lanes "
        "ORDER BY id");
    owner.runAll("VACUUM ANALYZE");
    return database;
}

double filledstore::middle(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

QString filledstore::rounded(double value)
{
    return QString::number(value, 'f', 2);
}
