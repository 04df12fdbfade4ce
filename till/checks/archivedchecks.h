// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/archive/checkarchive.h"
#include "till/checks/check.h"

#include <QList>
#include <QString>

#include <functional>

namespace till {

/// The checks of the archive beside a till's database. Every operation throws Failure when what it
/// reads is damaged, BasicException when the database fails.
class ArchivedChecks
{
public:
    /// @param opened must live longer
    explicit ArchivedChecks(poshost::Database& opened) : archive(opened) {}

    bool isEmpty() { return archive.months().isEmpty(); }
    /// The closed checks with that identifier or number.
    QList<Check> named(const QString& which, bool onlySales);
    /// The closed returns of a sale.
    QList<Check> returnsOf(const QString& saleId);
    /// Hands every closed check over.
    void forEachClosed(const std::function<void(const Check&)>& take);
    /// As CheckArchive hands them over.
    void forEachListed(const std::function<bool(const ArchivedCheck&)>& take)
    {
        archive.forEachListed(take);
    }

private:
    CheckArchive archive;
};

} // namespace till
