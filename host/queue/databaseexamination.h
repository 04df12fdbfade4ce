// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"
#include "host/queue/queueentry.h"

#include <QString>
#include <optional>

namespace poshost {

/// How a till's database stands, found out without changing anything about it.
struct HOST_EXPORT DatabaseExamination
{
    /// What the file is good for.
    enum class Integrity
    {
        Sound,      ///< checked from end to end
        Damaged,    ///< SQLite says so
        Unfinished, ///< the file is too large to be checked in the time given
        Unreadable, ///< the file cannot be opened
    };

    /// What the file is good for.
    Integrity integrity = Integrity::Unreadable;
    Message trouble;         ///< what is wrong, a sentence; empty when the file is sound
    int schemaVersion = 0;   ///< as the file says
    int newestVersion = 0;   ///< that this program knows
    bool isTillFile = false; ///< whether the queue's tables are there

    QueueCounts counts;                     ///< empty unless the schema is the newest
    std::optional<QueueEntry> firstWaiting; ///< the one that was stored first, and so below
    std::optional<QueueEntry> firstPaused;  ///< for its authorization or address
    std::optional<QueueEntry> firstParked;  ///< left out until somebody looks at it

    /// Looks at an existing file. Blocks for the limit at most. Never throws.
    /// @param fileName its path
    /// @param milliseconds limit of the whole
    /// @return what was found
    static DatabaseExamination of(const QString& fileName, int milliseconds);
};

} // namespace poshost
