// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

struct ECoupon
{
    enum Type
    {
        Internal = 0,
        External = 1,
    };
};
