// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace orva {

/// Character for character what QString::number(value, 'f', decimals) makes of an amount; quicker
/// for the amounts that checks consist of.
/// @param decimals 2 or 3; others are left to Qt
QString fixedText(double value, int decimals);

} // namespace orva
