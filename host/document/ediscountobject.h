// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

struct EDiscountObject
{
    enum type
    {
        Check = 0,
        /// One goods line.
        Position = 1,
    };
};
