// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

struct EImpactSource
{
    enum source
    {
        Cashier = 1,
        LoyaltySystem = 2,
    };
};
