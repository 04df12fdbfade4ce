// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/amount.h"

#include "host/document/money.h"
#include "input/exactquotient.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace till::amount {
namespace {

quint64 sizeOf(qint64 value)
{
    // the size of the smallest number has no positive counterpart in 64 signed bits
    return value < 0 ? 0 - static_cast<quint64>(value) : static_cast<quint64>(value);
}

QString scaledText(qint64 value, int decimals)
{
    QString digits = QString::number(value < 0 ? -value : value);
    digits = digits.rightJustified(decimals + 1, u'0');
    digits.insert(digits.size() - decimals, u'.');
    return value < 0 ? u'-' + digits : digits;
}

} // namespace

QString moneyText(qint64 kopecks)
{
    return scaledText(kopecks, 2);
}

QString quantityText(qint64 thousandths, bool fractional)
{
    return !fractional && thousandths % 1000 == 0 ? QString::number(thousandths / 1000)
                                                  : scaledText(thousandths, 3);
}

std::optional<qint64> readDecimal(QStringView text, int decimals)
{
    constexpr qsizetype mostDigits = 15;
    const qsizetype point = text.indexOf(u'.');
    const QStringView whole = point < 0 ? text : text.first(point);
    const QStringView fraction = point < 0 ? QStringView() : text.sliced(point + 1);
    if (whole.isEmpty() || (point >= 0 && fraction.isEmpty()) || fraction.size() > decimals ||
        whole.size() + fraction.size() > mostDigits) {
        return std::nullopt;
    }
    qint64 value = 0;
    for (const QStringView part : {whole, fraction}) {
        for (const QChar digit : part) {
            if (digit < u'0' || digit > u'9') {
                return std::nullopt;
            }
            value = value * 10 + (digit.unicode() - u'0');
        }
    }
    for (qsizetype i = fraction.size(); i < decimals; ++i) {
        value *= 10;
    }
    return value;
}

qint64 proportion(qint64 amount, qint64 part, qint64 whole)
{
    const quint64 divisor = sizeOf(whole);
    const auto exact = input::dividedProduct(sizeOf(amount), sizeOf(part), divisor);
    if (!exact.has_value()) {
        throw std::overflow_error("a proportion does not fit 64 bits");
    }
    const bool negative = (amount < 0) != (part < 0);
    // upwards is away from 0 above it and towards 0 below
    const quint64 tillNext = divisor - exact->rest;
    const bool next = negative ? exact->rest > tillNext : exact->rest >= tillNext;
    const quint64 size = exact->quotient + (next ? 1 : 0);
    return static_cast<qint64>(negative ? 0 - size : size);
}

qint64 lineSum(qint64 priceKopecks, qint64 thousandths)
{
    return proportion(priceKopecks, thousandths, 1000);
}

std::optional<qint64> kopecksNotAbove(double value)
{
    std::optional<qint64> kopecks = money::toKopecks(value);
    if (kopecks && money::fromKopecks(*kopecks) > value) {
        --*kopecks;
    }
    return kopecks;
}

} // namespace till::amount
