// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>

namespace orvastore {

/// While it lives, SIGTERM and SIGINT end a wait instead of the process. One at a time; to be made
/// before any other thread, which inherit that the signals are held back.
class UntilStopped
{
public:
    UntilStopped();
    ~UntilStopped();
    UntilStopped(const UntilStopped&) = delete;
    UntilStopped& operator=(const UntilStopped&) = delete;

    /// Waits so long at most. @return whether the process was asked to end
    bool hasComeWithin(std::chrono::seconds time);
    /// Waits until the process is asked to end.
    void wait();
};

} // namespace orvastore
