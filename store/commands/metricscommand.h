// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/output.h"
#include "store/commands/options.h"
#include "store/storeclient.h"

namespace orvastore {

/// The command "orva-store metrics": shows how the store stands to a monitoring on this machine,
/// at /metrics, until it is stopped. Each visit asks the store anew. Labels are words of this
/// program alone: no shop, till, card or check is named.
class MetricsCommand
{
public:
    MetricsCommand(const StoreSettings& given, const Options& what, console::Output& output)
        : settings(given), options(what), out(output)
    {}

    /// @return the exit code. @throws Failure for an address that is not this machine's alone, or
    /// that cannot be listened on
    int run();

private:
    const StoreSettings settings;
    const Options& options;
    console::Output& out;
};

} // namespace orvastore
