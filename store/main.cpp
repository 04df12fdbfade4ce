// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/exitcode.h"
#include "console/language.h"
#include "console/output.h"
#include "console/streams.h"
#include "console/usage.h"
#include "store/commands/program.h"
#include "store/text.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>

using orvastore::Options;
using orvastore::Text;
using Command = Options::Command;

namespace {

/// Texts of the command line before they become options.
struct Texts
{
    std::string config;
    std::string worker;
    std::string authorization;
    std::string role;
    std::string shop;
    std::string queue;
    std::string check;
    std::string listen = "127.0.0.1:9188";
    std::string identifier;
};

std::string words(const QString& text)
{
    return text.toStdString();
}

void addWork(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const work = app.add_subcommand(
        "work", words(Text::tr("Deliver what stands in the store until stopped")));
    work->add_option("--name", texts.worker,
                     words(Text::tr("Name of this worker (default: machine and process)")));
    work->add_option(
        "--authorization", texts.authorization,
        words(Text::tr("File with the header that is sent instead of the tills' own")));
    work->add_option("--lane-timeout", options.laneTimeout,
                     words(Text::tr("Seconds after which a worker that is silent loses its lane")))
        ->capture_default_str()
        ->check(CLI::Range(1, 3600));
    work->add_option("--request-timeout", options.requestTimeout,
                     words(Text::tr("Seconds that the loyalty server is waited for")))
        ->capture_default_str()
        ->check(CLI::Range(1, 3600));
    work->add_flag("--until-empty", options.untilEmpty, words(Text::tr("End when nothing is due")));
    work->callback([&options] { options.command = Command::Work; });
}

void addTables(CLI::App& app, Options& options, Texts& texts)
{
    app.add_subcommand("migrate", words(Text::tr("Make the tables, or bring them up to date")))
        ->callback([&options] { options.command = Command::Migrate; });
    CLI::App* const admit = app.add_subcommand(
        "admit", words(Text::tr("Let a login of the database be a shop's till")));
    admit->add_option("role", texts.role, words(Text::tr("The login")))->required();
    admit->add_option("shop", texts.shop, words(Text::tr("Code of the shop")))->required();
    admit->callback([&options] { options.command = Command::Admit; });
    app.add_subcommand("doctor", words(Text::tr("Look at the store and say what is wrong with it")))
        ->callback([&options] { options.command = Command::Doctor; });
}

void addEyes(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const status =
        app.add_subcommand("status", words(Text::tr("Show how the store stands")));
    status->add_flag("--json", options.json, words(Text::tr("As JSON")));
    status->add_flag("--watch", options.watch, words(Text::tr("Every two seconds, until stopped")));
    status->callback([&options] { options.command = Command::Status; });
    CLI::App* const metrics = app.add_subcommand(
        "metrics", words(Text::tr("Show figures to a monitoring on this machine until stopped")));
    metrics
        ->add_option("--listen", texts.listen,
                     words(Text::tr("Address of this machine alone, and port")))
        ->capture_default_str();
    metrics->callback([&options] { options.command = Command::Metrics; });
}

void addQueue(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const queue =
        app.add_subcommand("queue", words(Text::tr("The messages that are not delivered yet")));
    queue->require_subcommand(1, 1);
    queue->add_subcommand("list", words(Text::tr("List them, the oldest first")))
        ->callback([&options] { options.command = Command::QueueList; });
    const auto add = [&](const char* name, const QString& about, Command command) {
        CLI::App* const one = queue->add_subcommand(name, words(about));
        one->add_option("message", options.message, words(Text::tr("The message's number")))
            ->required();
        one->callback([&options, command] { options.command = command; });
    };
    add("show", Text::tr("Show a message without its secrets"), Command::QueueShow);
    add("retry", Text::tr("Make a message due now"), Command::QueueRetry);
    add("park", Text::tr("Leave a message out until retry"), Command::QueuePark);
    add("settle", Text::tr("Take a parked message for delivered"), Command::QueueSettle);
    CLI::App* const anew =
        queue->add_subcommand("reauthorize", words(Text::tr("Replace the credentials of a queue")));
    anew->add_option("queue", texts.queue, words(Text::tr("Name of the queue")))->required();
    anew->add_option("file", texts.authorization,
                     words(Text::tr("File whose only line is the header Authorization")))
        ->required();
    anew->add_option("--shop", texts.shop, words(Text::tr("Of this shop only")));
    anew->callback([&options] { options.command = Command::QueueReauthorize; });
}

void addSuspended(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const suspended = app.add_subcommand(
        "suspended", words(Text::tr("Suspended checks that any till of a shop may take up")));
    suspended->require_subcommand(1, 1);
    suspended->add_subcommand("list", words(Text::tr("List them, the oldest first")))
        ->callback([&options] { options.command = Command::SuspendedList; });
    CLI::App* const release = suspended->add_subcommand(
        "release", words(Text::tr("Give a check free that a till has asked for and never got, "
                                  "since the till is gone for good")));
    release->add_option("check", texts.check, words(Text::tr("Identifier of the check")))
        ->required();
    release->callback([&options] { options.command = Command::SuspendedRelease; });
}

void addReturns(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const returns = app.add_subcommand(
        "returns", words(Text::tr("The returns that have reserved goods and are not handed over")));
    returns->require_subcommand(1, 1);
    returns->add_subcommand("list", words(Text::tr("List them, the oldest first")))
        ->callback([&options] { options.command = Command::ReturnsList; });
    CLI::App* const release = returns->add_subcommand(
        "release", words(Text::tr("Give back what a return has reserved that will never close")));
    release->add_option("return", texts.identifier, words(Text::tr("The return's identifier")))
        ->required();
    release->callback([&options] { options.command = Command::ReturnsRelease; });
}

void take(Options& options, const Texts& texts)
{
    options.check = QString::fromLocal8Bit(texts.check.c_str());
    options.config = QString::fromLocal8Bit(texts.config.c_str());
    options.worker = QString::fromLocal8Bit(texts.worker.c_str());
    options.authorizationFile = QString::fromLocal8Bit(texts.authorization.c_str());
    options.role = QString::fromLocal8Bit(texts.role.c_str());
    options.shop = QString::fromLocal8Bit(texts.shop.c_str());
    options.queue = QString::fromLocal8Bit(texts.queue.c_str());
    options.listen = QString::fromLocal8Bit(texts.listen.c_str());
    options.identifier = QString::fromLocal8Bit(texts.identifier.c_str());
}

} // namespace

int main(int argc, char** argv)
{
    console::streams::prepare();
    const QCoreApplication application(argc, argv);
    console::speakUsersLanguage();
    console::streams::keepLogPrintable();
    console::Output out(stdout);
    console::Output errors(stderr);
    Options options;
    Texts texts;
    CLI::App app(words(Text::tr("The books that tills share, on PostgreSQL.\n"
                                "Exit codes: 0 done, 1 failed, 2 wrong command line or settings.")),
                 "orva-store");
    console::usage::prepare(app);
    app.set_version_flag("--version", ORVA_VERSION, words(Text::tr("Print the version and exit")));
    app.add_option("--config", texts.config,
                   words(Text::tr("File with the settings (default: orva.toml here, then "
                                  "/etc/orva/orva.toml)")));
    addWork(app, options, texts);
    addTables(app, options, texts);
    addEyes(app, options, texts);
    addQueue(app, options, texts);
    addSuspended(app, options, texts);
    addReturns(app, options, texts);
    app.require_subcommand(1, 1);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const bool isDone = console::usage::exitOf(app, error, out, errors) == 0;
        return isDone ? console::exitcode::ok : console::exitcode::usage;
    }
    take(options, texts);
    const int code = orvastore::Program(options, out, errors).run();
    return out.isWhole() || code != 0 ? code : console::exitcode::failed;
}
