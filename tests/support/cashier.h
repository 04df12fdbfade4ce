// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/crash/difference.h"

#include <QString>
#include <QStringList>

/// What the cashier was told before the till stopped, and so relies on.
class Cashier
{
public:
    /// Reads what a working till answered to the commands it was given, in their order.
    void read(const QStringList& commands, const QString& output);

    /// What is wrong about the till's books after a stop, in a sentence; empty when they hold
    /// everything that was acknowledged and nothing beyond the command under way.
    QString complaint(const TillBooks& before, const TillBooks& after) const;

    /// The commands that were answered with an error, each with its answer.
    const QStringList& refusals() const { return refused; }

private:
    void acknowledge(const QString& command);
    void unanswered(const QString& command);
    bool takesSuspended(const QString& command) const;

    int closed = 0;
    int suspended = 0; ///< net change
    bool restored = false;
    /// What the command under way may have done already.
    int perhapsClosed = 0;
    int perhapsSuspended = 0;
    QStringList refused;
};
