// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/doctor/finding.h"

#include <optional>

namespace till::doctor {

/// Why a configuration is not TOML, in the parser's words, with line, column and the line itself. A
/// value that may be a secret is shown neither there nor in the mend: that of a key which is one,
/// and that of a key which nobody knows.
/// @return nothing when the parser takes the file, or it cannot be read
std::optional<Finding> lookAtSyntax(const QString& file);

} // namespace till::doctor
