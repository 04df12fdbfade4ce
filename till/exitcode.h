// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/exitcode.h"

namespace till {

/// What the program tells the shell.
enum class ExitCode : int
{
    Ok = console::exitcode::ok,
    /// The operation failed.
    Failed = console::exitcode::failed,
    /// The command line, the configuration or a check file cannot be used.
    Usage = console::exitcode::usage,
    /// The sale was closed, but without the loyalty system.
    WithoutLoyalty = 3,
    /// What was compared differs: a replay from its record, a check from what explains it.
    Differs = 4,
    /// What was asked for is done, but could not be written to the standard output.
    NotShown = 5,
    /// Settings are there that say something else than those to be written.
    WouldOverwrite = 6,
};

} // namespace till
