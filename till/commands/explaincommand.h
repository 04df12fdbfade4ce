// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"
#include "till/options.h"

namespace poshost {
class Database;
} // namespace poshost

namespace orvastore {
struct KeptCheck;
} // namespace orvastore

namespace till {

class CheckStore;
class Output;
class RecordFolder;
class SharedStore;
struct Check;

/// The command "explain": where the amounts on a closed check come from.
class ExplainCommand
{
public:
    /// @param recordFolder null when nothing is recorded; all must live longer
    ExplainCommand(CheckStore& checks, poshost::Database& database,
                   const RecordFolder* recordFolder, const Options& given, Output& output)
        : store(checks), till(database), records(recordFolder), options(given), out(output)
    {}

    /// A check that is not here is looked for in the store: then what it shows itself is all that
    /// there is to explain it from, since what was recorded stands at its till.
    /// @param shared null when there is none
    /// @param notes receives where the check is from
    /// @return Differs where an amount is not explained
    /// @throws Failure when there is nothing that the check could be explained from
    ExitCode run(SharedStore* shared, Output& notes);

private:
    ExitCode write(const Check& check, SharedStore* shared);
    ExitCode explainOther(const orvastore::KeptCheck& kept, SharedStore* shared, Output& notes);
    CheckStore& store;
    poshost::Database& till;
    const RecordFolder* const records;
    const Options& options;
    Output& out;
};

} // namespace till
