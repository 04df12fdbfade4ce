// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/filelock.h"
#include "till/archive/checkarchive.h"

#include <QList>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

/// Moves old checks from a till's database into the archive beside it, in steps that hold up no
/// sale. A check that is open, suspended or not delivered never goes, nor a return before its sale.
class CheckArchiving
{
public:
    /// Keeps others from doing the same as long as it lives.
    /// @param opened must live longer
    /// @param days how long a check stays after its last change
    /// @throws Failure or BasicException when nothing can be written beside the database
    CheckArchiving(poshost::Database& opened, int days);

    /// False: somebody else does it, and steps do nothing.
    bool isMine() const { return lock.isHeld(); }
    /// Moves some checks that are old enough: first into the month's file, which is synced, then
    /// out of the database and the file's part that counts in one transaction, so that each is in
    /// the one or in the other whatever happens.
    /// @return how many were moved; 0: none is old enough, and the next step begins anew
    /// @throws Failure or BasicException when a file fails; then nothing is moved
    int step();
    /// Gives some of the pages that are free back to the disk.
    /// @return false: none is free, or the file was made by a former version and not yet compacted
    bool giveBackPages();

private:
    struct Candidate;

    QList<Candidate> candidates();
    bool isReady(const Candidate& candidate, const QList<Candidate>& chosen);
    void move(const QList<Candidate>& chosen);

    poshost::Database& database;
    CheckArchive archive;
    const poshost::FileLock lock;
    const int keepDays;
    qint64 behind = 0; ///< the change up to which was looked
};

} // namespace till
