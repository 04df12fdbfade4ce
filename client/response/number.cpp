// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/response/number.h"

#include <array>

namespace orva {

namespace {

/// So many digits make a whole number that a double holds exactly, as it does the power of ten that
/// they are divided by: the quotient is rounded once, which is the nearest double.
constexpr qsizetype exactDigits = 15;
constexpr std::array<double, exactDigits> powersOfTen{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6, 1e7,
                                                      1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

} // namespace

double toNumber(QStringView text)
{
    const bool negative = text.startsWith(u'-');
    const QStringView digits = text.sliced(negative ? 1 : 0);
    qsizetype point = -1;
    qint64 whole = 0;
    for (qsizetype i = 0; i < digits.size(); ++i) {
        const QChar character = digits[i];
        if (isDigit(character) && i <= exactDigits) {
            whole = 10 * whole + (character.unicode() - u'0');
        } else if (character == u'.' && point < 0 && i > 0) {
            point = i;
        } else {
            return text.toDouble();
        }
    }
    const qsizetype decimals = point < 0 ? 0 : digits.size() - point - 1;
    const qsizetype count = digits.size() - (point < 0 ? 0 : 1);
    if (count == 0 || count > exactDigits) {
        return text.toDouble();
    }
    const double value = static_cast<double>(whole) / powersOfTen[static_cast<size_t>(decimals)];
    return negative ? -value : value;
}

} // namespace orva
