// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/sharing/leftchecks.h"
#include "till/sharing/sharedstore.h"

#include <QSet>
#include <QStringList>

#include <functional>

namespace till {

/// Suspended checks that any till of the shop takes up. One object belongs to one thread. What a
/// cashier waits for ends within `[store] timeout` in all; whatever that leaves undone is noted and
/// done at the next chance.
///
/// Operations throw BasicException "databaseError" when the till's file fails.
class SuspendedSharing
{
public:
    /// All must live longer.
    SuspendedSharing(SharedStore& shared, poshost::Database& opened, CheckStore& checks)
        : store(shared), own(checks), left(opened, checks)
    {}

    /// Takes a check out of this till's own: to be followed by settle, which leaves it in the
    /// store.
    /// @throws Failure when it is closed or abandoned
    void begin(const Check& check);
    /// Leaves what was begun to be left, and finishes what was begun to be taken up. A check that
    /// the store has certainly not got at its first try is suspended here again.
    /// @param notices receives a sentence about each check that is where nobody expects it
    void settle(QStringList& notices);
    /// The same for what an earlier call has seen already, so that nothing comes in between of a
    /// cashier who is served: for a process that looks after what tills have left behind.
    /// @param seen what was there at the last look; receives what is there now
    void settleLeftBehind(QSet<QString>& seen, QStringList& notices);
    /// Takes a check out of the store and suspends it here. Asks for nothing else before what is
    /// uncertain is certain.
    /// @param which its identifier, or "last"
    /// @throws Failure with the reason when it is not here then: another till has it, there is
    /// none, or the store does not answer; repeating it then gets the same check
    void takeUp(const QString& which, QStringList& notices);

private:
    enum class Try
    {
        First,
        Further,
    };
    using Choice = std::function<bool(const QString& key)>;
    poshost::Message settleAll(QStringList& notices, const Choice& isChosen = {});
    poshost::Message leave(const Leaving& leaving, Try which, QStringList& notices);
    poshost::Message ask(const TakeUpNote& note);
    poshost::Message take(const TakeUpNote& note, const orvastore::LeftCheck& given);
    poshost::Message tell(const TakeUpNote& note, QStringList& notices);

    SharedStore& store;
    CheckStore& own;
    LeftChecks left;
    QString begun; ///< the mark of a leaving that the store has not heard of yet
};

} // namespace till
