// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"
#include "till/options.h"

namespace poshost {
struct DeliveryReport;
} // namespace poshost

namespace till {

class Output;
class Workplace;

/// The commands of "orva-till queue".
class QueueCommands
{
public:
    QueueCommands(Workplace& place, const Options& given, Output& output, Output& errorOutput)
        : workplace(place), options(given), out(output), errors(errorOutput)
    {}

    /// Does the command of the options. @throws Failure, BasicException
    ExitCode run();

private:
    ExitCode list();
    ExitCode show();
    ExitCode deliver();
    ExitCode watch();
    poshost::DeliveryReport drain();
    ExitCode change(bool found, const QString& done);
    ExitCode settle();
    ExitCode reauthorize();

    Workplace& workplace;
    const Options& options;
    Output& out;
    Output& errors;
};

} // namespace till
