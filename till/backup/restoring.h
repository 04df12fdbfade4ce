// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace till {

/// What a restored till knows and what it cannot know.
struct RestoreReport
{
    QDateTime madeAt;    ///< when the copy was made
    int checks = 0;      ///< in the database and in the archive
    int undelivered = 0; ///< messages that count as perhaps sent
    int nextNumber = 0;  ///< of the next check
    /// What was there before and is kept under this name, with its archive; empty: nothing was.
    QString setAside;
    /// Whether the queue needs its credentials anew.
    bool needsCredentials = false;
};

/// Puts the books of a copy in a till's place. What was not delivered when the copy was made counts
/// as attempted: the server may have it, and is told of it once more. The next check's number is
/// behind the highest of the copy, of the books that are there, of their archive, and the one
/// given. Books that are there are kept under another name beside it, never written over.
/// @param copy a file that backupfile::write has made; stays as it is
/// @param databaseFile of the till; nobody may have it open
/// @param lastNumber the highest number that the loyalty server knows of this till
/// @throws Failure or BasicException with what is wrong; the till's books are then as they were
RestoreReport restoreBackup(const QString& copy, const QString& databaseFile,
                            std::optional<int> lastNumber);

} // namespace till
