// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/month/queuefile.h"
#include "tests/scenario/month/server.h"

#include <QString>

#include <memory>
#include <random>

namespace month {

/// What came of one queue.
struct Drained
{
    int confirmations = 0;
    int returns = 0;
    double fillSeconds = 0;
    double drainSeconds = 0;
    qint64 requests = 0;      ///< that the server has answered while it was drained
    qint64 peakKibibytes = 0; ///< of the draining process
    qint64 sellingPeakKibibytes =
        0;                  ///< of the till that closed the checks, delivering all the while
    QStringList complaints; ///< empty: all is as it must be
};

/// A till and its server in a folder of their own.
class Shop
{
public:
    /// @param folder is there and empty
    Shop(const QString& folder, quint64 seed);

    /// Closes so many checks at a working till while no confirmation gets through, then delivers
    /// them with "queue deliver". @throws std::exception when a program cannot be run
    Drained run(int confirmations);

private:
    void writeFiles();
    void fill(int confirmations, Drained& drained);
    void drain(const QueueFile& queue, Drained& drained);
    void compareBooks(int confirmations, Drained& drained);
    QByteArray till(const QStringList& arguments, Drained& drained);
    QString path(const QString& name) const { return folder + u'/' + name; }
    quint64 below(quint64 limit) { return random() % limit; }

    const QString folder;
    std::mt19937_64 random;
    simulator::Rules rules;
    std::unique_ptr<Server> server;
};

} // namespace month
