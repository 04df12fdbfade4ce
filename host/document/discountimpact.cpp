// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/discountimpact.h"

DiscountImpact::DiscountImpact(const QSharedPointer<DocumentImpactDetail>& detail)
    : DocumentImpact(detail)
{}

DiscountImpact::~DiscountImpact() = default;
