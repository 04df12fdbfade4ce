// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Money in whole kopecks and quantities in thousandths: their texts and their arithmetic.
namespace till::amount {

/// The largest amount, in kopecks, that a line or a check may have. Far below what a double holds
/// exactly, so nothing is lost on the way to the contracts.
inline constexpr qint64 maximumKopecks = 1'000'000'000'000;
/// The largest quantity in thousandths.
inline constexpr qint64 maximumThousandths = 1'000'000'000;

/// "1234.50", "-0.05"
QString moneyText(qint64 kopecks);
/// "2" for pieces, "0.250" for a weight
QString quantityText(qint64 thousandths, bool fractional);

/// A number with at most so many decimals, scaled by that power of ten: ("12.5", 2) -> 1250.
/// Nothing when the text is not such a number, without sign and with "." as decimal point, or has
/// more than 15 digits.
std::optional<qint64> readDecimal(QStringView text, int decimals);

/// amount * part / whole rounded to the nearest integer, a half upwards. whole must be above 0, the
/// result must fit; throws std::overflow_error where it is beyond 64 bits.
qint64 proportion(qint64 amount, qint64 part, qint64 whole);

/// The sum of a line: price times quantity, rounded half up to kopecks.
qint64 lineSum(qint64 priceKopecks, qint64 thousandths);

/// A contract's amount in whole kopecks that is not above it; nothing when it is not finite or does
/// not fit.
std::optional<qint64> kopecksNotAbove(double value);

} // namespace till::amount
