// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/output.h"
#include "host/queue/queueentry.h"
#include "store/commands/options.h"
#include "store/storeclient.h"

namespace orvastore {

/// The commands of "orva-store queue".
class QueueCommands
{
public:
    QueueCommands(const StoreSettings& given, const Options& what, console::Output& output)
        : settings(given), options(what), out(output)
    {}

    /// @return the exit code. @throws StoreError, Failure
    int run();

private:
    void list(const QList<poshost::QueueEntry>& entries);
    void show(const poshost::QueueContent& content);
    int change(bool found, const QString& done, const QString& none);

    const StoreSettings settings;
    const Options& options;
    console::Output& out;
};

} // namespace orvastore
