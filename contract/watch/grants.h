// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/abstractdocument.h"
#include "host/document/bonusimpact.h"
#include "host/document/documentbonusrecord.h"

#include <QList>
#include <QSharedPointer>

namespace watch {

/// What is granted to a document, in whole kopecks: the same for the same goods.
class Grants
{
public:
    Grants(AbstractDocument& check, const QSharedPointer<DocumentCardRecord>& cardRecord);

    /// A tenth of every line of a sale; nothing for a return.
    QList<QSharedPointer<DocumentImpact>> discounts() const { return discountList; }
    /// A twentieth of every line.
    QList<DocumentBonusRecord> accruals() const { return accrualList; }
    /// Half of what the discounts leave.
    double points() const { return pointsToSpend; }
    double earned() const { return pointsToEarn; }

private:
    QList<QSharedPointer<DocumentImpact>> discountList;
    QList<DocumentBonusRecord> accrualList;
    double pointsToSpend = 0;
    double pointsToEarn = 0;
};

/// Places the sum on the lines one after another, on each at most half of what its discount leaves.
QList<QSharedPointer<BonusImpact>> spendings(AbstractDocument& check,
                                             const QSharedPointer<DocumentCardRecord>& cardRecord,
                                             double sum);

} // namespace watch
