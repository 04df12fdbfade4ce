// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/programcost.h"

#include <QCoreApplication>
#include <QProcess>

#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr const char* launch = "--launch";

double inSeconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// What the launcher writes for the one that started it.
bool tell(const rusage& usage, int status)
{
    constexpr double kilobytesOfMegabyte = 1024;
    return std::printf("%.6f %.3f %d\n", inSeconds(usage.ru_utime) + inSeconds(usage.ru_stime),
                       static_cast<double>(usage.ru_maxrss) / kilobytesOfMegabyte,
                       WIFEXITED(status) ? WEXITSTATUS(status) : -1) > 0;
}

} // namespace

ProgramCost costOfProgram(const QStringList& arguments)
{
    QProcess launcher;
    launcher.start(QCoreApplication::applicationFilePath(),
                   QStringList{QString::fromLatin1(launch)} + arguments);
    launcher.closeWriteChannel();
    const bool hasEnded = launcher.waitForFinished(-1) && launcher.exitCode() == 0;
    const QList<QByteArray> told = launcher.readAllStandardOutput().simplified().split(' ');
    if (!hasEnded || told.size() != 3) {
        throw std::runtime_error(arguments.value(0).toStdString() + " does not start");
    }
    return {told[0].toDouble(), told[1].toDouble(), told[2].toInt()};
}

std::optional<int> ranAsLauncher(int argc, char** argv)
{
    constexpr int leastArguments = 3;
    if (argc < leastArguments || std::string_view(argv[1]) != launch) {
        return {};
    }
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    char** const arguments = argv + 2;
    pid_t process = 0;
    int failure = ::posix_spawn(&process, *arguments, &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (failure != 0 || ::wait4(process, &status, 0, &usage) != process) {
        return 1;
    }
    return tell(usage, status) ? 0 : 1;
}

} // namespace bench
