// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

namespace month {

/// How a program ended.
struct Run
{
    int exitCode = -1;
    QByteArray output;
    qint64 peakKibibytes = 0; ///< largest resident set, by the kernel
    double seconds = 0;
};

/// Runs a program to its end and measures it.
/// @param inputFile its standard input; empty for none
/// @param outputFile where its standard output goes; empty: into Run::output
/// @throws std::runtime_error when it cannot be started
Run runMeasured(const QString& program, const QStringList& arguments, const QString& folder,
                const QString& inputFile = QString(), const QString& outputFile = QString());

/// The process between: "measure FILE PROGRAM ARGUMENTS..." runs the program and writes its peak
/// into the file. It is there because a process inherits the peak of the one that it was forked
/// from, and this program's own grows.
/// @return the exit code; nothing when the command line asks for something else
int measureIfAsked(int argc, char** argv, bool& asked);

} // namespace month
