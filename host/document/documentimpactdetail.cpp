// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/documentimpactdetail.h"

DocumentImpactDetail::DocumentImpactDetail() = default;

QVariant DocumentImpactDetail::getCardType() const
{
    return cardRecord.isNull() ? QVariant() : QVariant(cardRecord->getLoyaltySystemType());
}
