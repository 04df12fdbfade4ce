// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/request/fixedtext.h"

#include <array>
#include <cmath>

namespace orva {

namespace {

/// Below it a product is off by far less than what is left to doubt here.
constexpr double largestScaled = 1e14;
/// How far an amount may be from its digits for these to be the nearest beyond doubt: halves are
/// what rounding is about, and those are Qt's.
constexpr double clearlyNearest = 0.25;
/// The digits of the largest one, with a point.
constexpr size_t mostCharacters = 17;

} // namespace

QString fixedText(double value, int decimals)
{
    const double scaled = value * (decimals == 2 ? 100 : 1000);
    const bool isPlain =
        (decimals == 2 || decimals == 3) && scaled >= clearlyNearest && scaled < largestScaled;
    auto rest = isPlain ? static_cast<qint64>(scaled) : 0;
    if (isPlain && scaled - static_cast<double>(rest) > 1 - clearlyNearest) {
        ++rest;
    }
    // what rounds to nothing is Qt's too
    if (rest == 0 || std::abs(scaled - static_cast<double>(rest)) > clearlyNearest) {
        return QString::number(value, 'f', decimals);
    }
    std::array<QChar, mostCharacters> characters;
    size_t first = characters.size();
    for (int digits = 0; rest > 0 || digits <= decimals; ++digits) {
        if (digits == decimals) {
            characters.at(--first) = u'.';
        }
        characters.at(--first) = QChar(static_cast<char16_t>(u'0' + rest % 10));
        rest /= 10;
    }
    return QString(characters.data() + first, static_cast<qsizetype>(characters.size() - first));
}

} // namespace orva
