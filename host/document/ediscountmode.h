// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// How the size of a discount is given.
struct EDiscountMode
{
    /// The kinds; the numbers are the host's.
    enum type
    {
        /// Percentage of the line's sum.
        Percent = 1,
        /// A fixed sum of money.
        Sum = 2,
    };
};
