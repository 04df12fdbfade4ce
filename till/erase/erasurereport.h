// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

namespace till {

/// What was done to forget a customer.
struct ErasureReport
{
    int checks = 0;
    int storedChecks = 0; ///< in the store
    int messages = 0;
    int delivered = 0; ///< messages that were delivered for it
    int records = 0;
    int archives = 0;
    int pages = 0; ///< of cases
    int logs = 0;
    /// What still tells who the customer is, and what to do about it: a sentence each.
    QStringList left;

    /// For people; never the whole number.
    QString text(const QString& card) const;
    QString json(const QString& card) const;
};

} // namespace till
