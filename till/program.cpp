// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/program.h"

#include "host/core/basicexception.h"
#include "till/checkview.h"
#include "till/doctor/doctorcommand.h"
#include "till/failure.h"
#include "till/ledger.h"
#include "till/output.h"
#include "till/queuecommands.h"
#include "till/queuewait.h"
#include "till/reason.h"
#include "till/table.h"
#include "till/text.h"
#include "till/workplace.h"
#include "till/worksession.h"

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

ExitCode exitCodeFor(const Check& check)
{
    return !check.isReturn() && check.loyalty == LoyaltyState::Refused ? ExitCode::WithoutLoyalty
                                                                       : ExitCode::Ok;
}

/// Opens a sale, presents its card and asks for the effect: at most one wait when the server is
/// away.
void openWithCard(CashDesk& desk, const CheckFile& file)
{
    desk.openSale(file);
    if (!file.card.isEmpty() && desk.presentCard(file.card)) {
        desk.request();
    }
}

} // namespace

ExitCode Program::run()
{
    if (options.command == Command::Doctor) {
        return doctor::run(options, out); // opens nothing for writing, unlike a workplace
    }
    try {
        Workplace workplace(options);
        errors.notes(workplace.warnings());
        return dispatch(workplace);
    } catch (const std::exception& error) {
        errors.line(u"orva-till: %1"_s.arg(reasonOf(error)));
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
    default:
        return QueueCommands(workplace, options, out).run();
    }
}

ExitCode Program::check(Workplace& workplace)
{
    const CheckFile file = readFile(options.file, CheckFile::Type::Sale);
    workplace.loadPlugin();
    CashDesk& desk = workplace.cashDesk();
    openWithCard(desk, file);
    const qint64 available = desk.availablePoints();
    out.write(checkview::forCashier(desk.current(), available));
    const ExitCode code = exitCodeFor(desk.current());
    out.notes(desk.takeNotices());
    desk.abandon();
    return code;
}

ExitCode Program::sell(Workplace& workplace)
{
    const CheckFile file = readFile(options.file, CheckFile::Type::Sale);
    workplace.loadPlugin();
    workplace.startDelivery();
    CashDesk& desk = workplace.cashDesk();
    openWithCard(desk, file);
    if (options.points.kind != PointsChoice::Kind::None &&
        desk.current().loyalty == LoyaltyState::Ready) {
        desk.choosePoints(options.points);
    }
    if (options.tenderKopecks) {
        desk.tender(*options.tenderKopecks);
    }
    for (const QString& message : desk.current().cashierMessages) {
        out.line(Text::tr("To the cashier: %1").arg(message));
    }
    return closeAndPrint(workplace);
}

ExitCode Program::takeBack(Workplace& workplace)
{
    const CheckFile file = readFile(options.file, CheckFile::Type::Return);
    workplace.loadPlugin();
    workplace.startDelivery();
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
        workplace.notifyDelivery();
        out.notes(desk.takeNotices());
        out.write(checkview::slip(closed));
        awaitDelivery(workplace);
        return exitCodeFor(closed);
    } catch (const std::exception&) {
        out.notes(desk.takeNotices());
        throw;
    }
}

ExitCode Program::work(Workplace& workplace)
{
    workplace.loadPlugin();
    workplace.startDelivery();
    WorkSession session(workplace.cashDesk(), workplace.database(), out,
                        [&workplace] { workplace.notifyDelivery(); });
    session.run(std::cin);
    return ExitCode::Ok;
}

ExitCode Program::checks(Workplace& workplace)
{
    Table table({{Text::tr("Check")},
                 {Text::tr("No"), Table::Align::Right},
                 {Text::tr("Kind")},
                 {Text::tr("State")},
                 {Text::tr("Changed")}});
    for (const CheckRow& row : workplace.checks().list()) {
        table.addRow({row.id, QString::number(row.number),
                      row.isReturn ? Text::tr("return") : Text::tr("sale"), row.state,
                      row.updatedAt.toString(u"yyyy-MM-dd hh:mm:ss"_s)});
    }
    out.write(table.text());
    return ExitCode::Ok;
}

ExitCode Program::ledger(Workplace& workplace)
{
    const Ledger ledger(workplace.checks());
    out.write(options.csv ? ledger.csv() : options.json ? ledger.json() : ledger.table());
    return ExitCode::Ok;
}

void Program::awaitDelivery(Workplace& workplace)
{
    if (options.waitSeconds > 0) {
        out.line(
            QueueWait::text(QueueWait::untilDelivered(workplace.database(), options.waitSeconds)));
    }
}

} // namespace till
