// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/amount.h"

#include <limits>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

__extension__ using Wide = __int128;

constexpr qint64 largestAmount = 100'000'000'000'000;

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

/// Appends a decimal digit to value; false when that leaves the allowed range.
bool appendDigit(qint64& value, QChar digit)
{
    value = value * 10 + (digit.unicode() - u'0');
    return value <= largestAmount;
}

std::optional<qint64> readDecimal(QStringView text, int decimals)
{
    text = text.trimmed();
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+')) {
        text = text.sliced(1);
    }
    qint64 value = 0;
    int digits = 0;
    int decimalsSeen = -1; // below 0 until the decimal point
    for (const QChar character : text) {
        if (character == u'.' && decimalsSeen < 0 && digits > 0) {
            decimalsSeen = 0;
            continue;
        }
        if (!isDigit(character)) {
            return std::nullopt;
        }
        ++digits;
        if (decimalsSeen >= decimals) {
            if (character != u'0') {
                return std::nullopt;
            }
            continue;
        }
        if (!appendDigit(value, character)) {
            return std::nullopt;
        }
        decimalsSeen += decimalsSeen >= 0 ? 1 : 0;
    }
    if (digits == 0 || text.endsWith(u'.')) {
        return std::nullopt;
    }
    for (int missing = decimals - qMax(decimalsSeen, 0); missing > 0; --missing) {
        if (!appendDigit(value, u'0')) {
            return std::nullopt;
        }
    }
    return negative ? -value : value;
}

} // namespace

std::optional<Kopecks> readKopecks(QStringView text)
{
    return readDecimal(text, 2);
}

std::optional<Thousandths> readThousandths(QStringView text)
{
    return readDecimal(text, 3);
}

QString writeKopecks(Kopecks amount)
{
    // the size of the smallest number has no positive counterpart in 64 signed bits
    const quint64 size =
        amount < 0 ? 0 - static_cast<quint64>(amount) : static_cast<quint64>(amount);
    return u"%1%2.%3"_s.arg(amount < 0 ? u"-"_s : QString())
        .arg(size / 100)
        .arg(size % 100, 2, 10, QChar(u'0'));
}

qint64 roundedShare(qint64 amount, qint64 part, qint64 whole)
{
    if (part < 0 || whole <= 0) {
        throw std::invalid_argument("a share is a part of something, and not a negative one");
    }
    const Wide dividend = Wide(amount) * part * 2 + whole;
    const Wide divisor = Wide(whole) * 2;
    // the division goes towards 0, rounding goes down
    const Wide result = dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
    if (result > std::numeric_limits<qint64>::max() ||
        result < std::numeric_limits<qint64>::min()) {
        throw std::overflow_error("a share does not fit 64 bits");
    }
    return static_cast<qint64>(result);
}

qint64 checkedSum(qint64 a, qint64 b)
{
    qint64 sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        throw std::overflow_error("a sum of amounts does not fit 64 bits");
    }
    return sum;
}

} // namespace simulator
