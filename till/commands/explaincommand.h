// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"
#include "till/explain/explanation.h"
#include "till/options.h"

#include <memory>

namespace till {

class Output;
class RecordFolder;
class Workplace;
struct Check;

/// The command "explain": where the amounts on a closed check come from.
class ExplainCommand
{
public:
    ExplainCommand(Workplace& place, const Options& given, Output& output);
    ~ExplainCommand();

    /// @return Differs where an amount is not explained
    /// @throws Failure when there is nothing that the check could be explained from
    ExitCode run();

private:
    Exchange exchangeOf(const Check& check) const;
    Explanation explainSale(const Check& check) const;
    Explanation explainReturn(const Check& check) const;

    Workplace& workplace;
    const Options& options;
    Output& out;
    std::unique_ptr<RecordFolder> records;
};

} // namespace till
