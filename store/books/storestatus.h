// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

namespace orvastore {

class Connection;

/// How the store stands, in numbers. Nothing in it is of a check but how many there are.
struct StoreStatus
{
    /// What came of attempts that did not finish their message.
    struct Failures
    {
        QString meaning; ///< a name of poshost::deliverypolicy::Meaning
        qint64 count = 0;
    };
    struct Till
    {
        QString shop;           ///< as the till says, whatever it contains
        QString name;           ///< likewise
        QDateTime lastHandOver; ///< to a minute, by the store's clock
        qint64 silentSeconds = 0;
    };

    /// How far back "recent" goes.
    static constexpr int recentSeconds = 300;
    /// A till that has handed over nothing for so long is taken for gone.
    static constexpr int daysUntilGone = 30;

    qint64 lanes = 0;          ///< with messages that wait
    qint64 messages = 0;       ///< in their lines
    bool isEstimated = false;  ///< the messages were reckoned from a sample of the lanes
    qint64 oldestSeconds = 0;  ///< that the oldest of the lanes which are next has waited
    qint64 parked = 0;         ///< messages that somebody has to look at
    qint64 behindParked = 0;   ///< returns whose sale is parked
    qint64 heldQueues = 0;     ///< that wait for the loyalty server or its address
    qint64 pausedAccounts = 0; ///< whose credentials the loyalty server refuses
    qint64 recentAttempts = 0;
    qint64 recentDeliveries = 0;
    QList<Failures> recentFailures;
    QList<Till> tills; ///< the longest silent first

    /// Asks the store, as its owner or as a worker; cheap with a million messages waiting.
    /// @throws StoreError
    static StoreStatus of(Connection& connection);
};

} // namespace orvastore
