// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace orva {

/// Half a kopeck in currency units: an amount below it counts as nothing. Whether the amount itself
/// or its size is compared differs and is said at each place. The host has the same figure for its
/// own count of money (host/document/money.h), which no contract promises a plug-in.
inline constexpr double zeroThreshold = 0.005;

} // namespace orva
