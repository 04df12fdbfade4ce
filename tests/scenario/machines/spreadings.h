// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

namespace machines {

/// Spreads points over so many random answers and digests what is placed where: each position and
/// the bits of each sum. The same number of spreadings yields the same digest on every machine,
/// with every compiler and under every locale. Always the same answers: most in whole kopecks, each
/// eighth with doubles that no decimal number stands for.
/// @return SHA-256 in hexadecimal digits
QByteArray digestOfSpreadings(int count);

} // namespace machines
