// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/casereport/casereport.h"
#include "till/exitcode.h"
#include "till/options.h"
#include "till/person/person.h"

class Config;

namespace poshost {
class Database;
} // namespace poshost

namespace till {

class CheckStore;
class Output;
class RecordFolder;

/// The command "log export --html": a case as a page. Beside its record all else is welcome and
/// nothing necessary: what cannot be had, of a till without a database for instance, the page says.
class CaseExport
{
public:
    /// All must live longer.
    CaseExport(const Config& configuration, const RecordFolder& recordFolder, const Options& given,
               Output& output, Output& errorOutput)
        : config(configuration), records(recordFolder), options(given), out(output),
          errors(errorOutput)
    {}

    /// @throws Failure when there is no such record, or the page cannot be written
    ExitCode run();

private:
    void takeRecord();
    void takeFromDatabase();
    void takeCheck(CheckStore& checks, poshost::Database& database);
    void replay();
    QByteArray page() const;

    const Config& config;
    const RecordFolder& records;
    const Options& options;
    Output& out;
    Output& errors;
    QByteArray lines; ///< of the record
    CaseMaterial material;
    People people;
};

} // namespace till
