// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

#include <optional>

namespace input {

/// What a division leaves: dividend = quotient * divisor + rest, rest below the divisor.
struct Division
{
    quint64 quotient = 0;
    quint64 rest = 0;
};

/// a * b / divisor with the product in full, the same on machines of 32 and 64 bits. Nothing when
/// the quotient does not fit 64 bits.
/// @param divisor above 0
std::optional<Division> dividedProduct(quint64 a, quint64 b, quint64 divisor);

} // namespace input
