// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"

namespace till {

struct Options;
class Output;
class Workplace;

/// Copies of a till's books, and the way back.
namespace backupcommands {

/// @throws Failure or BasicException with what is wrong; then there is no copy
ExitCode backup(Workplace& workplace, const Options& options, Output& out);
/// Opens no workplace: the database may be damaged or missing.
/// @throws Failure or BasicException with what is wrong; the books are then as they were
ExitCode restore(const Options& options, Output& out);

} // namespace backupcommands
} // namespace till
