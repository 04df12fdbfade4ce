// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/output.h"
#include "store/commands/options.h"
#include "store/storeclient.h"

namespace orvastore {

/// What people do about suspended checks in the store: needs the rights of who owns it.
class SuspendedCommands
{
public:
    SuspendedCommands(const StoreSettings& given, const Options& wanted, console::Output& output)
        : settings(given), options(wanted), out(output)
    {}

    /// @return the exit code. @throws Failure, StoreError
    int run();

private:
    const StoreSettings settings;
    const Options& options;
    console::Output& out;
};

} // namespace orvastore
