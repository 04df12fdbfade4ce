// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/output.h"
#include "store/commands/options.h"
#include "store/storeclient.h"

namespace orvastore {

class Connection;

/// "orva-store returns": what people see of the reservations of returns, and do to them.
class ReturnsCommands
{
public:
    ReturnsCommands(const StoreSettings& store, const Options& given, console::Output& output)
        : settings(store), options(given), out(output)
    {}

    /// @return the exit code. @throws Failure, StoreError
    int run();

private:
    void list(Connection& connection);
    void release(Connection& connection);

    const StoreSettings settings;
    const Options& options;
    console::Output& out;
};

} // namespace orvastore
