// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// Coupons, as far as a host asks a loyalty system about them.
struct ECoupon
{
    /// Whose a coupon is.
    enum Type
    {
        Internal = 0, ///< issued by the host
        External = 1, ///< issued by a loyalty system
    };
};
