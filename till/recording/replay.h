// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/recording/record.h"

#include <QString>

namespace till {

/// Calls a plug-in as a record says, with the recorded answers, clock and configuration, and
/// records what it does this time. Needs no network, no server and no queue, and leaves nothing
/// behind.
class Replay
{
public:
    /// @param plugin the plug-in's file; loaded anew for every record
    explicit Replay(const QString& plugin) : file(plugin) {}

    /// @return a record for each call, of this call alone: it begins with a document of its own
    /// @throws Failure when the plug-in cannot be loaded or the record has a call that this till
    /// does not know
    QList<Record> run(const Record& record) const;

private:
    QString file;
};

} // namespace till
