// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

#include <mutex>

namespace simulator {

/// One line of log about a request: time, address, check, card by its last four digits, status and
/// reason. It never holds the authorization, and nothing that was sent can break the line.
QString logLine(const QString& time, const Request& request, const Answer& answer);

/// Prints a line about every request on standard output. May be used from several threads at once.
class RequestLog
{
public:
    /// Prints the line with the present time.
    void write(const Request& request, const Answer& answer);

private:
    std::mutex mutex;
};

} // namespace simulator
