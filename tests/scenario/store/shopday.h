// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/store/tillhand.h"
#include "tests/support/postgrescluster.h"
#include "tests/support/shop.h"

#include <atomic>
#include <memory>
#include <random>
#include <thread>
#include <vector>

/// A shop's day: many tills, a store with a standby, several workers and the loyalty server, all of
/// them processes, while somebody with a seed kills them.
class ShopDay : public ShopFolder
{
protected:
    static constexpr int cards = 40;

    void SetUp() override;
    void openTills(int tills, quint64 seed);
    void startWorkers(int workers);
    /// Kills at random until so many seconds have passed, the primary once about half way.
    void sabotage(int seconds, std::mt19937_64& random);
    void closeTills();
    /// Has everything delivered that the tills and the store still have.
    void drain();

    QStringList configFor(const QString& login) const;
    QString storeString(const QString& login) const;
    std::unique_ptr<Program> makeWorker(int number) const;
    QString openServer(int port);
    void killServer();
    void killPrimary();
    QString ask(const QString& sql) const { return primary->sql(sql).trimmed(); }

    std::unique_ptr<PostgresCluster> first = std::make_unique<PostgresCluster>();
    std::unique_ptr<PostgresCluster> standby;
    PostgresCluster* primary = nullptr;
    QString address;
    std::vector<std::unique_ptr<Program>> workers;
    std::vector<std::unique_ptr<TillHand>> hands;
    std::vector<std::thread> threads;
    std::atomic<bool> closing = false;
    int workerKills = 0;
    int serverKills = 0;
    int cutConnections = 0;
    int primaryKills = 0;
};
