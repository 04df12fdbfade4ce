// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"
#include "till/options.h"

namespace poshost {
class Database;
} // namespace poshost

namespace till {

class CheckStore;
class Output;
class RecordFolder;

/// The command "explain": where the amounts on a closed check come from.
class ExplainCommand
{
public:
    /// @param recordFolder null when nothing is recorded; all must live longer
    ExplainCommand(CheckStore& checks, poshost::Database& database,
                   const RecordFolder* recordFolder, const Options& given, Output& output)
        : store(checks), till(database), records(recordFolder), options(given), out(output)
    {}

    /// @return Differs where an amount is not explained
    /// @throws Failure when there is nothing that the check could be explained from
    ExitCode run();

private:
    CheckStore& store;
    poshost::Database& till;
    const RecordFolder* const records;
    const Options& options;
    Output& out;
};

} // namespace till
