// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"

namespace till {

struct Options;
class Output;
class Workplace;

/// Moves old checks into the archive now, as the service does by and by, and says what the archive
/// holds.
class ArchiveCommand
{
public:
    ArchiveCommand(Workplace& place, const Options& given, Output& output, Output& errorOutput)
        : workplace(place), options(given), out(output), errors(errorOutput)
    {}

    /// @throws Failure or BasicException with what is wrong; what was moved until then is moved
    ExitCode run();

private:
    int moveAll();
    void compact();
    void print(int moved);

    Workplace& workplace;
    const Options& options;
    Output& out;
    Output& errors;
};

} // namespace till
