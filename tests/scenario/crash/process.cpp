// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/process.h"

#include <QDeadlineTimer>

using namespace Qt::StringLiterals;

Process::Process(const QString& program, const QStringList& arguments, const QString& folder,
                 const QProcessEnvironment& environment)
{
    process.setWorkingDirectory(folder);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForStarted(longestWait)) {
        throw SceneError(u"%1 does not start: %2"_s.arg(program, process.errorString()));
    }
}

Process::~Process()
{
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished(longestWait);
    }
}

void Process::feed(const QStringList& lines)
{
    process.write(lines.join(u'\n').toUtf8() + '\n');
    process.closeWriteChannel();
}

bool Process::hasEnded(int milliseconds)
{
    return process.state() == QProcess::NotRunning || process.waitForFinished(milliseconds);
}

QString Process::waitForLine(const QString& start)
{
    const QDeadlineTimer deadline(longestWait);
    while (!deadline.hasExpired()) {
        printed += QString::fromUtf8(process.readAllStandardOutput());
        const qsizetype from = printed.startsWith(start) ? 0 : printed.indexOf(u'\n' + start) + 1;
        const qsizetype to = printed.indexOf(u'\n', from);
        if (printed.mid(from).startsWith(start) && to >= 0) {
            return printed.mid(from + start.size(), to - from - start.size());
        }
        if (process.state() == QProcess::NotRunning) {
            return {};
        }
        process.waitForReadyRead(int(deadline.remainingTime()));
    }
    throw SceneError(u"no line \"%1\" in: %2"_s.arg(start, printed));
}

void Process::terminate()
{
    if (process.state() == QProcess::NotRunning) {
        return;
    }
    process.terminate();
    if (!process.waitForFinished(longestWait)) {
        throw SceneError(u"%1 does not end when it is asked to"_s.arg(process.program()));
    }
}

QString Process::output()
{
    printed += QString::fromUtf8(process.readAllStandardOutput());
    return printed;
}

QString Process::errors()
{
    return QString::fromUtf8(process.readAllStandardError());
}
