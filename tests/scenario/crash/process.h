// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <stdexcept>

/// A scene cannot go on: a program is missing, or hangs.
class SceneError : public std::runtime_error
{
public:
    explicit SceneError(const QString& what) : std::runtime_error(what.toStdString()) {}
};

/// A program of the project as a process of a scene. Used by one thread.
class Process
{
public:
    /// Far above what anything here takes.
    static constexpr int longestWait = 90'000;

    /// @throws SceneError when it cannot be started
    Process(const QString& program, const QStringList& arguments, const QString& folder,
            const QProcessEnvironment& environment);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// Gives it all of its input.
    void feed(const QStringList& lines);
    /// Waits so long for its end. @return whether it has ended
    bool hasEnded(int milliseconds);
    /// Waits for a line that begins so. @return the rest of it, null when the process ended first
    QString waitForLine(const QString& start);
    /// Ends it as an administrator would. @throws SceneError when it does not end
    void terminate();

    /// Whether a signal ended it.
    bool wasKilled() const { return process.exitStatus() == QProcess::CrashExit; }
    int exitCode() const { return process.exitCode(); }
    /// Everything it has printed on its standard output; after its end only.
    QString output();
    /// The same for its errors.
    QString errors();

private:
    QProcess process;
    QString printed;
};
