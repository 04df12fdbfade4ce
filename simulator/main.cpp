// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/exitcode.h"
#include "console/language.h"
#include "console/printable.h"
#include "console/streams.h"
#include "console/usage.h"
#include "simulator/deviations/deviation.h"
#include "simulator/program.h"
#include "simulator/rules/configerror.h"
#include "simulator/rules/rulesreader.h"
#include "simulator/text.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

using namespace Qt::StringLiterals;
using simulator::Text;

namespace {

namespace exitcode = console::exitcode;

/// Instead of the name of a deviation: show them.
constexpr char listWord[] = "list";

/// Tells of what could not be printed. @return the exit code that follows from it
int end(simulator::Outputs& print, int exitCode)
{
    if (print.out.isWhole()) {
        return exitCode;
    }
    // who has stopped reading wants no complaint
    if (!print.out.isUnread()) {
        print.failure(Text::tr("what is shown is not whole: %1").arg(print.out.trouble()));
    }
    return exitCode == exitcode::ok ? exitcode::failed : exitCode;
}

/// Runs what the command line asks for and returns the exit code.
int run(const simulator::Options& options, bool ledger, bool rules, simulator::Outputs& print)
{
    try {
        if (rules) {
            print.out.write(QString::fromUtf8(simulator::builtInRules()));
            return exitcode::ok;
        }
        if (options.deviations.contains(QLatin1StringView(listWord))) {
            simulator::printDeviations(options, print);
            return exitcode::ok;
        }
        if (ledger) {
            return simulator::printLedger(options, print);
        }
        simulator::serve(options, print);
        return exitcode::ok;
    } catch (const simulator::ConfigError& error) {
        print.failure(QString::fromUtf8(error.what()));
        return exitcode::usage;
    } catch (const std::exception& error) {
        print.failure(QString::fromUtf8(error.what()));
        return exitcode::failed;
    }
}

/// Texts of the command line before they become options.
struct Texts
{
    std::string config;
    std::string database;
    std::string listen = "127.0.0.1";
    std::vector<std::string> deviations;
};

/// What is wrong with the name of a deviation; empty for nothing.
std::string knownDeviation(const std::string& given)
{
    const QString name = QString::fromLocal8Bit(given.c_str());
    if (given == listWord || simulator::deviation(name) != nullptr) {
        return {};
    }
    return Text::tr("there is no deviation %1: \"--deviate list\" shows them all")
        .arg(console::printable::line(name))
        .toStdString();
}

void addServing(CLI::App& app, simulator::Options& options, Texts& texts)
{
    const auto words = [](const QString& text) { return text.toStdString(); };
    app.add_option("--config", texts.config,
                   words(Text::tr("TOML file of rules and cards (default: built-in ones)")));
    app.add_option("--listen", texts.listen, words(Text::tr("Address to listen at")))
        ->capture_default_str();
    app.add_option("--port", options.port, words(Text::tr("Port to listen at, 0 for a free one")))
        ->capture_default_str()
        ->check(CLI::Range(0, 65535));
    app.add_option("--admin-port", options.adminPort,
                   words(Text::tr("Port on 127.0.0.1 to read the ledger and to arm faults at, "
                                  "0 for a free one")))
        ->check(CLI::Range(0, 65535));
    app.add_flag("--page,!--no-page", options.page,
                 words(Text::tr("Serve a page to look at and to try with at the admin address "
                                "(default: on a terminal)")));
    app.add_option("--database", texts.database,
                   words(Text::tr("SQLite file (default: %1)").arg(simulator::defaultDatabase())));
    app.add_option("--deviate", texts.deviations,
                   words(Text::tr("Do wrong on purpose what NAME says, several times for several; "
                                  "list shows them")))
        ->type_name("NAME")
        ->allow_extra_args(false)
        ->check(knownDeviation);
    app.add_flag("--quiet", options.quiet,
                 words(Text::tr("Print the address only, no line per request")));
    app.add_flag("--json", options.json, words(Text::tr("Print a JSON object a line")));
}

CLI::App* addLedger(CLI::App& app, simulator::Options& options)
{
    const auto words = [](const QString& text) { return text.toStdString(); };
    CLI::App* const ledger =
        app.add_subcommand("ledger", words(Text::tr("Print the points of every card and check")));
    ledger->add_flag("--csv", options.csv,
                     words(Text::tr("The checks as a till lists them, to be compared")));
    ledger->add_flag("--json", options.json, words(Text::tr("As JSON")));
    ledger->fallthrough();
    return ledger;
}

} // namespace

int main(int argc, char** argv)
{
    console::streams::prepare();
    const QCoreApplication application(argc, argv);
    console::speakUsersLanguage();
    console::streams::keepLogPrintable();
    simulator::Outputs print;
    Texts texts;
    simulator::Options options;
    options.page = isatty(STDOUT_FILENO) == 1;

    CLI::App app(Text::tr("A loyalty server for trying and testing. Without a command it serves "
                          "until it is stopped (SIGTERM or Ctrl+C).\n"
                          "Exit codes: 0 done, 1 failed, 2 wrong command line or rules.")
                     .toStdString(),
                 "orva-simulator");
    console::usage::prepare(app);
    app.set_version_flag("--version", ORVA_VERSION,
                         Text::tr("Print the version and exit").toStdString());
    addServing(app, options, texts);
    const CLI::App* const ledger = addLedger(app, options);
    const CLI::App* const rules = app.add_subcommand(
        "rules", Text::tr("Print the built-in rules, to begin a file with").toStdString());
    app.require_subcommand(0, 1);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const bool isDone = console::usage::exitOf(app, error, print.out, print.errors) == 0;
        return end(print, isDone ? exitcode::ok : exitcode::usage);
    }
    options.config = QFile::decodeName(texts.config.c_str());
    options.database = QFile::decodeName(texts.database.c_str());
    options.listen = QString::fromLocal8Bit(texts.listen.c_str());
    for (const std::string& name : texts.deviations) {
        options.deviations.append(QString::fromStdString(name));
    }
    return end(print, run(options, ledger->parsed(), rules->parsed(), print));
}
