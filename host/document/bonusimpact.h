// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/documentimpact.h"

/// Points spent on a goods line.
class HOST_EXPORT BonusImpact : public DocumentImpact
{
public:
    /// @param detail shared with the impact; not null, with BonusPayment as its discount type
    explicit BonusImpact(const QSharedPointer<DocumentImpactDetail>& detail);
    ~BonusImpact() override;
};
