// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/matrix.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QFileInfo>
#include <QStorageInfo>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QString text(const std::string& value)
{
    return QString::fromLocal8Bit(value.c_str());
}

/// The scenes run in folders of their own.
QString absolute(const std::string& path)
{
    return path.empty() ? QString() : QFileInfo(text(path)).absoluteFilePath();
}

QStringList texts(const std::vector<std::string>& values)
{
    QStringList list;
    for (const std::string& value : values) {
        list.append(text(value));
    }
    return list;
}

/// Nothing here outlives the power cut that is played, so the scenes need no disk: in memory they
/// are synced at once. Where somebody has named a folder for temporary files, that one.
QString placeOfScenes()
{
    constexpr qint64 enough = 256 << 20;
    const QStorageInfo memory(u"/dev/shm"_s);
    const bool isFree =
        memory.isReady() && !memory.isReadOnly() && memory.bytesAvailable() > enough;
    return qEnvironmentVariableIsEmpty("TMPDIR") && isFree ? memory.rootPath() : QDir::tempPath();
}

int runMatrix(const MatrixOptions& options, size_t atLeast, bool mustFind)
{
    try {
        Matrix matrix(options);
        const int wrong = matrix.run();
        if (mustFind) {
            std::puts(wrong > 0 ? "the planted bug was found" : "THE PLANTED BUG WAS NOT FOUND");
            return wrong > 0 ? 0 : 1;
        }
        if (matrix.points() < atLeast) {
            std::printf("TOO FEW crash points: at least %zu were asked for\n", atLeast);
            return 1;
        }
        return wrong == 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "orva-crash-matrix: %s\n", error.what());
        return 1;
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    MatrixOptions options;
    std::string till = ORVA_TILL;
    std::string server = ORVA_SIMULATOR;
    std::string plugin = ORVA_PLUGIN;
    std::string host;
    std::string list;
    std::string folder;
    std::vector<std::string> flows;
    std::vector<std::string> actors{"till", "server"};
    std::vector<std::string> ways{"kill", "cut"};
    size_t atLeast = 1;
    bool mustFind = false;

    CLI::App app("Stops the till and the server at each of their calls that write, sync, send or "
                 "receive, restarts them and compares their books.",
                 "orva-crash-matrix");
    app.add_option("--flow", flows, "only this flow; may be given several times");
    app.add_option("--actor", actors, "who is stopped: till or server (default: both)")
        ->check(CLI::IsMember({"till", "server"}));
    app.add_option("--way", ways,
                   "kill, cut (a power cut that leaves nothing unsynced) or tear (one "
                   "that leaves some of it)")
        ->check(CLI::IsMember({"kill", "cut", "tear"}));
    app.add_option("--every", options.every,
                   "stop only at every so-manieth call; which ones, the seed tells")
        ->capture_default_str()
        ->check(CLI::PositiveNumber);
    app.add_option("--cut-every", options.cutEvery,
                   "cut the power only at every so-manieth call; which ones, the seed tells")
        ->capture_default_str()
        ->check(CLI::PositiveNumber);
    app.add_option("--repeat", options.repetitions, "how often a flow does what it does")
        ->capture_default_str()
        ->check(CLI::Range(1, 60));
    app.add_option("--at-least", atLeast, "fail when there are fewer distinct crash points")
        ->capture_default_str();
    app.add_option("--seed", options.seed,
                   "of what \"tear\" leaves, and of the order with --must-find")
        ->capture_default_str();
    app.add_option("--jobs", options.jobs, "scenes at a time")->capture_default_str();
    app.add_option("--list", list, "file to list the crash points in");
    app.add_option("--folder", folder, "for the scenes; those that went wrong stay there");
    app.add_option("--till", till, "the till's program");
    app.add_option("--server", server, "the server's program");
    app.add_option("--plugin", plugin, "the plug-in");
    app.add_option("--host-folder", host, "where the host's library is looked for first");
    app.add_flag("--must-find", mustFind, "succeed only when something is wrong after a stop");
    CLI11_PARSE(app, argc, argv);

    const QTemporaryDir temporary(placeOfScenes() + u"/orva-crash-matrix-XXXXXX"_s);
    options.programs = {absolute(till),
                        absolute(server),
                        absolute(plugin),
                        QStringLiteral(ORVA_CRASH_POINT),
                        QStringLiteral(ORVA_FILE_STORE),
                        absolute(host)};
    options.folder = folder.empty() ? temporary.path() : absolute(folder);
    options.list = text(list);
    options.flows = texts(flows);
    options.actors = texts(actors);
    options.ways = texts(ways);
    options.firstProblemOnly = mustFind;
    return runMatrix(options, atLeast, mustFind);
}
