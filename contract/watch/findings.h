// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/watch/rule.h"

#include <QString>

#include <atomic>

namespace watch {

/// Tells a host's developer what was found: a line each, appended to the file that
/// POSHOST_WATCH_FILE names, otherwise on the standard error. A line is out when the call returns,
/// so that nothing is lost when the host ends in the middle. Any thread.
class Findings
{
public:
    /// Counts a call of the host.
    void countCall() { ++calls; }
    /// Tells that the call broke the rule.
    void report(const Rule& broken, const char* call);
    /// Tells how many calls were watched and how many findings there were.
    void summarise();

private:
    static void write(const QString& line);

    std::atomic<int> calls = 0;
    std::atomic<int> found = 0;
};

} // namespace watch
