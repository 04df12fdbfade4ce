// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/erase/customer.h"
#include "till/erase/erasurereport.h"

#include <QStringList>

namespace till {

/// Takes a customer out of files: records, one or many in a file, support archives, and logs. What
/// a file is, its content says, whatever its name. Files of other kinds are never changed; one that
/// holds the number is told.
class FileErasure
{
public:
    /// @param folders that are looked through, not those in them
    /// @param databaseFile that is not looked at, nor what SQLite keeps beside it
    /// @param logs files that somebody may be writing to: they are changed in place, byte for byte
    FileErasure(const QStringList& folders, const QString& databaseFile, const QStringList& logs,
                Customer& who);

    /// Learns the names in records and archives.
    void look();
    /// @throws nothing: what cannot be read or written is left and told
    void erase(ErasureReport& report);

private:
    void eraseFile(const QString& fileName, ErasureReport& report);
    void eraseLog(const QString& fileName, ErasureReport& report);

    QStringList files;
    const QStringList logFiles;
    Customer& customer;
};

} // namespace till
