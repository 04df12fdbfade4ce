// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// What a discount is granted on.
struct EDiscountObject
{
    /// The kinds; the numbers are the host's.
    enum type
    {
        /// The whole check.
        Check = 0,
        /// One goods line.
        Position = 1,
    };
};
