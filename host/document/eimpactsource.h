// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// Who grants an impact.
struct EImpactSource
{
    /// The sources; the numbers are the host's.
    enum source
    {
        Cashier = 1,       ///< by hand
        LoyaltySystem = 2, ///< by its answer
    };
};
