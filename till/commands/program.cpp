// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/program.h"

#include "console/printable.h"
#include "console/terminal.h"
#include "host/core/basicexception.h"
#include "host/http/operationbudget.h"
#include "till/commands/archivecommand.h"
#include "till/commands/backupcommands.h"
#include "till/commands/doctorcommand.h"
#include "till/commands/erasecommand.h"
#include "till/commands/explaincommand.h"
#include "till/commands/logcommands.h"
#include "till/commands/metricswatch.h"
#include "till/commands/queuecommands.h"
#include "till/commands/queuewait.h"
#include "till/commands/sharedcommands.h"
#include "till/commands/supportcommand.h"
#include "till/commands/verifycommand.h"
#include "till/commands/workplace.h"
#include "till/commands/worksession.h"
#include "till/configfile.h"
#include "till/failure.h"
#include "till/init/initcommand.h"
#include "till/reason.h"
#include "till/recording/recordfolder.h"
#include "till/screen/checkjson.h"
#include "till/screen/checklist.h"
#include "till/screen/checkview.h"
#include "till/screen/ledger.h"
#include "till/screen/output.h"
#include "till/screen/progress.h"
#include "till/support/supportedcase.h"
#include "till/text.h"

#include <QJsonDocument>

#include <cstdio>
#include <iostream>

using namespace Qt::StringLiterals;

namespace till {
namespace {

ExitCode exitCodeOf(const std::exception& error)
{
    if (const auto* failure = dynamic_cast<const Failure*>(&error)) {
        return failure->exitCode();
    }
    const auto* known = dynamic_cast<const BasicException*>(&error);
    return known != nullptr && known->tr().id() == u"configError"_s ? ExitCode::Usage
                                                                    : ExitCode::Failed;
}

CheckFile readFile(const QString& file, CheckFile::Type type)
{
    CheckFile check = CheckFile::read(file);
    if (check.type != type) {
        throw Failure(type == CheckFile::Type::Sale
                          ? Text::tr("%1 is a return; use the command \"return\".").arg(file)
                          : Text::tr("%1 is a sale; use the command \"sell\".").arg(file),
                      ExitCode::Usage);
    }
    return check;
}

/// These need no database.
bool isAboutRecords(Command command)
{
    return command == Command::LogList || command == Command::LogShow ||
           command == Command::LogExport || command == Command::LogReplay;
}

ExitCode exitCodeFor(const Check& check)
{
    return !check.isReturn() && check.loyalty == LoyaltyState::Refused ? ExitCode::WithoutLoyalty
                                                                       : ExitCode::Ok;
}

/// Presents an open sale's card and asks for the effect.
void presentCardOf(CashDesk& desk, const CheckFile& file)
{
    if (!file.card.isEmpty() && desk.presentCard(file.card)) {
        desk.request();
    }
}

} // namespace

ExitCode Program::run()
{
    out.setQuiet(options.quiet);
    // JSON is read by programs, which have no use for progress
    errors.setQuiet(options.quiet || options.json);
    const ExitCode code = doCommand();
    return errors.tellTrouble(out, code, done);
}

ExitCode Program::doCommand()
{
    if (options.command == Command::Doctor) {
        return doctor::run(options, out, errors); // opens nothing for writing, unlike a workplace
    }
    try {
        if (options.command == Command::Init) {
            return init::InitCommand(options, out, errors).run();
        }
        if (options.configFound && options.configFile != configfile::local()) {
            errors.done(Text::tr("Settings: %1").arg(options.configFile));
        }
        if (isAboutRecords(options.command)) {
            return LogCommands(options, out, errors).run();
        }
        if (options.command == Command::Restore) {
            return backupcommands::restore(options, out);
        }
        if (options.command == Command::Support) {
            return SupportCommand(options, out, errors).run();
        }
        if (options.command == Command::Verify) {
            return VerifyCommand(options, out, errors).run();
        }
        if (options.command == Command::Explain && !options.file.isEmpty()) {
            return explainElsewhere();
        }
        Workplace workplace(options);
        errors.notes(workplace.warnings());
        return dispatch(workplace);
    } catch (const std::exception& error) {
        errors.failure(reasonOf(error));
        return exitCodeOf(error);
    }
}

ExitCode Program::dispatch(Workplace& workplace)
{
    switch (options.command) {
    case Command::Check:
        return check(workplace);
    case Command::Sell:
        return sell(workplace);
    case Command::Return:
        return takeBack(workplace);
    case Command::Work:
        return work(workplace);
    case Command::Checks:
        return checks(workplace);
    case Command::Ledger:
        return ledger(workplace);
    case Command::Erase:
        return EraseCommand(workplace, options, out).run();
    case Command::Explain:
        return explain(workplace);
    case Command::Backup:
        return backupcommands::backup(workplace, options, out);
    case Command::Metrics:
        MetricsWatch::write(workplace.database(), options.target);
        out.done(Text::tr("Metrics: %1").arg(options.target));
        return ExitCode::Ok;
    case Command::Archive:
        return ArchiveCommand(workplace, options, out, errors).run();
    default:
        return QueueCommands(workplace, options, out, errors).run();
    }
}

ExitCode Program::check(Workplace& workplace)
{
    const CheckFile file = readFile(options.file, CheckFile::Type::Sale);
    workplace.loadPlugin();
    const poshost::OperationBudget operation(&waiting);
    CashDesk& desk = workplace.cashDesk();
    desk.openTrial(file);
    presentCardOf(desk, file);
    const qint64 available = desk.availablePoints();
    const ExitCode code = exitCodeFor(desk.current());
    show(desk.current(), checkview::forCashier(desk.current(), available, out.columns()),
         desk.takeNotices());
    desk.abandon();
    return code;
}

ExitCode Program::sell(Workplace& workplace)
{
    const CheckFile file = readFile(options.file, CheckFile::Type::Sale);
    workplace.loadPlugin();
    workplace.startDelivery();
    const poshost::OperationBudget operation(&waiting);
    CashDesk& desk = workplace.cashDesk();
    desk.openSale(file);
    presentCardOf(desk, file);
    if (options.points.kind != PointsChoice::Kind::None &&
        desk.current().loyalty == LoyaltyState::Ready) {
        desk.choosePoints(options.points);
    }
    if (options.tenderKopecks) {
        desk.tender(*options.tenderKopecks);
    }
    if (!options.json) {
        for (const QString& message : desk.current().cashierMessages) {
            const QString line =
                console::printable::line(Text::tr("To the cashier: %1").arg(message));
            out.write(console::printable::folded(line, out.columns()) + u'\n');
        }
    }
    return closeAndPrint(workplace);
}

ExitCode Program::takeBack(Workplace& workplace)
{
    const CheckFile file = readFile(options.file, CheckFile::Type::Return);
    workplace.loadPlugin();
    workplace.startDelivery();
    const poshost::OperationBudget operation(&waiting);
    CashDesk& desk = workplace.cashDesk();
    desk.openReturn(file);
    if (!desk.current().cardNumber().isEmpty()) {
        desk.request();
    }
    return closeAndPrint(workplace);
}

ExitCode Program::closeAndPrint(Workplace& workplace)
{
    CashDesk& desk = workplace.cashDesk();
    try {
        const Check closed = desk.close();
        done = Text::tr("The check is closed all the same: %1.").arg(closed.id());
        workplace.notifyDelivery();
        const QStringList notes = desk.takeNotices();
        if (!options.json) {
            out.notes(notes);
        }
        show(closed, checkview::slip(closed, checkview::Messages::Wrapped, out.columns()),
             options.json ? notes : QStringList());
        awaitDelivery(workplace);
        return exitCodeFor(closed);
    } catch (const std::exception&) {
        (options.json ? errors : out).notes(desk.takeNotices());
        throw;
    }
}

ExitCode Program::work(Workplace& workplace)
{
    workplace.loadPlugin();
    workplace.startDelivery();
    WorkSession session(
        workplace.cashDesk(), workplace.database(), out,
        [&workplace] { workplace.notifyDelivery(); }, &waiting);
    const bool isTyped =
        console::terminal::isTerminal(stdin) && console::terminal::isTerminal(stdout);
    session.run(std::cin, isTyped ? u"> "_s : QString());
    if (!out.isWhole()) {
        done = Text::tr("The work ends here; \"orva-till checks\" lists what is closed.");
    }
    return ExitCode::Ok;
}

ExitCode Program::checks(Workplace& workplace)
{
    if (options.fromStore) {
        return SharedCommands(workplace, options, out).checks();
    }
    const checklist::Section section{options.before, options.all ? 0 : options.count};
    const auto write = [this](const QString& part) { out.write(part); };
    if (options.json) {
        checklist::writeJson(workplace.checks(), section, write);
    } else {
        checklist::writeTable(workplace.checks(), section, out.columns(), write);
    }
    return ExitCode::Ok;
}

ExitCode Program::ledger(Workplace& workplace)
{
    if (options.fromStore) {
        return SharedCommands(workplace, options, out).ledger();
    }
    const Ledger ledger(workplace.checks(), workplace.database());
    const auto write = [this](const QString& part) { out.write(part); };
    if (options.csv) {
        ledger.writeCsv(write);
    } else if (options.json) {
        ledger.writeJson(write);
    } else {
        ledger.writeTable(out.columns(), write);
    }
    return ExitCode::Ok;
}

ExitCode Program::explain(Workplace& workplace)
{
    const auto records = RecordFolder::configured(loadConfig(options));
    return ExplainCommand(workplace.checks(), workplace.database(), records.get(), options, out)
        .run(workplace.sharedStore(), errors);
}

/// What another till has handed on.
ExitCode Program::explainElsewhere()
{
    SupportedCase handedOn(SupportArchive::read(options.file), options.file);
    return ExplainCommand(handedOn.checks(), handedOn.database(), handedOn.records(), options, out)
        .run(nullptr, errors);
}

void Program::show(const Check& check, const QString& text, const QStringList& notes)
{
    if (options.json) {
        const QJsonDocument document(checkjson::object(check, notes));
        out.write(QString::fromUtf8(document.toJson()));
    } else {
        out.write(text);
        out.notes(notes);
    }
}

void Program::awaitDelivery(Workplace& workplace)
{
    if (options.waitSeconds <= 0) {
        return;
    }
    const poshost::QueueCounts counts = [&] {
        Progress progress(errors, Text::tr("Delivering"));
        return QueueWait::untilDelivered(
            workplace.database(), options.waitSeconds,
            [&progress](qint64 delivered, qint64 all) { progress.show(delivered, all); });
    }();
    if (!options.json) {
        out.done(QueueWait::text(counts));
    }
}

} // namespace till
