// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/fault.h"

#include <chrono>

namespace simulator {

class Channel;
struct Response;

/// Sends answers and makes the faults that need the connection: it waits, closes, or sends what no
/// HTTP server would. Used by several threads at once, each for the connection that it serves.
class WireFaults
{
public:
    WireFaults();
    ~WireFaults();
    WireFaults(const WireFaults&) = delete;
    WireFaults& operator=(const WireFaults&) = delete;

    /// Sends the response or what the fault, if there is one, makes of it. Blocks as long as the
    /// fault lasts, at most until the client gives up or stop is called.
    /// Returns whether the connection can be used on.
    bool send(const Response& response, const std::optional<Fault>& fault, Channel& channel) const;

    /// Waits that long, with 0 without an end. False when the client has gone or stop was called
    /// meanwhile.
    [[nodiscard]] bool wait(const Channel& channel, std::chrono::milliseconds duration) const;

    /// Ends all waiting now and from now on.
    void stop();

private:
    bool sendSpoiled(const Response& response, const Fault& fault, Channel& channel) const;
    bool drip(const Response& response, const Fault& fault, Channel& channel) const;

    int stopPipe[2] = {-1, -1};
};

} // namespace simulator
