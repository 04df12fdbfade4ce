// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/output.h"
#include "simulator/exchange.h"

namespace simulator {

/// One line of log about a request: time, address, check, card by its last four digits, status and
/// reason. It never holds the authorization, and nothing that was sent can break the line.
QString logLine(const QString& time, const Request& request, const Answer& answer);

/// The same as a JSON object on one line: time, path, check, card, status, reason and fault.
QString logObject(const QString& time, const Request& request, const Answer& answer);

/// Prints a line about every request. May be used from several threads at once.
class RequestLog
{
public:
    enum class Form
    {
        Line,
        Json,
    };
    /// @param output must live longer
    RequestLog(Form lineForm, console::Output& output) : form(lineForm), out(output) {}

    /// Prints the line with the present time.
    void write(const Request& request, const Answer& answer);

private:
    const Form form;
    console::Output& out;
};

} // namespace simulator
