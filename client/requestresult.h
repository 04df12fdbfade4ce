// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/documentbonusrecord.h"
#include "host/document/documentimpact.h"

#include <QList>
#include <QSharedPointer>
#include <QStringList>

namespace orva {

/// What a pre-check grants. A plain value; all four lists are empty at first.
struct RequestResult
{
    /// The discounts of the answer, line by line.
    QList<QSharedPointer<DocumentImpact>> discountImpacts;
    /// The accruals of the answer, line by line.
    QList<DocumentBonusRecord> bonusRecords;
    /// Messages for the cashier.
    QStringList posMessages;
    /// Messages for the client, printed on the slip.
    QStringList checkMessages;

    /// Equal when all four lists are, element by element in order. Impacts are compared as
    /// pointers: two results with distinct impacts of equal content differ, which is meant.
    bool operator==(const RequestResult& other) const;
};

} // namespace orva
