// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"
#include "till/options.h"

namespace till {

class Output;

namespace init {

class Plan;
struct Settings;

/// The command "init": makes the settings of a till.
class InitCommand
{
public:
    InitCommand(const Options& given, Output& output, Output& errorOutput);

    /// @return WouldOverwrite when settings are there that say something else; then nothing is
    /// written
    /// @throws Failure, BasicException
    ExitCode run();

private:
    Settings settings();
    Settings askedFor();
    QString tryCredentials(const Settings& known);
    ExitCode showChanges(const Plan& plan);
    void tell(const QStringList& made);

    const Options& options;
    Output& out;
    Output& errors;
    const QString target;
    QString serverTable;
    bool leftBehind = false;
};

} // namespace init

} // namespace till
