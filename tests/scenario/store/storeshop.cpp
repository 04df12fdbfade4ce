// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/store/storeshop.h"

#include "store/database/connection.h"
#include "store/schema/storeschema.h"
#include "tests/support/tillsettings.h"

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>
#include <QUrl>

void StoreShop::SetUp()
{
    Shop::SetUp();
    orvastore::StoreSettings settings;
    settings.database = cluster.connection();
    orvastore::Connection connection(settings, {});
    orvastore::storeschema::migrate(connection);
    cluster.sql(u"CREATE ROLE till3 LOGIN"_s);
    orvastore::storeschema::admitTill(connection, u"till3"_s, u"1042"_s);
    writeStoreConfig(storeString());
}

void StoreShop::writeStoreConfig(const QString& database, const QString& further) const
{
    tests::TillSettings settings;
    settings.server = address;
    settings.timeoutSeconds = 5;
    settings.plugin = QStringLiteral(ORVA_PLUGIN);
    settings.name = u"3"_s;
    writeFile(u"orva.toml"_s,
              settings.toml() +
                  u"[store]\ndatabase = \"%1\"\nshop = \"1042\"\nmodule = \"%2\"\n%3"_s.arg(
                      database, QStringLiteral(ORVA_STORE_MODULE), further));
}

void StoreShop::writeTillConfig(int number) const
{
    auto settings = tests::TillSettings::numbered(number, address, QStringLiteral(ORVA_PLUGIN));
    settings.database = u"till%1.sqlite"_s.arg(number);
    settings.store = storeString();
    settings.storeModule = QStringLiteral(ORVA_STORE_MODULE);
    writeFile(u"till%1.toml"_s.arg(number), settings.toml());
}

void StoreShop::stopStore(const std::function<int(int)>& upTo)
{
    if (upTo(1) == 0) {
        cluster.freeze();
        QThread::msleep(static_cast<unsigned long>(upTo(9) == 0 ? 2500 : upTo(300)));
        cluster.thaw();
    } else {
        cluster.kill();
        QThread::msleep(static_cast<unsigned long>(upTo(100)));
        cluster.start();
    }
    ++storeStops;
}

void StoreShop::startWorker()
{
    writeFile(u"worker.toml"_s, u"[store]\ndatabase = \"%1\"\n"_s.arg(cluster.connection()));
    // no pipe for its words either: each stop of the store is worth some
    worker = std::make_unique<Program>(
        u"/bin/sh"_s,
        QStringList{u"-c"_s, u"exec \"$0\" --config worker.toml work >worker.log 2>&1"_s,
                    QStringLiteral(ORVA_STORE)},
        folder());
}

void StoreShop::quietServer()
{
    stopServer();
    server = std::make_unique<Program>(
        QStringLiteral(ORVA_SIMULATOR),
        QStringList{u"--quiet"_s, u"--database"_s, u"server.sqlite"_s, u"--port"_s,
                    QString::number(QUrl(address).port()), u"--config"_s, u"strict.toml"_s},
        folder());
    ASSERT_EQ(server->waitForLine(u"Listening on "_s), address);
}

void StoreShop::awaitDelivery() const
{
    constexpr int longest = 300; // seconds
    const QDeadlineTimer deadline(longest * 1000);
    const QString waiting = u"SELECT coalesce(sum(waiting), 0) FROM orva.lanes"_s;
    while (cluster.sql(waiting) != u"0"_s && !deadline.hasExpired()) {
        QThread::msleep(100);
    }
    EXPECT_EQ(cluster.sql(waiting), u"0"_s);
    EXPECT_EQ(cluster.sql(u"SELECT identifier, waits_for, answer FROM orva.parked"_s), QString())
        << qPrintable(cluster.sql(
               u"SELECT r.sale, r.identifier, r.till, r.at, r.is_closed, r.is_released, "
               "c.handed_at, a.at, d.at FROM orva.returns r LEFT JOIN orva.checks c USING (shop, "
               "identifier) LEFT JOIN orva.messages m USING (shop, identifier) LEFT JOIN "
               "orva.attempts a ON a.message = m.id LEFT JOIN orva.deliveries d ON d.message = "
               "m.id WHERE r.sale IN (SELECT m.sale FROM orva.parked p JOIN orva.messages m ON "
               "m.id "
               "= p.message) ORDER BY r.sale, r.at"_s));
}

QString StoreShop::doctorLine(const QString& id) const
{
    const RunResult run = till({u"doctor"_s, u"--json"_s});
    const QJsonArray rows =
        QJsonDocument::fromJson(run.output.toUtf8()).object().value(u"checks"_s).toArray();
    for (const QJsonValue& row : rows) {
        if (row[u"id"_s].toString() == id) {
            return row[u"mark"_s].toString() + u": "_s + row[u"text"_s].toString();
        }
    }
    return u"none in "_s + run.output;
}

QString StoreShop::stored(const QString& table) const
{
    return cluster.sql(u"SELECT count(*) FROM orva.%1"_s.arg(table)).trimmed();
}

void StoreShop::sellMany(int checks) const
{
    const auto till = startTill();
    for (int i = 0; i < checks; ++i) {
        expectOk(till->command(u"open sale.toml"_s));
        expectOk(till->command(u"close"_s));
    }
    till->send(u"quit"_s);
    EXPECT_EQ(till->waitForEnd(), 0);
}
