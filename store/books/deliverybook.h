// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/requestsending.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUrl>
#include <optional>
#include <random>

namespace orvastore {

class Connection;
class Result;
struct Value;

/// A request that is to be sent, with its attempt written down.
struct Task
{
    QString mark; ///< what the store wants to see again when the task is finished
    qint64 lane = 0;
    qint64 message = 0;
    QString queue;
    int step = 0; ///< index of the address, from 0
    bool attemptedBefore = false;
    bool isProbe = false;
    QList<QUrl> addresses;
    QByteArray payload;
    QHash<QString, QString> headers; ///< with the authorization: a secret

    bool isLastStep() const { return step + 1 >= addresses.size(); }
};

/// The store's books as a worker uses them. A task is the session's: when that ends, its lane is
/// free for others. Every operation throws StoreError; afterwards the session holds nothing.
class DeliveryBook
{
public:
    DeliveryBook(Connection& connection, const QString& worker,
                 quint64 seed = std::random_device()());

    /// Finds a task. Reads the list of lanes from where it last found one, and from its beginning
    /// when there is nothing, or once a second: what was committed late stands before that place.
    std::optional<Task> claim();
    struct Next
    {
        bool isWritten = false; ///< false: another worker has taken the message meanwhile
        std::optional<Task> task;
    };
    /// Writes down what became of a task and claims the next one, in one commit.
    /// @param claimNext false: nothing is claimed
    Next finish(const Task& task, const poshost::DeliveryResult& result, bool claimNext = true);
    /// Gives a task back that was not sent: its attempt counts as certainly refused.
    void giveBack(const Task& task);
    /// After the session was lost: takes the task's lane again, so that what came of it can be
    /// written down, unless somebody else has it.
    bool takeAgain(const Task& task);
    /// Tells the server that the session lives. @throws StoreError
    void giveSignOfLife();

private:
    QList<Value> resultOf(const Task& task, const QString& meaning,
                          const poshost::DeliveryResult& result, bool isRefusedForSure);
    static QByteArray unlocking(const Task& task, QList<Value>& values);
    std::optional<Task> claimFrom(qint64 position);
    std::optional<Task> readTask(const Result& result, int firstColumn);
    QByteArray waits();
    bool isSweepDue();

    Connection& connection;
    const QString worker;
    std::mt19937_64 random;
    qint64 position = 0; ///< where the list is read from
    qint64 lastSweep = 0;
};

} // namespace orvastore
