// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/documentimpactdetail.h"
#include "host/hostexport.h"

#include <QMap>
#include <QSharedPointer>

/// An impact on a document, made of one detail. A loyalty system makes it and hands it to the host,
/// who checks and applies it; both share it from then on.
class HOST_EXPORT DocumentImpact
{
public:
    /// An impact without amounts by position.
    /// @param detail shared with the impact; not null
    explicit DocumentImpact(const QSharedPointer<DocumentImpactDetail>& detail);
    DocumentImpact(const DocumentImpact&) = delete;
    DocumentImpact& operator=(const DocumentImpact&) = delete;
    virtual ~DocumentImpact();

    /// The detail that the impact was made from, which amounts added for positions do not change;
    /// never null, and shared.
    QSharedPointer<DocumentImpactDetail> getTotals() const { return totals; }

    /// Records an amount for a goods line; a second amount for the same line adds to the first.
    /// @param position position number of the line; need not be the detail's
    /// @param sum in currency units
    void addDetailForPosition(int position, double sum);
    /// The recorded amounts: position number to currency units.
    QMap<int, double> getPositionSums() const { return positionSums; }

private:
    QSharedPointer<DocumentImpactDetail> totals;
    QMap<int, double> positionSums;
};
