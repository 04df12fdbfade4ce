// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/doctor/subject.h"

namespace till {

struct Options;

/// The doctor as commands call it.
namespace examination {

/// The till that a command line names, with what starts the delivery there.
doctor::Subject subjectOf(const Options& options);

/// While it lives, nothing is printed of what the host and the plug-in log: the doctor says in its
/// own words what is wrong with a set-up. One at a time, on the host thread.
class WithoutLog
{
public:
    /// @param isVerbose leave the log as it is: somebody asked for it
    explicit WithoutLog(bool isVerbose);
    /// The log is printed again, unless stay() was called.
    ~WithoutLog();
    WithoutLog(const WithoutLog&) = delete;
    WithoutLog& operator=(const WithoutLog&) = delete;

    /// For the rest of the process: a thread was left behind that may still log.
    void stay() { isOn = false; }

private:
    bool isOn;
};

} // namespace examination
} // namespace till
