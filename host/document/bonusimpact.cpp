// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/bonusimpact.h"

BonusImpact::BonusImpact(const QSharedPointer<DocumentImpactDetail>& detail)
    : DocumentImpact(detail)
{}

BonusImpact::~BonusImpact() = default;
