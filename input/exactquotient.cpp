// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "input/exactquotient.h"

namespace input {
namespace {

constexpr int halfBits = 32;

quint64 upperHalf(quint64 value)
{
    return value >> halfBits;
}

quint64 lowerHalf(quint64 value)
{
    return value & 0xffffffffU;
}

/// A number of 128 bits.
struct Wide
{
    quint64 high = 0;
    quint64 low = 0;
};

/// As on paper, with digits of 32 bits: no sum of the middle column exceeds 64 bits.
Wide product(quint64 a, quint64 b)
{
    const quint64 lowest = lowerHalf(a) * lowerHalf(b);
    const quint64 crossed = upperHalf(a) * lowerHalf(b) + upperHalf(lowest);
    const quint64 middle = lowerHalf(a) * upperHalf(b) + lowerHalf(crossed);
    return {upperHalf(a) * upperHalf(b) + upperHalf(crossed) + upperHalf(middle),
            (middle << halfBits) | lowerHalf(lowest)};
}

/// Bit by bit, for a quotient that fits: value.high is below the divisor.
Division divided(Wide value, quint64 divisor)
{
    constexpr int highestBit = 63;
    Division result{.quotient = 0, .rest = value.high};
    for (int bit = highestBit; bit >= 0; --bit) {
        const bool carry = (result.rest >> highestBit) != 0;
        result.rest = (result.rest << 1) | ((value.low >> bit) & 1U);
        result.quotient <<= 1;
        if (carry || result.rest >= divisor) {
            result.rest -= divisor;
            result.quotient |= 1U;
        }
    }
    return result;
}

} // namespace

std::optional<Division> dividedProduct(quint64 a, quint64 b, quint64 divisor)
{
    const Wide value = product(a, b);
    if (value.high >= divisor) {
        return std::nullopt;
    }
    if (value.high == 0) {
        return Division{.quotient = value.low / divisor, .rest = value.low % divisor};
    }
    return divided(value, divisor);
}

} // namespace input
