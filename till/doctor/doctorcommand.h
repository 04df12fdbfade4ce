// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"

namespace till {

class Output;
struct Options;

namespace doctor {

/// The command "doctor": prints the report. @return Failed when a check fails, otherwise Ok
ExitCode run(const Options& options, Output& out);

} // namespace doctor

} // namespace till
