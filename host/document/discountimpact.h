// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/documentimpact.h"

/// A discount on a goods line.
class HOST_EXPORT DiscountImpact : public DocumentImpact
{
public:
    /// @param detail shared with the impact; not null, with LoyaltyDiscount as its discount type
    explicit DiscountImpact(const QSharedPointer<DocumentImpactDetail>& detail);
    ~DiscountImpact() override;
};
