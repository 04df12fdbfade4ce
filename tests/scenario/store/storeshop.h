// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/postgrescluster.h"
#include "tests/support/shop.h"

#include <functional>

using namespace Qt::StringLiterals;

/// A shop whose tills hand over to a store on a PostgreSQL server of the test's own.
class StoreShop : public Shop
{
protected:
    void SetUp() override;

    /// Writes orva.toml with a store.
    /// @param database the store's connection string
    /// @param further lines of [store]
    void writeStoreConfig(const QString& database, const QString& further = QString()) const;
    /// The till's connection string.
    QString storeString() const { return cluster.connection(u"till3"_s, u"postgres"_s); }
    /// What the doctor of the till says of one thing: its mark and its text.
    QString doctorLine(const QString& id) const;
    /// What the store's tables have.
    QString stored(const QString& table) const;
    /// Writes the settings of one till of several, tillN.toml, with a file of its own,
    /// tillN.sqlite.
    void writeTillConfig(int number) const;
    /// Starts what delivers the messages of the store, until the test ends; its words go into
    /// worker.log.
    void startWorker();
    /// Starts the loyalty server anew without its words: nobody reads those of a long test, and a
    /// full pipe would stop it.
    void quietServer();
    /// Waits until everything in the store is delivered; what is parked fails the test.
    void awaitDelivery() const;
    /// The store falls silent, now and then for longer than a till waits, or its power is cut.
    /// @param upTo draws a number from 0 to the one that it is given
    void stopStore(const std::function<int(int)>& upTo);
    /// Sells the sample sale so many times, as one till at work that does not wait for the
    /// delivery.
    void sellMany(int checks) const;

    static void expectOk(const QString& answer)
    {
        EXPECT_TRUE(answer.endsWith(u"ok\n"_s)) << qPrintable(answer);
    }

    PostgresCluster cluster;
    std::unique_ptr<Program> worker;
    int storeStops = 0;
};
