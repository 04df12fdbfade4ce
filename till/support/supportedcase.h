// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/checkstore.h"
#include "till/support/supportarchive.h"

#include <QTemporaryDir>

#include <memory>

namespace till {

class RecordFolder;

/// The checks and records of a support archive as if they were a till's own: a database and a
/// folder of records in a temporary place, which goes with the object.
class SupportedCase
{
public:
    /// @throws Failure (Usage) when the archive holds no checks, or damaged ones
    SupportedCase(const SupportArchive& archive, const QString& fileName);
    ~SupportedCase();
    SupportedCase(const SupportedCase&) = delete;
    SupportedCase& operator=(const SupportedCase&) = delete;

    poshost::Database& database() { return *opened; }
    CheckStore& checks() { return *store; }
    const RecordFolder* records() const { return folder.get(); }

private:
    void takeChecks(const SupportArchive& archive);
    void takeRecords(const QByteArray& content);

    QTemporaryDir place;
    QSharedPointer<poshost::Database> opened;
    std::unique_ptr<CheckStore> store;
    std::unique_ptr<RecordFolder> folder;
};

} // namespace till
