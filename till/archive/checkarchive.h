// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/archive/archivefile.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

/// The archive beside a till's database. Which files belong to it, and how much of each counts,
/// stands in the database's table "archives". What cannot be read throws Failure, or BasicException
/// when it is the database.
class CheckArchive
{
public:
    /// @param opened must live longer
    explicit CheckArchive(poshost::Database& opened) : database(opened) {}

    /// A month's file.
    struct Month
    {
        QString month; ///< "2026-03"
        QString file;  ///< name in the folder
        qint64 length = 0;
        int checks = 0;
    };

    /// The folder, which need not be there.
    QString folder() const;
    /// A file of the folder that keeps others out while one writes there.
    QString lockFile() const;
    QString pathOf(const Month& month) const;
    /// Oldest first.
    QList<Month> months();

    /// Hands over what the archive holds without contents, newest month first and in it what was
    /// changed last first. @param take returns false when it wants no more
    void forEachListed(const std::function<bool(const ArchivedCheck&)>& take);
    /// Hands over everything, oldest month first. @param take returns false when it wants no more
    void forEach(const std::function<bool(const ArchivedCheck&)>& take);
    /// What is wanted, with its content.
    QList<ArchivedCheck> find(const std::function<bool(const ArchivedCheck&)>& wanted);

    /// Writes checks of one month behind what the month's file holds; counts them in only when the
    /// caller calls countIn.
    Month write(const QString& month, const QList<ArchivedCheck>& checks);
    /// Has a month's file count as far as write has said, in the caller's transaction.
    void countIn(const Month& month);
    /// Writes the months anew in which change changes something, one after the other; each is
    /// exchanged as a whole.
    /// @param change returns true when it has changed the check
    /// @return how many checks were changed
    int rewrite(const std::function<bool(ArchivedCheck&)>& change);
    /// Removes files of the folder that do not count: what a power cut has left.
    void removeLeftovers();

private:
    int rewriteMonth(const Month& month, const std::function<bool(ArchivedCheck&)>& change);

    poshost::Database& database;
};

} // namespace till
