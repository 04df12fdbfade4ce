// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/commandline_p.h"
#include "till/screen/checklist.h"

namespace till::commandline {
namespace {

void addStore(CLI::App* command, Options& options)
{
    command->add_flag(
        "--store", options.fromStore,
        words(QT_TRANSLATE_NOOP("Till", "Of all tills of the shop, out of the store")));
}

void addList(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const checks =
        addCommand(app, "checks", QT_TRANSLATE_NOOP("Till", "List the checks, the newest first"),
                   options, Command::Checks);
    options.count = checklist::pageLength;
    CLI::Option* const count = checks->add_option(
        "--count", options.count,
        words(QT_TRANSLATE_NOOP("Till", "So many checks; otherwise a page of 50")));
    count->check(CLI::Range(1, 1'000'000'000));
    checks->add_option(
        "--before", texts.before,
        words(QT_TRANSLATE_NOOP("Till", "Go on behind this check, by its identifier")));
    checks->add_flag("--all", options.all, words(QT_TRANSLATE_NOOP("Till", "All checks")))
        ->excludes(count);
    addStore(checks, options);
    addJson(checks, options);
}

void addLedger(CLI::App& app, Options& options)
{
    CLI::App* const ledger = addCommand(
        app, "ledger", QT_TRANSLATE_NOOP("Till", "List what the closed checks did to the points"),
        options, Command::Ledger);
    CLI::Option* const csv = ledger->add_flag(
        "--csv", options.csv, words(QT_TRANSLATE_NOOP("Till", "As comma-separated values")));
    ledger->add_flag("--json", options.json, words(QT_TRANSLATE_NOOP("Till", "As JSON")))
        ->excludes(csv);
    addStore(ledger, options);
}

void addArchive(CLI::App& app, Options& options)
{
    CLI::App* const archive = addCommand(
        app, "archive",
        QT_TRANSLATE_NOOP("Till", "Move old checks into the archive and list its months"), options,
        Command::Archive);
    archive->add_flag("--compact", options.compact,
                      words(QT_TRANSLATE_NOOP("Till", "Write the database anew, once: a file of a "
                                                      "former version\nthen gives back what is "
                                                      "free in it")));
    addJson(archive, options);
}

void addCopies(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const backup =
        addCommand(app, "backup",
                   QT_TRANSLATE_NOOP("Till", "Copy checks, queue and archive into one file, while "
                                             "selling goes on"),
                   options, Command::Backup);
    backup->add_option("FILE", texts.target, words(QT_TRANSLATE_NOOP("Till", "A new file")))
        ->required();
    backup->add_flag(
        "--with-secrets", options.withSecrets,
        words(QT_TRANSLATE_NOOP("Till", "With the credentials of undelivered messages")));
    addJson(backup, options);

    CLI::App* const restore = addCommand(
        app, "restore",
        QT_TRANSLATE_NOOP("Till", "Put a copy in the place of the books; what is there is kept"),
        options, Command::Restore);
    restore
        ->add_option("FILE", texts.target,
                     words(QT_TRANSLATE_NOOP("Till", "A file that \"backup\" has made")))
        ->required();
    restore
        ->add_option(
            "--last-number", options.lastNumber,
            words(QT_TRANSLATE_NOOP("Till", "The highest number of a check of this till that the "
                                            "server knows")))
        ->check(CLI::Range(1, 2'000'000'000));
    addJson(restore, options);
}

void addMetrics(CLI::App& app, Options& options, Texts& texts)
{
    CLI::App* const metrics =
        addCommand(app, "metrics",
                   QT_TRANSLATE_NOOP("Till", "Write how the till stands into a file for a "
                                             "monitoring"),
                   options, Command::Metrics);
    metrics
        ->add_option("FILE", texts.target,
                     words(QT_TRANSLATE_NOOP("Till", "The file; one of that name is replaced")))
        ->required();
}

} // namespace

std::string words(const char* text)
{
    return Text::tr(text).toStdString();
}

CLI::App* addCommand(CLI::App& parent, const std::string& name, const char* description,
                     Options& options, Command command)
{
    CLI::App* const sub = parent.add_subcommand(name, words(description));
    sub->fallthrough();
    sub->callback([&options, command] { options.command = command; });
    return sub;
}

void addJson(CLI::App* command, Options& options)
{
    command->add_flag("--json", options.json, words(QT_TRANSLATE_NOOP("Till", "As JSON")));
}

void addBooks(CLI::App& app, Options& options, Texts& texts)
{
    addList(app, options, texts);
    addLedger(app, options);
    addArchive(app, options);
    addCopies(app, options, texts);
    addMetrics(app, options, texts);
}

} // namespace till::commandline
