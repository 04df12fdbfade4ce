// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/bonusimpact.h"
#include "host/document/documentbonusrecord.h"
#include "till/checks/check.h"

#include <QStringList>

namespace till {

/// Puts what a loyalty system grants on a check, and takes it off again. What the system says is
/// not trusted: an amount that is not finite, negative or larger than what is left of its line, and
/// an impact on a line that the check does not have or of another system, is refused with a
/// sentence for the cashier; the rest is applied.
class ImpactApplier
{
public:
    /// @param noticeList where the sentences go
    ImpactApplier(Check& target, int loyaltySystemType, QStringList& noticeList)
        : check(target), systemType(loyaltySystemType), notices(noticeList)
    {}
    /// Says how many more were left out than have a sentence of their own.
    ~ImpactApplier();
    ImpactApplier(const ImpactApplier&) = delete;
    ImpactApplier& operator=(const ImpactApplier&) = delete;

    /// Takes everything of the system off the check: impacts, accruals, messages.
    void takeOff();
    /// Applies discounts. One that would lead below the line's minimum price is cut to what is
    /// left above it, unless it says that the minimum is ignored.
    void applyDiscounts(const QList<QSharedPointer<DocumentImpact>>& impacts);
    /// Applies points spent: each impact's totals are set to the sum recorded for its position in
    /// whole kopecks. @return the points placed, in kopecks.
    qint64 applyPoints(const QList<QSharedPointer<BonusImpact>>& impacts);
    /// Notes what each line is awarded as long as no points are spent.
    void noteAccruals(const QList<DocumentBonusRecord>& records);
    /// Counts what each line earns: its award scaled by (G - D - P) / (G - D), rounded half up.
    void countEarned();

private:
    /// The line of an impact; null, with a notice, when there is none.
    Line* lineOf(const QSharedPointer<DocumentImpact>& impact);
    /// The amount in kopecks; nothing, with a notice, when the line cannot take it.
    std::optional<qint64> checked(double amount, const Line& line, const QString& what);

    /// @param sentence what a cashier is told, as long as there are few
    template <typename Sentence>
    void leaveOut(Sentence sentence);

    Check& check;
    int systemType;
    QStringList& notices;
    int leftOut = 0;
};

} // namespace till
