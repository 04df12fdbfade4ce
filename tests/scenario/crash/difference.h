// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

/// How far a till's closed checks and the server's ledger are apart.
struct Difference
{
    int lost = 0;         ///< closed and to be confirmed, but not booked
    int doubled = 0;      ///< booked more than once, or without a closed check
    int wrongAmounts = 0; ///< booked with other points
    int wrongCards = 0;   ///< cards whose balance is not what the till's checks make of it
    int undelivered = 0;  ///< messages still in the queue, parked ones included
    QStringList damaged;  ///< what the databases' own checks say

    bool isNone() const;
    QString text() const;

    /// Compares the books of a till that alone has used the server. Cards begin with what the
    /// built-in rules give them.
    static Difference between(const QString& tillDatabase, const QString& serverDatabase);
};
