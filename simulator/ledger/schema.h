// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

namespace simulator {

/// Marks a file as one of this program ("OrvS").
inline constexpr int applicationId = 0x4f727653;

/// The version that schemaStatements() makes.
inline constexpr int schemaVersion = 1;

/// The statements that make the tables in an empty database. All amounts are in kopecks, all
/// quantities in thousandths.
QStringList schemaStatements();

} // namespace simulator
