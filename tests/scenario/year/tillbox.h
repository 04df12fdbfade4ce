// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/queuedelivery.h"
#include "till/desk/cashdesk.h"

#include <QList>
#include <QString>

#include <memory>

namespace till {
class CheckStore;
class Workplace;
} // namespace till

namespace year {

/// A message that is still in a till's queue.
struct LeftMessage
{
    QString check;
    bool isParked = false;
    int lastStatus = 0;
    QString waitsFor; ///< the check whose message must go first; empty for none
};

/// One till: its configuration, its database, and, while a cashier works at it, the workplace with
/// the plug-in. At most one till of the process is at work, since the host's services and the
/// plug-in are there once; what a till must not forget has to be in its database.
class TillBox
{
public:
    /// @param name from 1
    TillBox(int name, const QString& folder, quint64 seed);
    ~TillBox();
    TillBox(const TillBox&) = delete;
    TillBox& operator=(const TillBox&) = delete;

    int name() const { return number; }
    /// Writes the configuration anew; it counts from the next start.
    void setPassword(const QString& value);
    /// The password that is written in its configuration.
    const QString& password() const { return secret; }

    /// Begins to work: a start of the program.
    void start();
    /// Ends it. An open check is abandoned, or stays suspended when it was restored.
    void stop();
    bool isAtWork() const { return workplace != nullptr; }
    /// These two while it is at work.
    till::CashDesk& desk();
    till::CheckStore& checks();

    /// One round of the delivery, which goes on whether a cashier works here or not.
    poshost::DeliveryReport deliver();
    /// What an administrator does: makes the parked messages due once more.
    /// @return how many there were
    int retryParked();
    /// Gives the configured credentials to the undelivered messages, while it is at work.
    int reauthorize();
    /// The state of a closed check's message: "waiting", "parked" or "delivered"; "removed" when
    /// there is none any more.
    QString messageState(const QString& check);
    /// What is not delivered, in the order of the queue.
    QList<LeftMessage> left();

private:
    const int number;
    const QString configFile;
    const QString databaseFile;
    QString secret;
    quint64 seed;
    std::unique_ptr<poshost::Database> database; ///< the delivery's connection
    std::unique_ptr<poshost::QueueDelivery> delivery;
    std::unique_ptr<till::Workplace> workplace;
};

} // namespace year
