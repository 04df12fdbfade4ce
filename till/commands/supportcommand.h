// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/doctor/subject.h"
#include "till/exitcode.h"
#include "till/options.h"
#include "till/support/supportcontent.h"

#include <QSharedPointer>

#include <memory>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

class CheckStore;
class Output;
class RecordFolder;
struct RecordFile;

/// The command "support": gathers what helps to find a fault elsewhere, lists it, and writes it
/// into one file. What cannot be had, of a broken set-up for instance, is noted and left out.
class SupportCommand
{
public:
    SupportCommand(const Options& given, Output& output, Output& errorOutput);
    ~SupportCommand();

    /// @throws Failure when what was asked for by name is not there, or nothing can be written
    ExitCode run();

private:
    void addReport();
    void openDatabase();
    void addLists();
    void addLogs();
    void addWantedChecks();
    void addWantedRecords();
    void addRecordsOf(const QString& check);
    void addRecord(const RecordFile& file, const QByteArray& lines);
    void addPages();
    void addCheck(const Check& check);
    void addWithRelated(const QString& which);
    void list(const SupportArchive& archive, qsizetype bytes);

    const Options& options;
    Output& out;
    Output& errors;
    doctor::Subject subject;
    bool leftSomethingBehind = false;
    SupportContent content;
    QSharedPointer<poshost::Database> database;
    std::unique_ptr<CheckStore> checks;
    std::unique_ptr<RecordFolder> records;
    QSet<int> added; ///< numbers of records
};

} // namespace till
