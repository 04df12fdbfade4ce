// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace till {

/// The signals with which a process is asked to end (SIGTERM, SIGINT), as something to be polled
/// while this object lives. To be made before any other thread, which inherit that these are held
/// back.
class StopSignals
{
public:
    /// @throws Failure
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    /// To be polled for input: there is some once this process was asked to end.
    int descriptor() const { return signals; }

private:
    int signals;
};

} // namespace till
