// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"
#include "host/queue/queueentry.h"

#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace poshost {

class Database;

/// The outgoing queue as the till and its people see and steer it. Nothing here sends anything, and
/// nothing ever removes a message that has not been delivered.
///
/// Works on the caller's connection and thread and joins its open Transaction; every change is
/// durable when the call returns, or with the outer commit. All operations throw BasicException
/// "databaseError" when the database fails; then nothing has changed.
class HOST_EXPORT OutgoingQueue
{
public:
    /// Reads nothing yet.
    /// @param database stays the caller's and must live longer
    explicit OutgoingQueue(Database& database);

    /// Inside a Transaction that called addToQueue this is the message just added.
    /// @return the message that was stored last by anybody, 0 before the first one
    qint64 lastAddedId();
    /// Holds a message back until another one is delivered. A return names the sale it returns.
    /// Does nothing when the other one is not in the queue any more: it has been delivered.
    /// @param messageId the message that waits
    /// @param dependsOn the one that must go first, stored before it
    void addDependency(qint64 messageId, qint64 dependsOn);
    /// Puts a message into the lane of that name. Messages of one lane are sent one after another
    /// in their order, those of different lanes at the same time where several connections are
    /// configured. One that is put into none shares a lane with all such.
    ///
    /// Of the name a digest is stored, and only until the message is delivered.
    /// @param messageId an undelivered message; others stay as they are
    /// @param name such as the number of the card whose points the message moves
    void putIntoLane(qint64 messageId, const QString& name);

    /// Lists messages without their content.
    /// @param withDelivered false: only those still to be delivered
    /// @return the messages in the order in which they were stored
    QList<QueueEntry> list(bool withDelivered = false);
    /// Reads one message with its content. The authorization is replaced by "***"; addresses
    /// are those of serveraddress::shown.
    /// @param messageId which
    /// @return nothing when there is no such message
    std::optional<QueueContent> show(qint64 messageId);
    /// @return how many messages stand how, those of all queues together
    QueueCounts counts();

    /// Makes a message due at once: takes it out of parking, ends its own wait, the wait of its
    /// queue and the pause of its authorization. What was sent already is not sent again.
    /// @param messageId which
    /// @return false: there is no such undelivered message
    bool retry(qint64 messageId);
    /// Takes a message out of the delivery until retry; the others go on.
    /// @param messageId which
    /// @return false: there is no such undelivered message
    bool park(qint64 messageId);
    /// Takes a parked message for delivered, its steps left undone: somebody has seen that the
    /// server has it. What waited for it goes on.
    /// @param messageId which
    /// @return false: there is no such parked message
    bool settle(qint64 messageId);
    /// Gives every undelivered message of a queue another value of the header "Authorization" and
    /// ends pauses for the former one.
    /// @param queueName whose messages
    /// @param authorization the header's new value, whole; a secret that stays in the file
    /// @return how many messages there are to deliver with it
    int reauthorize(const QString& queueName, const QString& authorization);

    /// Gives delivered messages other texts, for what must not be kept any longer: their bodies,
    /// the server's words about them and what was kept beside them. Undelivered ones stay as they
    /// are.
    /// @param change called with each text; what it returns stands there from now on
    /// @return how many messages have changed, all of them or none
    int changeDelivered(const std::function<QString(const QString&)>& change);

    /// How many messages removeDelivered removes at most.
    static constexpr int removedAtOnce = 100;
    /// Removes the oldest messages that were delivered longer ago than that, all of this call or
    /// none. No more than removedAtOnce, so that who wants to write waits for a moment only; who
    /// removes more leaves others the time to write between two calls.
    /// @param olderThanDays in days of the calendar; 0: all delivered ones
    /// @return how many were removed; removedAtOnce: there may be more
    int removeDelivered(int olderThanDays);

private:
    Database& database;
};

} // namespace poshost
