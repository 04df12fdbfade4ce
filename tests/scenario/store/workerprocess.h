// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/program.h"
#include "tests/support/testfolder.h"

#include <csignal>

/// "orva-store work" as a process.
class WorkerProcess
{
public:
    WorkerProcess(const TestFolder& folder, const QString& name, const QString& database,
                  int laneTimeout = 3)
        : program(QStringLiteral(ORVA_STORE),
                  {QStringLiteral("--config"),
                   folder.write(
                       name + QStringLiteral(".toml"),
                       QStringLiteral("[store]\ndatabase = \"%1\"\ntimeout = 2\n").arg(database)),
                   QStringLiteral("work"), QStringLiteral("--name"), name,
                   QStringLiteral("--lane-timeout"), QString::number(laneTimeout),
                   QStringLiteral("--request-timeout"), QStringLiteral("30")},
                  folder.file({}))
    {}
    ~WorkerProcess() { thaw(); }

    void kill() { program.kill(); }
    void freeze() const { ::kill(program.processId(), SIGSTOP); }
    void thaw() const
    {
        if (program.processId() > 0) {
            ::kill(program.processId(), SIGCONT);
        }
    }
    pid_t processId() const { return program.processId(); }
    QString output() const { return program.output(); }

private:
    Program program;
};
