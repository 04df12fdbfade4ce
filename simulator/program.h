// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/output.h"

#include <QString>
#include <QStringList>

namespace simulator {

/// What the command line asks for.
struct Options
{
    static constexpr int noAdmin = -1;

    QString config; ///< file of rules; empty for the built-in ones
    QString listen = QStringLiteral("127.0.0.1");
    int port = 8710;
    int adminPort = noAdmin; ///< on loopback only
    QString database;        ///< empty for the default place
    bool quiet = false;
    bool csv = false;
    bool json = false;
    QStringList deviations; ///< names of what it is to do wrong
    bool page = false;      ///< at the admin address, at a free port where adminPort says none

    /// Whether there is an address for administration.
    [[nodiscard]] bool hasAdmin() const { return page || adminPort != noAdmin; }
};

/// Where the program prints: what it was asked for, and what went wrong.
struct Outputs
{
    console::Output out{stdout};
    console::Output errors{stderr};

    /// Says what went wrong.
    void failure(const QString& sentence);
};

/// Serves until SIGTERM or SIGINT; with lines that cannot be printed too, once somebody could read
/// where. Throws ConfigError, DatabaseError or ListenError.
void serve(const Options& options, Outputs& print);

/// Prints the books; returns the exit code, failed when they do not add up.
/// Throws ConfigError or DatabaseError.
int printLedger(const Options& options, Outputs& print);

/// Prints what the server can be made to do wrong, with the requirement that breaks: a table, or
/// with
/// --json an object a line.
void printDeviations(const Options& options, Outputs& print);

/// Where the database is when the command line does not say.
QString defaultDatabase();

} // namespace simulator
