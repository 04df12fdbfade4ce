// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// How a card's number reached the till.
enum class ECardNumberType : int
{
    Undefined = 0,      ///< the host does not know
    Barcode = 1,        ///< scanned
    MagneticStripe = 2, ///< swiped
    Manual = 3,         ///< typed by the cashier
    Phone = 4,          ///< a telephone number that stands for the card
};
