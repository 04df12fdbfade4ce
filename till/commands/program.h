// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"
#include "till/options.h"
#include "till/screen/waitnotice.h"

#include <QStringList>

namespace till {

struct Check;
class Output;
class Workplace;

/// The program orva-till: one command from the options to the exit code.
class Program
{
public:
    Program(const Options& given, Output& output, Output& errorOutput)
        : options(given), out(output), errors(errorOutput)
    {}

    /// Does the command; prints what goes wrong in one sentence, what could not be printed as well,
    /// and returns its exit code.
    ExitCode run();

private:
    ExitCode doCommand();
    ExitCode dispatch(Workplace& workplace);
    ExitCode check(Workplace& workplace);
    ExitCode sell(Workplace& workplace);
    ExitCode takeBack(Workplace& workplace);
    ExitCode work(Workplace& workplace);
    ExitCode checks(Workplace& workplace);
    ExitCode ledger(Workplace& workplace);
    ExitCode explain(Workplace& workplace);
    ExitCode explainElsewhere();
    ExitCode closeAndPrint(Workplace& workplace);
    void awaitDelivery(Workplace& workplace);
    /// The check, as people read it or as JSON, with what there is to note about it.
    void show(const Check& check, const QString& text, const QStringList& notes);

    const Options& options;
    Output& out;
    Output& errors;
    /// What is done though nobody may have seen it, a sentence.
    QString done;
    WaitNotice waiting{errors};
};

} // namespace till
