// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/output.h"
#include "store/books/storestatus.h"
#include "store/commands/options.h"
#include "store/storeclient.h"

namespace orvastore {

class Connection;

/// The command "orva-store status": how the store stands, once or again and again.
class StatusCommand
{
public:
    StatusCommand(const StoreSettings& given, const Options& what, console::Output& output,
                  console::Output& errorOutput)
        : settings(given), options(what), out(output), errors(errorOutput)
    {}

    /// With --watch until SIGTERM or SIGINT; a store that is away meanwhile is told and asked
    /// again. @return the exit code. @throws StoreError without --watch
    int run();

private:
    void watch(Connection& connection);
    void show(const StoreStatus& status);
    void showFigures(const StoreStatus& status);
    void showTills(const QList<StoreStatus::Till>& tills);
    void showJson(const StoreStatus& status);

    /// On the screen; programs get all.
    static constexpr qsizetype shownTills = 20;

    const StoreSettings settings;
    const Options& options;
    console::Output& out;
    console::Output& errors;
};

} // namespace orvastore
