// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/month/measured.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryFile>

#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace month {

Run runMeasured(const QString& program, const QStringList& arguments, const QString& folder,
                const QString& inputFile, const QString& outputFile)
{
    QTemporaryFile peak(folder + u"/peak-XXXXXX"_s);
    if (!peak.open()) {
        throw std::runtime_error("no file for the measurement");
    }
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardInputFile(inputFile.isEmpty() ? QProcess::nullDevice() : inputFile);
    if (!outputFile.isEmpty()) {
        process.setStandardOutputFile(outputFile);
    }
    QElapsedTimer timer;
    timer.start();
    process.start(QCoreApplication::applicationFilePath(),
                  QStringList{u"measure"_s, peak.fileName(), program} + arguments);
    if (!process.waitForFinished(-1)) {
        throw std::runtime_error("cannot run " + program.toStdString());
    }
    Run run;
    run.seconds = static_cast<double>(timer.elapsed()) / 1000;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.output = process.readAllStandardOutput();
    run.peakKibibytes = peak.readAll().trimmed().toLongLong();
    return run;
}

int measureIfAsked(int argc, char** argv, bool& asked)
{
    constexpr int leastArguments = 4;
    asked = argc >= leastArguments && std::strcmp(argv[1], "measure") == 0;
    if (!asked) {
        return 0;
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::execv(argv[3], argv + 3);
        std::perror(argv[3]);
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child || !WIFEXITED(status)) {
        return 126;
    }
    if (std::FILE* file = std::fopen(argv[2], "w")) {
        std::fprintf(file, "%ld\n", usage.ru_maxrss);
        std::fclose(file);
    }
    return WEXITSTATUS(status);
}

} // namespace month
