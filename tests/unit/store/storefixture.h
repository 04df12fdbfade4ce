// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/books/deliverybook.h"
#include "store/books/handingover.h"
#include "store/client/postgresstore.h"
#include "store/database/connection.h"
#include "store/schema/storeschema.h"
#include "tests/support/postgrescluster.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace storetest {

inline orvastore::StoreSettings settingsFor(const QString& database, int seconds = 5)
{
    return {database, {}, seconds, QStringLiteral("test")};
}

/// A check with one message of one step.
inline orvastore::HandedCheck checkOf(const QString& identifier, const QString& lane = {})
{
    orvastore::HandedMessage message;
    message.queue = QStringLiteral("Orva");
    message.extra = identifier;
    message.headers = R"({"Content-Type":"text/xml"})";
    message.urls = R"({"0":"http://127.0.0.1:9/checkconfirm"})";
    message.payload = "<check>" + identifier.toUtf8() + "</check>";
    message.authorization = QStringLiteral("Basic c2VjcmV0");
    orvastore::HandedCheck check;
    check.identifier = identifier;
    check.shop = QStringLiteral("shop");
    check.till = QStringLiteral("till1");
    check.number = 1;
    check.closedAt = QDateTime::currentDateTimeUtc();
    check.laneName = lane;
    check.content = "content";
    check.messages = {message};
    return check;
}

inline poshost::DeliveryResult resultOf(poshost::deliverypolicy::Meaning meaning, int status = 200)
{
    poshost::DeliveryResult result;
    result.meaning = meaning;
    result.status = status;
    return result;
}

/// How many pages an EXPLAIN (ANALYZE, BUFFERS, FORMAT JSON) says that its command read.
inline int buffersOf(const orvastore::Result& plan)
{
    const QJsonArray plans = QJsonDocument::fromJson(plan.text(0, 0).toUtf8()).array();
    const QJsonObject top = plans.at(0).toObject().value(QStringLiteral("Plan")).toObject();
    return top.value(QStringLiteral("Shared Hit Blocks")).toInt() +
           top.value(QStringLiteral("Shared Read Blocks")).toInt();
}

/// The server that the tests of one program share; each has a database of its own, and the
/// upkeep of none of them comes in between; who measures what that costs sets it again.
inline PostgresCluster& sharedCluster()
{
    static PostgresCluster cluster("autovacuum_naptime = '1h'");
    return cluster;
}

/// @param like the database whose copy it is, an empty one when not given
inline QString freshDatabase(const QString& like = QStringLiteral("template1"))
{
    static int made = 0;
    const QString name = QStringLiteral("store%1").arg(++made);
    sharedCluster().sql(QStringLiteral("CREATE DATABASE %1 TEMPLATE %2").arg(name, like));
    return name;
}

/// A database with the tables of a store: these are made once and copied.
inline QString freshStore()
{
    static const QString made = [] {
        const QString name = freshDatabase();
        orvastore::Connection owner(
            settingsFor(sharedCluster().connection(QStringLiteral("postgres"), name), 60), {});
        orvastore::storeschema::migrate(owner);
        return name;
    }();
    static int copies = 0;
    const QString name = made + QStringLiteral("_%1").arg(++copies);
    sharedCluster().sql(
        QStringLiteral("CREATE DATABASE %1 TEMPLATE %2 STRATEGY file_copy").arg(name, made));
    return name;
}

/// A store with its tables, and sessions at it.
class StoreTest : public ::testing::Test
{
protected:
    void handOver(const QString& identifier, const QString& lane = {})
    {
        orvastore::handOver(owner, checkOf(identifier, lane));
    }
    /// What the check of a task is called.
    static QString nameOf(const std::optional<orvastore::Task>& task)
    {
        return task ? QString::fromUtf8(task->payload).section(u'>', 1).section(u'<', 0, 0)
                    : QStringLiteral("none");
    }

    /// As psql prints it.
    QString sql(const QString& statements) const
    {
        return sharedCluster().sql(statements, database);
    }

    const QString database = freshStore();
    const QString connection = sharedCluster().connection(QStringLiteral("postgres"), database);
    orvastore::Connection owner{settingsFor(connection), {}};
    orvastore::Connection first{settingsFor(connection), {.byIndexes = true}};
    orvastore::Connection second{settingsFor(connection), {}};
    orvastore::DeliveryBook book{first, QStringLiteral("first"), 1};
    orvastore::DeliveryBook other{second, QStringLiteral("second"), 2};
    const poshost::DeliveryResult done = resultOf(poshost::deliverypolicy::Meaning::StepDone);
};

} // namespace storetest
