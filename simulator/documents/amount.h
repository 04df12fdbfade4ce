// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <optional>

namespace simulator {

/// An amount of money or of points, in whole kopecks.
using Kopecks = qint64;

/// A quantity of goods, in thousandths of its unit.
using Thousandths = qint64;

/// Reads decimal text ("12.50", "-3", " 0.5 ") exactly, without passing through a double.
/// Blanks around the number are ignored; zeros beyond the second decimal are allowed.
/// Returns nothing when the text is no plain decimal number, is not in whole kopecks or is beyond
/// +-100,000,000,000,000 kopecks.
std::optional<Kopecks> readKopecks(QStringView text);

/// The same for quantities: three decimals.
std::optional<Thousandths> readThousandths(QStringView text);

/// Writes an amount with two decimals and "." as the decimal point, as in "-12.50".
QString writeKopecks(Kopecks amount);

/// amount x part / whole, rounded half up (below 0 too), computed without overflow.
/// part must not be negative and whole must be above 0; throws std::invalid_argument otherwise and
/// std::overflow_error where the result does not fit.
qint64 roundedShare(qint64 amount, qint64 part, qint64 whole);

/// a + b; throws std::overflow_error where the sum does not fit.
qint64 checkedSum(qint64 a, qint64 b);

} // namespace simulator
