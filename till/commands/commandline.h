// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/options.h"

#include <optional>

namespace till {

/// Reads the command line. @return the exit code when there is nothing left to do: help or the
/// version was printed, or the command line cannot be used and the error was printed.
std::optional<int> readCommandLine(int argc, const char* const* argv, Options& options);

/// "all", "none" or a sum of points in currency units. @throws Failure (Usage)
PointsChoice readPoints(const QString& text);

/// A sum of money in kopecks. @throws Failure (Usage)
qint64 readSum(const QString& text);

} // namespace till
