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

/// The command "log export --html", and the pages of a support archive: a case as a page. Beside
/// its record all else is welcome and nothing necessary: what cannot be had, of a till without a
/// database for instance, the page says.
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

    /// The page of a case, for a support archive; an object makes one page.
    /// @param record its number
    /// @param mayReplay false: the plug-in is not asked again
    /// @throws Failure when there is no such record, or it is unreadable
    QByteArray pageOf(const QString& record, bool mayReplay);

private:
    void takeRecord(const QString& number);
    void takeFromDatabase();
    void takeCheck(CheckStore& checks, poshost::Database& database);
    void replay(const QString& number);
    QByteArray page() const;

    const Config& config;
    const RecordFolder& records;
    const Options& options;
    Output& out;
    Output& errors;
    QByteArray lines; ///< of the record
    QString leftOut;  ///< why check and queue are not there; empty when they are
    CaseMaterial material;
    People people;
};

} // namespace till
