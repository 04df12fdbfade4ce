// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/config.h"
#include "till/exitcode.h"
#include "till/options.h"
#include "till/recording/record.h"

#include <memory>

namespace till {

class Output;
class RecordFolder;

/// The commands "log ...": they read records and open no database.
class LogCommands
{
public:
    /// Reads the configuration. @throws BasicException when it cannot be used
    LogCommands(const Options& given, Output& output, Output& errorOutput);
    ~LogCommands();

    /// @throws Failure
    ExitCode run();

private:
    ExitCode list();
    ExitCode show();
    ExitCode exportTo();
    ExitCode replay();

    const RecordFolder& requireFolder() const;
    /// What the command line names: a number, "all" or a file.
    QList<Record> chosen() const;
    /// Every record that can be read; a note about each file that cannot.
    QList<Record> allReadable() const;

    const Options& options;
    Output& out;
    Output& errors;
    Config config;
    std::unique_ptr<RecordFolder> folder;
};

} // namespace till
