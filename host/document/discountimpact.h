// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/documentimpact.h"

/// A discount on a goods line.
class HOST_EXPORT DiscountImpact : public DocumentImpact
{
public:
    explicit DiscountImpact(const QSharedPointer<DocumentImpactDetail>& detail);
    ~DiscountImpact() override;
};
