// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"
#include "till/options.h"

namespace till {

class Output;
class SharedStore;
class Workplace;

/// The commands that read the checks of all tills of the shop.
class SharedCommands
{
public:
    /// All must live longer. @throws Failure (Usage) when no store is configured
    SharedCommands(Workplace& place, const Options& given, Output& output);

    /// The suspended checks that any till may take up, and behind them the closed ones.
    ExitCode checks();
    /// What the closed checks of the store and of this till did to the points, each check once.
    ExitCode ledger();

private:
    Workplace& workplace;
    SharedStore& store;
    const Options& options;
    Output& out;
};

} // namespace till
