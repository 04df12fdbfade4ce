// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
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

    /// Blocks until one of the two arrives, or until the time is over; returns whether one arrived.
    [[nodiscard]] bool waitFor(std::chrono::milliseconds time) const;

private:
    sigset_t signals{};
};

} // namespace simulator
