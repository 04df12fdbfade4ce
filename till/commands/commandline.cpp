// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/commandline.h"

#include "console/usage.h"
#include "till/checks/amount.h"
#include "till/commands/commandline_p.h"
#include "till/commands/queuewait.h"
#include "till/configfile.h"
#include "till/failure.h"
#include "till/screen/output.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

using commandline::addCommand;
using commandline::addJson;
using commandline::Texts;
using commandline::words;

void addGlobals(CLI::App& app, Options& options, Texts& texts)
{
    app.add_option(
        "--config", texts.config,
        words(QT_TRANSLATE_NOOP("Till", "Configuration file; otherwise orva.toml here, or "
                                        "/etc/orva/orva.toml")));
    app.add_option("--plugin", texts.plugin,
                   words(QT_TRANSLATE_NOOP("Till", "Loyalty plug-in; otherwise plugin in [till]")));
    app.add_option("--database", texts.database,
                   words(QT_TRANSLATE_NOOP(
                       "Till", "Database of checks and queue; otherwise database in [till]")));
    app.add_flag(
        "--verbose", options.verbose,
        words(QT_TRANSLATE_NOOP("Till", "Write the loyalty system's log to the standard error")));
    app.add_flag(
        "--quiet", options.quiet,
        words(QT_TRANSLATE_NOOP("Till", "No progress, and not a word about what went well")));
    app.set_version_flag("--version", ORVA_VERSION,
                         words(QT_TRANSLATE_NOOP("Till", "Print the version and exit")));
}

void addChecks(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const check =
        addCommand(app, "check",
                   QT_TRANSLATE_NOOP("Till", "Show what the loyalty system grants a check; close "
                                             "nothing"),
                   options, Command::Check);
    check->add_option("FILE", texts.file, words(QT_TRANSLATE_NOOP("Till", "Check file")))
        ->required();
    addJson(check, options);

    CLI::App* const sell =
        addCommand(app, "sell", QT_TRANSLATE_NOOP("Till", "Sell a check and print its slip"),
                   options, Command::Sell);
    sell->add_option("FILE", texts.file, words(QT_TRANSLATE_NOOP("Till", "Check file")))
        ->required();
    sell->add_option("--points", texts.points,
                     words(QT_TRANSLATE_NOOP("Till", "Pay with so many points, or with \"all\"")));
    sell->add_option(
        "--tender", texts.tender,
        words(QT_TRANSLATE_NOOP("Till", "Cash handed over; otherwise the check is paid exactly")));
    sell->add_option("--wait", options.waitSeconds,
                     words(QT_TRANSLATE_NOOP("Till", "Wait so many seconds for the delivery")))
        ->check(CLI::Range(0, QueueWait::longestSeconds));
    addJson(sell, options);

    CLI::App* const back =
        addCommand(app, "return",
                   QT_TRANSLATE_NOOP("Till", "Return goods of a closed sale and print the slip"),
                   options, Command::Return);
    back->add_option("FILE", texts.file,
                     words(QT_TRANSLATE_NOOP("Till", "Check file of the return")))
        ->required();
    back->add_flag("--archive", options.fromArchive,
                   words(QT_TRANSLATE_NOOP("Till", "However old the sale is, and from the archive "
                                                   "too")));
    back->add_option("--wait", options.waitSeconds,
                     words(QT_TRANSLATE_NOOP("Till", "Wait so many seconds for the delivery")))
        ->check(CLI::Range(0, QueueWait::longestSeconds));
    addJson(back, options);

    addCommand(app, "work",
               QT_TRANSLATE_NOOP("Till", "Read a cashier's commands from the standard input"),
               options, Command::Work);
}

void addFrom(CLI::App* command, Texts& texts)
{
    command->add_option(
        "--from", texts.from,
        words(QT_TRANSLATE_NOOP("Till", "A support archive, instead of this till")));
}

void addDoctor(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const doctor =
        addCommand(app, "doctor",
                   QT_TRANSLATE_NOOP("Till", "Check the set-up; change nothing and book nothing"),
                   options, Command::Doctor);
    doctor->add_flag("--fix", options.fix,
                     words(QT_TRANSLATE_NOOP("Till", "Apply what is safe, and say so; a changed "
                                                     "file is copied first")));
    doctor->add_flag("--json", options.json, words(QT_TRANSLATE_NOOP("Till", "As JSON")));
    doctor->add_option(
        "--card", texts.card,
        words(QT_TRANSLATE_NOOP("Till", "Card to ask the server about; otherwise one of zeros")));
    addFrom(doctor, texts);
    doctor->footer(words(QT_TRANSLATE_NOOP(
        "Till",
        "Exit codes: 0 no check fails, 1 a check fails, 2 the command line cannot be "
        "used, 5 not all\ncould be written. Ends in less than 5 seconds, with --fix after each "
        "mend anew.")));
}

void addInit(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const init = addCommand(
        app, "init",
        QT_TRANSLATE_NOOP("Till", "Ask for the settings of a till, try them and write them"),
        options, Command::Init);
    CLI::Option* const answers = init->add_option(
        "--answers", texts.answers,
        words(QT_TRANSLATE_NOOP("Till", "File of answers, a line each: address, shop, desk, user, "
                                        "password, key;\notherwise asked for, or read from the "
                                        "standard input")));
    init->add_option("--defaults", texts.defaults,
                     words(QT_TRANSLATE_NOOP("Till", "Ask nothing: \"simulator\", the server for "
                                                     "trying")))
        ->check(CLI::IsMember({"simulator"}))
        ->excludes(answers);
    init->add_flag("--offline", options.offline,
                   words(QT_TRANSLATE_NOOP("Till", "Try nothing: the server is away")));
    addJson(init, options);
    init->footer(words(QT_TRANSLATE_NOOP(
        "Till",
        "Writes over nothing. Exit codes: 0 written, or there already; 1 an answer does not "
        "work, or\nnothing can be written; 2 an answer is missing; 6 there are other "
        "settings.")));
}

void addQueue(CLI::App& app, Options& options)
{
    CLI::App* const queue =
        app.add_subcommand("queue", words(QT_TRANSLATE_NOOP("Till", "The outgoing queue")));
    queue->fallthrough();
    queue->require_subcommand(1);
    const auto add = [&](const char* name, const char* description, Command command) {
        CLI::App* const sub = addCommand(*queue, name, description, options, command);
        addJson(sub, options);
        return sub;
    };
    const auto addNumber = [&](CLI::App* sub) {
        sub->add_option("N", options.message,
                        words(QT_TRANSLATE_NOOP("Till", "The message's number")))
            ->required();
    };
    add("list", QT_TRANSLATE_NOOP("Till", "List the messages to be delivered"), Command::QueueList)
        ->add_flag("--all", options.all, words(QT_TRANSLATE_NOOP("Till", "Delivered ones too")));
    addNumber(add("show", QT_TRANSLATE_NOOP("Till", "Show a message, secrets hidden"),
                  Command::QueueShow));
    CLI::App* const deliver =
        add("deliver", QT_TRANSLATE_NOOP("Till", "Deliver what is due"), Command::QueueDeliver);
    deliver
        ->add_flag("--watch", options.watch,
                   words(QT_TRANSLATE_NOOP(
                       "Till", "Go on delivering whatever comes, until stopped; for a service")))
        ->excludes(deliver->get_option("--json"));
    addNumber(
        add("retry", QT_TRANSLATE_NOOP("Till", "Make a message due at once"), Command::QueueRetry));
    addNumber(add("park", QT_TRANSLATE_NOOP("Till", "Leave a message out until it is retried"),
                  Command::QueuePark));
    addNumber(
        add("settle",
            QT_TRANSLATE_NOOP("Till", "Take a parked message for delivered: the server has it"),
            Command::QueueSettle));
    add("reauthorize",
        QT_TRANSLATE_NOOP("Till", "Put the configured credentials into undelivered messages"),
        Command::QueueReauthorize);
}

/// Records for programs, or one of them as a page for people.
void addExport(CLI::App* command, Options& options, Texts& texts)
{
    CLI::Option* const file =
        command->add_option("FILE", texts.target, words(QT_TRANSLATE_NOOP("Till", "A new file")));
    CLI::Option* const page =
        command
            ->add_option("--html", texts.page,
                         words(QT_TRANSLATE_NOOP("Till", "A new file: one record as a page for a "
                                                         "browser")))
            ->excludes(file);
    command
        ->add_flag("--with-cards", options.withCards,
                   words(QT_TRANSLATE_NOOP("Till", "Leave card numbers and names in it")))
        ->needs(page);
    command->parse_complete_callback([file, page] {
        if (file->count() == 0 && page->count() == 0) {
            throw CLI::RequiredError("FILE");
        }
    });
}

void addLog(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const log = app.add_subcommand(
        "log", words(QT_TRANSLATE_NOOP("Till", "What was said to the loyalty system, recorded")));
    log->fallthrough();
    log->require_subcommand(1);
    const auto add = [&](const char* name, const char* description, Command command) {
        return addCommand(*log, name, description, options, command);
    };
    const auto addExported = [&](CLI::App* sub) {
        sub->add_option(
            "--from", texts.file,
            words(QT_TRANSLATE_NOOP("Till", "A file that was exported, or a support archive")));
        return sub;
    };
    const auto addRecord = [&](CLI::App* sub, const char* description) {
        sub->add_option("N", texts.record, words(description))->required();
        return sub;
    };
    addExported(add("list", QT_TRANSLATE_NOOP("Till", "List what was recorded"), Command::LogList))
        ->add_flag("--json", options.json, words(QT_TRANSLATE_NOOP("Till", "As JSON")));
    addExported(
        addRecord(add("show", QT_TRANSLATE_NOOP("Till", "Show requests beside their answers"),
                      Command::LogShow),
                  QT_TRANSLATE_NOOP("Till", "The record's number, such as 3, or 3.2 for its "
                                            "second exchange")));
    addExport(addRecord(add("export", QT_TRANSLATE_NOOP("Till", "Write records into one file"),
                            Command::LogExport),
                        QT_TRANSLATE_NOOP("Till", "The record's number, or \"all\"")),
              options, texts);
    addRecord(add("replay",
                  QT_TRANSLATE_NOOP("Till", "Have the plug-in do it again, offline, and compare"),
                  Command::LogReplay),
              QT_TRANSLATE_NOOP("Till", "The record's number, \"all\", an exported file or "
                                        "a support archive"))
        ->add_flag("--json", options.json, words(QT_TRANSLATE_NOOP("Till", "As JSON")));
}

void addExplain(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const explain =
        addCommand(app, "explain",
                   QT_TRANSLATE_NOOP("Till", "Show where the amounts on a closed check come from"),
                   options, Command::Explain);
    explain
        ->add_option(
            "CHECK", texts.record,
            words(QT_TRANSLATE_NOOP("Till", "The check's identifier or number, or \"last\"")))
        ->required();
    explain->add_flag("--json", options.json, words(QT_TRANSLATE_NOOP("Till", "As JSON")));
    addFrom(explain, texts);
}

void addSupport(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const support = addCommand(
        app, "support",
        QT_TRANSLATE_NOOP("Till", "Put into one file what helps to find a fault elsewhere"),
        options, Command::Support);
    support->add_option("FILE", texts.target, words(QT_TRANSLATE_NOOP("Till", "A new file")))
        ->required();
    support->add_option(
        "--records", texts.record,
        words(QT_TRANSLATE_NOOP("Till", "Records by their numbers, 3,7 for example, or \"all\", "
                                        "with their checks")));
    support->add_option(
        "--check", texts.checks,
        words(QT_TRANSLATE_NOOP("Till", "A check by its identifier or number, or \"last\", with "
                                        "its records; may be repeated")));
    support->add_flag("--with-cards", options.withCards,
                      words(QT_TRANSLATE_NOOP("Till", "Leave card numbers and names in it")));
    addJson(support, options);
    support->footer(words(QT_TRANSLATE_NOOP(
        "Till", "A tar archive for its owner only. Read it elsewhere with \"log list --from "
                "FILE\",\n\"log replay FILE\", \"explain CHECK --from FILE\" and \"doctor "
                "--from FILE\".")));
}

void addErase(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const erase = addCommand(
        app, "erase",
        QT_TRANSLATE_NOOP("Till", "Forget a customer: take a card and its names out of what is "
                                  "kept here"),
        options, Command::Erase);
    erase
        ->add_option("CARD", texts.card,
                     words(QT_TRANSLATE_NOOP("Till", "The card's whole number")))
        ->required();
    erase->add_option(
        "--in", texts.folders,
        words(QT_TRANSLATE_NOOP("Till", "A further folder with exported records and support "
                                        "archives; may be\nrepeated")));
    addJson(erase, options);
    erase->footer(words(QT_TRANSLATE_NOOP(
        "Till", "Delivers first what is not delivered. Exit codes: 0 nothing tells of the customer "
                "any\nmore, 1 something is left, as the report says, 2 the number cannot be "
                "used.")));
}

void addVerify(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const verify = addCommand(
        app, "verify",
        QT_TRANSLATE_NOOP("Till", "Try whether a loyalty server for testing does what tills rely "
                                  "on"),
        options, Command::Verify);
    CLI::Option* const list = verify->add_flag(
        "--list", options.listsCases,
        words(QT_TRANSLATE_NOOP("Till", "The requirements with their cases; try nothing")));
    CLI::Option* const url = verify->add_option(
        "URL", texts.address,
        words(QT_TRANSLATE_NOOP("Till", "The server's address, which is testServer in [verify]")));
    verify->add_option("NAME", texts.cases,
                       words(QT_TRANSLATE_NOOP("Till", "Cases or requirements; otherwise all")));
    verify->add_flag("--strict", options.strict,
                     words(QT_TRANSLATE_NOOP("Till", "What a server should do, it must do")));
    addJson(verify, options);
    verify
        ->add_flag("--tap", options.asTap,
                   words(QT_TRANSLATE_NOOP("Till", "As the Test Anything Protocol")))
        ->excludes(verify->get_option("--json"));
    verify->add_option("--junit", texts.junit,
                       words(QT_TRANSLATE_NOOP("Till", "A new file for the results as JUnit's "
                                                       "XML, beside what is printed")));
    verify->add_flag("--shuffle", options.shuffle,
                     words(QT_TRANSLATE_NOOP("Till", "In an order by chance")));
    verify
        ->add_option("--seed", options.seed,
                     words(QT_TRANSLATE_NOOP("Till", "What the order follows from, above 0")))
        ->check(CLI::PositiveNumber)
        ->needs(verify->get_option("--shuffle"));
    verify->parse_complete_callback([list, url] {
        if (list->count() == 0 && url->count() == 0) {
            throw CLI::RequiredError("URL");
        }
    });
    verify->footer(words(QT_TRANSLATE_NOOP(
        "Till", "Sells and returns with the cards that [verify] names. Exit codes: 0 nothing is "
                "broken, 1\nsomething is, 2 the address is not marked as meant for testing.")));
}

void takeOver(const CLI::App& app, const Texts& texts, Options& options)
{
    options.address = QString::fromStdString(texts.address);
    options.junitFile = QString::fromStdString(texts.junit);
    for (const std::string& name : texts.cases) {
        options.wantedCases.append(QString::fromStdString(name));
    }
    options.configNamed = app.count("--config") > 0;
    const QString found = configfile::found();
    options.configFound = !options.configNamed && !found.isEmpty();
    options.configFile = options.configNamed   ? QString::fromStdString(texts.config)
                         : options.configFound ? found
                                               : configfile::local();
    options.answers = QString::fromStdString(texts.answers);
    options.forSimulator = !texts.defaults.empty();
    for (const std::string& folder : texts.folders) {
        options.folders.append(QString::fromStdString(folder));
    }
    options.plugin = QString::fromStdString(texts.plugin);
    options.database = QString::fromStdString(texts.database);
    options.file = QString::fromStdString(texts.from.empty() ? texts.file : texts.from);
    for (const std::string& check : texts.checks) {
        options.wantedChecks.append(QString::fromStdString(check));
    }
    options.record = QString::fromStdString(texts.record);
    options.before = QString::fromStdString(texts.before);
    options.asPage = !texts.page.empty();
    options.target = QString::fromStdString(options.asPage ? texts.page : texts.target);
    options.card = QString::fromStdString(texts.card);
    options.points = readPoints(QString::fromStdString(texts.points));
    if (!texts.tender.empty()) {
        options.tenderKopecks = readSum(QString::fromStdString(texts.tender));
    }
}

} // namespace

std::optional<int> readCommandLine(int argc, const char* const* argv, Options& options)
{
    CLI::App app(words(QT_TRANSLATE_NOOP("Till", "Reference cash desk for loyalty plug-ins")),
                 "orva-till");
    app.footer(words(QT_TRANSLATE_NOOP(
        "Till",
        "Exit codes: 0 done, 1 failed, 2 command line or file cannot be used, 3 the sale went on\n"
        "without the loyalty system, 4 a replay differs from its record, or a check from its\n"
        "explanation, 5 done, but not all could be written to the standard output, 6 other "
        "settings\n"
        "are there already.")));
    app.require_subcommand(1);
    console::usage::prepare(app);
    Texts texts;
    addGlobals(app, options, texts);
    addChecks(app, options, texts);
    commandline::addBooks(app, options, texts);
    addDoctor(app, options, texts);
    addInit(app, options, texts);
    addQueue(app, options);
    addLog(app, options, texts);
    addExplain(app, options, texts);
    addSupport(app, options, texts);
    addErase(app, options, texts);
    addVerify(app, options, texts);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        Output out(stdout);
        Output errors(stderr);
        const bool isDone = console::usage::exitOf(app, error, out, errors) == 0;
        return int(errors.tellTrouble(out, isDone ? ExitCode::Ok : ExitCode::Usage));
    }
    takeOver(app, texts, options);
    return std::nullopt;
}

PointsChoice readPoints(const QString& text)
{
    if (text == u"all"_s) {
        return PointsChoice::all();
    }
    if (text == u"none"_s) {
        return {};
    }
    const qint64 kopecks = readSum(text);
    return kopecks == 0 ? PointsChoice() : PointsChoice::sum(kopecks);
}

qint64 readSum(const QString& text)
{
    const auto kopecks = amount::readDecimal(text, 2);
    if (!kopecks || *kopecks > amount::maximumKopecks) {
        throw Failure(Text::tr("\"%1\" is not a sum from 0 with at most two decimals, such as "
                               "49.90.")
                          .arg(text),
                      ExitCode::Usage);
    }
    return *kopecks;
}

} // namespace till
