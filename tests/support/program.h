// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDeadlineTimer>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <sys/types.h>

/// A program of the project running as a process. Whatever it is waited for is bounded; a wait that
/// ends without the event fails the test with what the program has printed.
class Program
{
public:
    Program(const QString& file, const QStringList& arguments, const QString& folder);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Writes a line to its standard input.
    void send(const QString& line);
    /// Waits for a line that begins so and returns the rest of it; null when none came.
    QString waitForLine(const QString& start);
    /// Waits until what it has printed ends so, without a line's end.
    bool waitForPrompt(const QString& end);
    /// Gives a working till a command and returns what it printed up to its "ok" or "error: ...",
    /// that line included.
    QString command(const QString& line);
    /// The same of a command that was sent and not answered yet.
    QString answer();
    /// Waits for the end. @return the exit code, -1 when it did not end by itself
    int waitForEnd();

    /// As the kernel or a power cut would: no clean-up runs.
    void kill();
    /// As an administrator would.
    void terminate();

    pid_t processId() const { return static_cast<pid_t>(process.processId()); }
    /// Everything printed so far, both channels.
    QString output() const { return printed; }

private:
    bool readMore(const QDeadlineTimer& deadline);

    QProcess process;
    QString printed;
    qsizetype consumed = 0;
};

/// Runs a program to its end.
struct RunResult
{
    int exitCode;
    QString output;
};
RunResult runProgram(const QString& file, const QStringList& arguments, const QString& folder);
