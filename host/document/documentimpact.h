// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/documentimpactdetail.h"
#include "host/hostexport.h"

#include <QMap>
#include <QSharedPointer>

/// An impact on a document, made of one detail.
class HOST_EXPORT DocumentImpact
{
public:
    /// @param detail shared with the impact; not null
    explicit DocumentImpact(const QSharedPointer<DocumentImpactDetail>& detail);
    DocumentImpact(const DocumentImpact&) = delete;
    DocumentImpact& operator=(const DocumentImpact&) = delete;
    virtual ~DocumentImpact();

    /// The detail that the impact was made from, which amounts added for positions do not change.
    QSharedPointer<DocumentImpactDetail> getTotals() const { return totals; }

    /// Records an amount, in currency units, for a goods position; a second amount for the same
    /// position adds to the first.
    void addDetailForPosition(int position, double sum);
    /// The recorded amounts by position.
    QMap<int, double> getPositionSums() const { return positionSums; }

private:
    QSharedPointer<DocumentImpactDetail> totals;
    QMap<int, double> positionSums;
};
