// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

struct EDiscountMode
{
    enum type
    {
        /// Percentage of the line's sum.
        Percent = 1,
        /// A fixed sum of money.
        Sum = 2,
    };
};
