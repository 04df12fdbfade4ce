// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/rawserver.h"

#include <thread>

/// Keeps the connection that was used last, and the addresses it remembers, busy with a request
/// that gets no answer, as a delivery does that runs beside the cashier: the next request of this
/// process must ask for its server's address anew.
class BusyConnection
{
public:
    /// Returns when the request is under way.
    BusyConnection();
    ~BusyConnection();
    BusyConnection(const BusyConnection&) = delete;
    BusyConnection& operator=(const BusyConnection&) = delete;

private:
    std::unique_ptr<RawServer> silent;
    std::thread thread;
};
