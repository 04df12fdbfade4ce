// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <csignal>

namespace poshost {

/// Keeps a write to a closed connection from ending the process: while it lives, SIGPIPE is blocked
/// in this thread, and one that the thread has earned meanwhile is taken away before the former
/// mask comes back. The process-wide disposition of the signal belongs to the till and stays.
class SigPipeGuard
{
public:
    SigPipeGuard();
    ~SigPipeGuard();
    SigPipeGuard(const SigPipeGuard&) = delete;
    SigPipeGuard& operator=(const SigPipeGuard&) = delete;

private:
    sigset_t former;
    bool pendingBefore;
};

} // namespace poshost
