// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

#include <chrono>

namespace httplib {
struct Request;
struct Response;
} // namespace httplib

namespace simulator {

/// Makes the faults of answers that need the connection: it waits, closes, or sends what no HTTP
/// server would. Used by several threads at once, each for the request that it serves.
class WireFaults
{
public:
    WireFaults();
    ~WireFaults();
    WireFaults(const WireFaults&) = delete;
    WireFaults& operator=(const WireFaults&) = delete;

    /// Lets the fault of an answer, if it has one, happen to the response to a request that came in
    /// at a port of this process. Blocks as long as the fault lasts, at most until the client gives
    /// up or stop is called; a part of that only when the response is sent.
    /// to: with the whole answer in it
    void apply(const Answer& answer, const httplib::Request& from, int localPort,
               httplib::Response& to);

    /// Ends all waiting now and from now on.
    void stop();

private:
    bool wait(int connection, std::chrono::milliseconds duration) const;
    void hangAfterHeaders(const Fault& fault, int connection, httplib::Response& to) const;
    void drip(const Fault& fault, int connection, httplib::Response& to) const;

    int stopPipe[2] = {-1, -1};
};

} // namespace simulator
