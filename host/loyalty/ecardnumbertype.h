// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// How a card's number reached the till.
enum class ECardNumberType : int
{
    Undefined = 0,
    Barcode = 1,
    MagneticStripe = 2,
    Manual = 3,
    Phone = 4,
};
