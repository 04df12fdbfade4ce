// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QtGlobal>

#include <optional>

/// Between the contracts' doubles and the whole kopecks in which a till counts.
namespace money {

/// The amount in whole kopecks, rounded as QString::number(amount, 'f', 2) rounds it, so that what
/// is counted is what is sent.
/// @param amount in currency units
/// @return kopecks; nothing when the amount is not finite or does not fit
HOST_EXPORT std::optional<qint64> toKopecks(double amount);

/// The amount in currency units nearest to a number of kopecks.
/// @param kopecks a whole number of them
/// @return currency units
HOST_EXPORT double fromKopecks(qint64 kopecks);

/// Half a kopeck in currency units: an amount below it counts as nothing. Whether the amount itself
/// or its size is compared differs and is said at each place.
inline constexpr double halfKopeck = 0.005;

} // namespace money
