// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

namespace tests {

/// How many checks of which kind a till's database holds, as a cashier would miss them.
struct CheckCount
{
    int closed = 0;
    int suspended = 0;

    static CheckCount read(const QString& tillDatabase);
};

/// Gives commands to a till at work (`orva-till work`) and knows what was answered: what the till
/// said is done, the cashier relies on.
class Cashier
{
public:
    /// Reads what a working till answered to the commands it was given, in their order.
    void read(const QStringList& commands, const QString& output);

    /// How many commands were answered with "ok".
    int done() const { return acknowledged; }
    /// The commands that were answered with an error, each with its answer.
    const QStringList& refusals() const { return refused; }

    /// What is wrong about the till's checks after a stop, in a sentence; empty when it has
    /// everything that was acknowledged and nothing beyond the command under way.
    QString complaint(const CheckCount& before, const CheckCount& after) const;

private:
    void acknowledge(const QString& command);
    void unanswered(const QString& command);
    static bool suspends(const QString& command);
    bool takesSuspended(const QString& command) const;

    int acknowledged = 0;
    int closed = 0;
    int suspended = 0; ///< net change
    bool restored = false;
    /// What the command under way may have done already.
    int perhapsClosed = 0;
    int perhapsSuspended = 0;
    QStringList refused;
};

} // namespace tests
