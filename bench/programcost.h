// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

#include <optional>

namespace bench {

/// What a program took from its start to its end.
struct ProgramCost
{
    double seconds = 0;   ///< of the processor, the system's included
    double megabytes = 0; ///< the most that was resident
    int exitCode = -1;    ///< -1 where a signal ended it
};

/// Runs a program to its end, its output thrown away, and measures it.
///
/// A process begins with the peak of the one that starts it, as far as the system counts, and this
/// one may have grown large. So this program is started once more, as a launcher that is small.
/// @param arguments its file first. @throws std::runtime_error where it does not start
ProgramCost costOfProgram(const QStringList& arguments);

/// The exit code of the launcher, once it has run what it was started for; nothing where this
/// process is none. To be asked first of all in main().
std::optional<int> ranAsLauncher(int argc, char** argv);

} // namespace bench
