// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QString>

namespace till {

class CheckStore;

/// What one closed check did to its card's points, in kopecks.
struct LedgerRow
{
    QString check;
    QString time;   ///< as the check has it, to the second
    int number = 0; ///< the check's at the till
    /// The card's last four digits, "****0017".
    QString card;
    qint64 earned = 0;
    qint64 spent = 0;
    qint64 givenBack = 0;
    qint64 takenBack = 0;
};

/// The points that the till has recorded for its closed checks with a confirmation.
class Ledger
{
public:
    /// Reads the closed checks, in the order of their times, to the second, and identifiers.
    explicit Ledger(CheckStore& store);

    const QList<LedgerRow>& rows() const { return checks; }
    /// Aligned, with a line of totals.
    /// @param width how many characters fit on a line
    QString table(int width) const;
    /// check,card,earned,spent,givenBack,takenBack; amounts with two decimals.
    QString csv() const;
    /// An array of objects with the same fields; the amounts are texts, exact to the kopeck.
    QString json() const;

private:
    QList<LedgerRow> checks;
};

} // namespace till
