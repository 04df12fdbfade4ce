// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// What takes something off a line.
struct EDiscountType
{
    /// The kinds, as far as loyalty systems use them; the numbers are the host's.
    enum type
    {
        /// Granted by a loyalty system.
        LoyaltyDiscount = 2,
        /// Points spent as payment.
        BonusPayment = 5,
    };
};
