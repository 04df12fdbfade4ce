// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/loyalty/ecardnumbertype.h"

#include <QString>

namespace loyalty {

/// What the cashier's keyboard, scanner or reader delivered as a card's number.
struct CardNumberInputData
{
    /// The whole input, of a stripe with its separators; nothing is cut off.
    QString text;
    /// How it came, as far as the host knows.
    ECardNumberType type = ECardNumberType::Undefined;
};

} // namespace loyalty
