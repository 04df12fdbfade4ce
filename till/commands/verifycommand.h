// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"
#include "till/options.h"

class Config;
class QUrl;

namespace till {

class Output;

namespace verify {
struct Results;
struct Stock;
} // namespace verify

/// Tries a loyalty server for testing: reads which one that is, has the cases played and shows what
/// came of them.
class VerifyCommand
{
public:
    VerifyCommand(const Options& given, Output& output, Output& errorOutput)
        : options(given), out(output), errors(errorOutput)
    {}

    /// @throws Failure, BasicException
    ExitCode run();

private:
    QUrl markedAddress(const Config& config) const;
    verify::Stock stockOf(const Config& config) const;
    verify::Results tried(Config& config) const;
    void show(const verify::Results& results) const;

    const Options& options;
    Output& out;
    Output& errors;
};

} // namespace till
