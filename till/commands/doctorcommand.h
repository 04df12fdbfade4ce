// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"

namespace till {

class Output;
struct Options;

namespace doctor {

/// The command "doctor": prints the report, with --fix after applying what is safe. @return Failed
/// when a check fails, otherwise Ok
/// @param errors where it is told, before an end in a hurry, that the report could not be printed
ExitCode run(const Options& options, Output& out, Output& errors);

} // namespace doctor

} // namespace till
