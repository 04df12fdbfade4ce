// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <csignal>

namespace simulator {

/// Holds SIGTERM and SIGINT back from the whole process, so that one thread can wait for them.
/// To be made before any thread.
class StopSignal
{
public:
    StopSignal();

    /// Blocks until one of the two arrives.
    void wait() const;

private:
    sigset_t signals{};
};

} // namespace simulator
