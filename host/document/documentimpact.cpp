// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/documentimpact.h"

DocumentImpact::DocumentImpact(const QSharedPointer<DocumentImpactDetail>& detail) : totals(detail)
{}

DocumentImpact::~DocumentImpact() = default;

void DocumentImpact::addDetailForPosition(int position, double sum)
{
    positionSums[position] += sum;
}
