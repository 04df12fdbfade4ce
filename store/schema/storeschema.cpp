// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/schema/storeschema.h"

#include "store/database/connection.h"

#include <QFile>
#include <QStringList>

#include <utility>

namespace orvastore::storeschema {

using namespace Qt::StringLiterals;
using poshost::Message;

namespace {

/// How long a migration waits for those who use a table: they wait for it as long at most.
constexpr char patience[] = "SET LOCAL lock_timeout = '2s'";
constexpr int preparedDays = 7;

QByteArray script(const QString& name)
{
    QFile file(u":/store/schema/%1.sql"_s.arg(name));
    [[maybe_unused]] const bool opened = file.open(QIODevice::ReadOnly);
    Q_ASSERT(opened);
    return file.readAll();
}

/// The functions are made anew with each version; these speak of tables that came with the third.
QByteArray functions(int version)
{
    QStringList names{u"handover"_s, u"progress"_s, u"delivery"_s, u"finishing"_s,
                      u"control"_s,  u"upkeep"_s,   u"rights"_s,   u"status"_s};
    if (version >= 3) {
        names += QStringList{u"returns"_s, u"suspended"_s, u"reading"_s};
    }
    QByteArray all;
    for (const QString& name : std::as_const(names)) {
        all += script(name) + '\n';
    }
    return all;
}

bool exists(Connection& connection)
{
    return connection.run("SELECT to_regclass('orva.versions') IS NOT NULL").isTrue(0, 0);
}

void makeVersion(Connection& connection, int version, bool isLast)
{
    connection.runAll("BEGIN;" + QByteArray(patience) + ";SELECT pg_advisory_xact_lock(1, 1)");
    try {
        if (version == 1) {
            connection.runAll("CREATE SCHEMA IF NOT EXISTS orva;"
                              "CREATE TABLE IF NOT EXISTS orva.versions (version int PRIMARY KEY, "
                              "usable_from int NOT NULL, "
                              "at timestamptz NOT NULL DEFAULT clock_timestamp())");
        }
        const Result known = connection.run("SELECT coalesce(max(version), 0) FROM orva.versions");
        if (known.number(0, 0) < version) {
            connection.runAll(script(u"version%1"_s.arg(version)));
            if (isLast) {
                connection.runAll(functions(version));
            }
            // the tables are the same but for what was added: programs from version 1 on can work
            connection.run("INSERT INTO orva.versions (version, usable_from) VALUES ($1::int, 1)",
                           {Value::number(version)});
        }
        connection.runAll("COMMIT");
    } catch (const StoreError&) {
        connection.close(); // which rolls back
        throw;
    }
}

} // namespace

int versionOf(Connection& connection)
{
    if (!exists(connection)) {
        return 0;
    }
    return static_cast<int>(
        connection.run("SELECT coalesce(max(version), 0) FROM orva.versions").number(0, 0));
}

void requireUsable(Connection& connection)
{
    if (!exists(connection)) {
        throw StoreError(StoreError::Certainty::Refused, Message::of("store.noSchema", QString()));
    }
    const Result found = connection.run("SELECT version, usable_from FROM orva.versions "
                                        "ORDER BY version DESC LIMIT 1");
    const qint64 version = found.rows() == 0 ? 0 : found.number(0, 0);
    if (version < oldestUsable) {
        throw StoreError(StoreError::Certainty::Refused,
                         Message::of("store.olderSchema", version, qint64{oldestUsable}));
    }
    if (found.number(0, 1) > newest) {
        throw StoreError(StoreError::Certainty::Refused,
                         Message::of("store.newerSchema", version, qint64{newest}));
    }
}

int migrate(Connection& connection, int upTo)
{
    const int before = versionOf(connection);
    for (int version = before + 1; version <= upTo; ++version) {
        makeVersion(connection, version, version == upTo);
    }
    if (before < upTo) {
        connection.run("SELECT prepare_days($1::int)", {Value::number(preparedDays)});
    }
    return before;
}

void admitTill(Connection& connection, const QString& role, const QString& shop)
{
    connection.run("INSERT INTO tills (role, shop) VALUES ($1, $2) "
                   "ON CONFLICT (role) DO UPDATE SET shop = excluded.shop",
                   {Value::text(role), Value::text(shop)});
    const QByteArray quoted =
        connection.run("SELECT quote_ident($1)", {Value::text(role)}).text(0, 0).toUtf8();
    connection.runAll("GRANT orva_till TO " + quoted);
}

} // namespace orvastore::storeschema
