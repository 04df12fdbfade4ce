// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

struct EDiscountType
{
    enum type
    {
        /// Granted by a loyalty system.
        LoyaltyDiscount = 2,
        /// Points spent as payment.
        BonusPayment = 5,
    };
};
