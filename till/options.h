// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/pointschoice.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace till {

enum class Command
{
    Check,
    Sell,
    Return,
    Work,
    Checks,
    Ledger,
    Doctor,
    Init,
    QueueList,
    QueueShow,
    QueueDeliver,
    QueueRetry,
    QueuePark,
    QueueSettle,
    QueueReauthorize,
    LogList,
    LogShow,
    LogExport,
    LogReplay,
    Explain,
    Support,
    Erase,
    Verify,
    Archive,
    Backup,
    Metrics,
    Restore,
};

/// What the command line says.
struct Options
{
    Command command = Command::Check;
    QString configFile;
    /// Whether the command line names the configuration file, which then must exist.
    bool configNamed = false;
    /// Whether it was not named but found, in the current folder or as the machine's.
    bool configFound = false;
    QString plugin;
    QString database;
    bool verbose = false;
    /// No progress, and no lines that only say that something was done.
    bool quiet = false;
    bool csv = false;
    bool json = false;
    /// With the queue's list: delivered messages too. With the list of checks: not a page only.
    bool all = false;
    /// With the list of checks: how many of them, and behind which one.
    int count = 0;
    QString before;
    /// With lists of checks: those of all tills of the shop, out of the store.
    bool fromStore = false;
    /// With the queue's delivery: until the process is asked to end.
    bool watch = false;
    QString file;
    PointsChoice points;
    std::optional<qint64> tenderKopecks;
    int waitSeconds = 0;
    /// With the return: however old its sale is, and from the archive too.
    bool fromArchive = false;
    /// With the archive: the database's file is written anew, once.
    bool compact = false;
    /// With the copy: the queue's credentials are in it.
    bool withSecrets = false;
    /// With the restoring: the highest number of a check that the loyalty server knows.
    std::optional<int> lastNumber;
    qint64 message = 0;
    /// Which record: its number, that of one exchange in it ("3.2"), "all", or a file of records.
    /// Or which check.
    QString record;
    /// With the support archive: the records, "all" or their numbers; the checks beside these.
    QStringList wantedChecks;
    /// Card numbers and names stay in it.
    bool withCards = false;
    /// The file to export to.
    QString target;
    /// With the export: a page to look at.
    bool asPage = false;
    /// With the making of settings: the file of answers; empty: they are asked for.
    QString answers;
    /// They are those of the loyalty server for trying.
    bool forSimulator = false;
    /// They are not tried.
    bool offline = false;
    /// With the erasure: further folders with records and support archives.
    QStringList folders;
    /// With the doctor: the card that the server is asked about. With the erasure: whose customer
    /// is forgotten.
    QString card;
    /// With the doctor: it applies what is safe.
    bool fix = false;
    /// With the trying of a server: its address, and the cases or requirements; none: all.
    QString address;
    QStringList wantedCases;
    /// Says which there are and tries nothing.
    bool listsCases = false;
    /// What a server should do counts as what it must do.
    bool strict = false;
    bool asTap = false;
    /// A file for the results in JUnit's form; empty: none.
    QString junitFile;
    /// In an order by chance, which follows from the number; 0 takes one.
    bool shuffle = false;
    quint32 seed = 0;
};

} // namespace till
