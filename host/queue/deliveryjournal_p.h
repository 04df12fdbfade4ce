// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/deliverytask_p.h"
#include "host/queue/requestsunderway_p.h"

#include <QHash>
#include <QString>
#include <QUrl>
#include <optional>
#include <random>

namespace poshost {

class Database;
class Statement;

/// The delivery's durable memory: which request is next, that it was attempted, what came of it.
/// Every operation is one transaction and throws BasicException "databaseError" when it cannot be
/// written; then nothing has changed.
class DeliveryJournal
{
public:
    DeliveryJournal(Database& database, quint64 seed);

    /// Begins a delivery: nothing is under way.
    /// @param share of the queue that is delivered
    void begin(const OwnShare& share = {});
    /// The request that is due now, with its attempt counted, which is under way from then on;
    /// nothing when none is due. First in, first out, except for messages that wait by themselves,
    /// for another one, for their authorization, or because one of their lane is under way. While a
    /// probe is under way, which finds out whether a held queue can go on, nothing is taken.
    std::optional<DeliveryTask> takeNext();
    /// Writes down what became of a request and, in the same transaction, takes the next one: the
    /// following step of the same message, else as takeNext.
    std::optional<DeliveryTask> recordAndTakeNext(const DeliveryTask& task,
                                                  const DeliveryResult& result);
    /// How many messages were parked since the last call because nothing of them can be sent.
    int takeParkedUnsent();
    /// Takes back the attempt of a request that was taken and then not sent; the next takeNext may
    /// find it again.
    void forget(const DeliveryTask& task);
    /// The next moment at which a wait ends, in milliseconds since 1970; nothing when none is set.
    std::optional<qint64> nextWaitEnd();

private:
    DeliveryTask readTask(const Statement& row);
    std::optional<qint64> dueMessage();
    std::optional<DeliveryTask> take(qint64 messageId);
    std::optional<DeliveryTask> takeDue();
    const QString& selectTaskDue() const { return underWay.isEmpty() ? taskAlone : taskBeside; }
    std::optional<DeliveryTask> takeFollowingStep(const DeliveryTask& task,
                                                  const DeliveryResult& result);
    bool beginAttempt(const DeliveryTask& task);
    void removeUnusedAccount(qint64 accountId);
    void write(const DeliveryTask& task, const DeliveryResult& result);
    void finishStep(const DeliveryTask& task, const DeliveryResult& result);
    void park(const DeliveryTask& task, const DeliveryResult& result);
    void postpone(const DeliveryTask& task, const DeliveryResult& result);
    void holdQueue(const DeliveryTask& task, const QString& reason, qint64 atLeast);
    void pauseAccount(const DeliveryTask& task, int status);
    void liftHolds(const DeliveryTask& task);
    qint64 backOff(int failures);

    Database& database;
    std::mt19937_64 random;
    /// What was parsed for the message before: the next one mostly differs in its body only.
    struct
    {
        QString headers;
        QString authorization;
        QHash<QString, QString> headersToSend;
        QString addresses;
        QList<QUrl> addressesInOrder;
        bool areSound = false; ///< a message with these headers and addresses was found whole
    } last;
    RequestsUnderWay underWay;
    OwnShare ownShare;
    QString taskAlone;
    QString taskBeside;
    bool overlookedSought = false; ///< once for each delivery: it reads all messages
    int parkedUnsent = 0;
    /// When the transaction under way began, in milliseconds since 1970.
    qint64 now = 0;
};

} // namespace poshost
