// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/configerror.h"
#include "simulator/program.h"
#include "simulator/rulesreader.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int failure = 1;
constexpr int usageError = 2;

int fail(int exitCode, const char* what)
{
    std::fprintf(stderr, "orva-simulator: %s\n", what);
    return exitCode;
}

/// Runs what the command line asks for and returns the exit code.
int run(const simulator::Options& options, bool ledger, bool rules)
{
    try {
        if (rules) {
            std::fputs(simulator::builtInRules().constData(), stdout);
            return 0;
        }
        if (ledger) {
            return simulator::printLedger(options);
        }
        simulator::serve(options);
        return 0;
    } catch (const simulator::ConfigError& error) {
        return fail(usageError, error.what());
    } catch (const std::exception& error) {
        return fail(failure, error.what());
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    std::string config;
    std::string database;
    std::string listen = "127.0.0.1";
    simulator::Options options;

    CLI::App app("A loyalty server for trying and testing. Without a command it serves until it is "
                 "stopped (SIGTERM or Ctrl+C).\n"
                 "Exit codes: 0 done, 1 failed, 2 wrong command line or rules.",
                 "orva-simulator");
    app.add_option("--config", config, "TOML file of rules and cards (default: built-in ones)");
    app.add_option("--listen", listen, "address to listen at")->capture_default_str();
    app.add_option("--port", options.port, "port to listen at, 0 for a free one")
        ->capture_default_str()
        ->check(CLI::Range(0, 65535));
    app.add_option("--admin-port", options.adminPort,
                   "port on 127.0.0.1 to read the ledger and to arm faults at, 0 for a free one")
        ->check(CLI::Range(0, 65535));
    app.add_option("--database", database,
                   "SQLite file (default: " + simulator::defaultDatabase().toStdString() + ")");
    app.add_flag("--quiet", options.quiet, "print the address only, no line per request");
    CLI::App* ledger = app.add_subcommand("ledger", "print the points of every card and check");
    ledger->add_flag("--csv", options.csv, "the checks as a till lists them, to be compared");
    ledger->add_flag("--json", options.json, "as JSON, amounts in kopecks");
    ledger->fallthrough();
    CLI::App* rules = app.add_subcommand("rules", "print the built-in rules, to begin a file with");
    app.require_subcommand(0, 1);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : usageError;
    }
    options.config = QFile::decodeName(config.c_str());
    options.database = QFile::decodeName(database.c_str());
    options.listen = QString::fromLocal8Bit(listen.c_str());
    return run(options, ledger->parsed(), rules->parsed());
}
