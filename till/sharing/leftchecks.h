// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

struct Check;
class CheckStore;

/// A suspended check that was begun to be left in the store.
struct Leaving
{
    QString id;
    int number = 0;
    QString mark; ///< of this leaving: the key by which it is repeated
    QDateTime begunAt;
    QByteArray content; ///< as checkcodec reads it
};

/// A check that the store was asked for.
struct TakeUpNote
{
    QString token; ///< the key by which asking is repeated
    QString which; ///< an identifier, or "last"
    QString id;    ///< of the check once it is durable here; empty before that
};

/// Where suspended checks are on their way between this till's file and the store, durably: what a
/// till that stops in the middle has to ask the store about. From the moment that leaving begins
/// until the store is certain not to have it, a check is neither suspended here nor can it be
/// closed here: its row is an abandoned one, and its content stands with the note.
///
/// Every operation throws BasicException "databaseError" when the database fails and leaves the
/// file as it was.
class LeftChecks
{
public:
    /// Both must live longer.
    LeftChecks(poshost::Database& opened, CheckStore& checks) : database(opened), store(checks) {}

    /// Takes a check out of this till's own, on the way to the store.
    /// @throws Failure when it is closed or abandoned
    void begin(const Check& check, const QString& mark);
    /// Before the store is asked once more than the cashier's own wish did, by whichever process:
    /// from then on nobody can be certain that the store has not got the check.
    /// @return false: there is nothing to ask about any more
    bool askAgain(const Leaving& leaving);
    bool askAgain(const TakeUpNote& note);
    /// The store has not got it at its first asking: it is suspended here again.
    /// @return false: another process has asked meanwhile, so that the store may have it
    bool keepHere(const Leaving& leaving);
    /// The store has it. The note stays, without the content, and says where the check has gone.
    void finish(const Leaving& leaving);
    /// Those of which nobody knows yet whether the store has them, the first one first.
    QList<Leaving> unfinished();

    /// Notes that the store is about to be asked for a check.
    void noteTakeUp(const QString& token, const QString& which);
    /// Suspends here what the store has given.
    void takeIn(const QString& token, const Check& check);
    /// The store has given nothing at its first asking. Does nothing when another process has asked
    /// meanwhile.
    void forgetUnasked(const QString& token);
    /// Nothing is left to do about it.
    void forget(const QString& token);
    QList<TakeUpNote> takeUps();

private:
    poshost::Database& database;
    CheckStore& store;
};

} // namespace till
