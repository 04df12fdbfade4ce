// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/program.h"

#include <QDeadlineTimer>
#include <QFileInfo>

#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Far above what anything here takes, far below the test's own limit.
constexpr int longestWait = 60'000;

} // namespace

Program::Program(const QString& file, const QStringList& arguments, const QString& folder)
{
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(folder);
    process.start(file, arguments);
    EXPECT_TRUE(process.waitForStarted(longestWait)) << qPrintable(file);
}

Program::~Program()
{
    kill();
}

void Program::send(const QString& line)
{
    process.write(line.toUtf8() + '\n');
    EXPECT_TRUE(process.waitForBytesWritten(longestWait));
}

QString Program::waitForLine(const QString& start)
{
    const QDeadlineTimer deadline(longestWait);
    do {
        qsizetype end = printed.indexOf(u'\n', consumed);
        while (end >= 0) {
            const QString line = printed.mid(consumed, end - consumed);
            consumed = end + 1;
            if (line.startsWith(start)) {
                return line.mid(start.size());
            }
            end = printed.indexOf(u'\n', consumed);
        }
    } while (readMore(deadline));
    ADD_FAILURE() << "no line \"" << qPrintable(start) << "\" in:\n" << qPrintable(printed);
    return {};
}

bool Program::waitForPrompt(const QString& end)
{
    const QDeadlineTimer deadline(longestWait);
    while (!printed.endsWith(end) && readMore(deadline)) {
    }
    return printed.endsWith(end);
}

QString Program::command(const QString& line)
{
    send(line);
    return answer();
}

QString Program::answer()
{
    const qsizetype start = consumed;
    const QDeadlineTimer deadline(longestWait);
    do {
        qsizetype end = printed.indexOf(u'\n', consumed);
        while (end >= 0) {
            const QString line = printed.mid(consumed, end - consumed);
            consumed = end + 1;
            if (line == u"ok"_s || line.startsWith(u"error: "_s)) {
                return printed.mid(start, consumed - start);
            }
            end = printed.indexOf(u'\n', consumed);
        }
    } while (readMore(deadline));
    ADD_FAILURE() << "no answer in:\n" << qPrintable(printed);
    return {};
}

bool Program::readMore(const QDeadlineTimer& deadline)
{
    if (deadline.hasExpired()) {
        return false;
    }
    if (process.state() == QProcess::NotRunning && process.bytesAvailable() == 0) {
        return false;
    }
    if (process.bytesAvailable() == 0) {
        process.waitForReadyRead(static_cast<int>(deadline.remainingTime()));
    }
    printed += QString::fromUtf8(process.readAll());
    return true;
}

int Program::waitForEnd()
{
    const bool ended =
        process.state() == QProcess::NotRunning || process.waitForFinished(longestWait);
    printed += QString::fromUtf8(process.readAll());
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

void Program::kill()
{
    if (process.state() != QProcess::NotRunning) {
        ::kill(static_cast<pid_t>(process.processId()), SIGKILL);
        process.waitForFinished(longestWait);
    }
    printed += QString::fromUtf8(process.readAll());
}

void Program::terminate()
{
    process.terminate();
    EXPECT_NE(waitForEnd(), -1);
}

RunResult runProgram(const QString& file, const QStringList& arguments, const QString& folder)
{
    Program program(file, arguments, folder);
    const int exitCode = program.waitForEnd();
    return {exitCode, program.output()};
}
