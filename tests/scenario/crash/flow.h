// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// One run of the till: its arguments and, for a working till, the cashier's commands.
struct TillRun
{
    QStringList arguments;
    QStringList commands;
};

/// What a flow does with a copy of the books.
enum class Copying
{
    None,
    Backup,
    Restore
};

/// What a shop does while something in it is stopped.
struct Flow
{
    QString name;
    int repetitions = 1;
    /// Done once and undisturbed; what it leaves is where every scene of the flow begins.
    QStringList preparation = {};
    /// The same of other runs, after that.
    QList<TillRun> preparingRuns = {};
    /// Whether the preparation's confirmations stay in the queue.
    bool queueHeld = false;
    /// Whether the server's password changes after the preparation, and the till learns of it when
    /// its queue has been refused.
    bool passwordChanges = false;
    /// Whether the till's file becomes one of the version before checks were handed over.
    bool olderFile = false;
    /// Whether checks go to a store, whose file is delivered in the end.
    bool hasStore = false;
    /// Whether checks are sold without a card, so that no message takes them to the store.
    bool sellsSilent = false;
    /// Whether suspended checks are left in the store and taken up there.
    bool passesSuspended = false;
    /// Whether the store is away when a till that was stopped is started again, which falls back.
    bool storeGoesAway = false;
    /// Whether the books are copied, or made of their copy. The copy has to be absent or whole, and
    /// the books as they are or as the copy has them.
    Copying copying = Copying::None;
    /// What is stopped at each of its calls.
    QList<TillRun> runs = {};
};

/// All flows, each part of them done so many times in a row.
QList<Flow> allFlows(int repetitions);
