// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/worksession.h"

#include "console/queue/queueview.h"
#include "host/http/operationbudget.h"
#include "host/queue/outgoingqueue.h"
#include "input/nearestname.h"
#include "till/checks/amount.h"
#include "till/commands/commandline.h"
#include "till/commands/queuewait.h"
#include "till/desk/cashdesk.h"
#include "till/failure.h"
#include "till/reason.h"
#include "till/screen/checkview.h"
#include "till/screen/output.h"
#include "till/screen/table.h"
#include "till/text.h"

#include <istream>
#include <string>

using namespace Qt::StringLiterals;

namespace till {

struct WorkSession::Entry
{
    QString name;
    QString arguments;
    QString description;
    Action action;
    /// Whether the command needs its arguments.
    bool needs;
};

const QList<WorkSession::Entry>& WorkSession::entries()
{
    static const QList<Entry> all{
        {u"open"_s, Text::tr("FILE"),
         Text::tr("open a sale and present its card, if the file names one"), &WorkSession::open,
         true},
        {u"card"_s, Text::tr("NUMBER"), Text::tr("present a card"), &WorkSession::card, true},
        {u"quantity"_s, Text::tr("POSITION QUANTITY"), Text::tr("change a line's quantity"),
         &WorkSession::quantity, true},
        {u"price"_s, Text::tr("POSITION SUM"), Text::tr("change a line's price"),
         &WorkSession::price, true},
        {u"request"_s,
         {},
         Text::tr("ask the loyalty system about the check as it stands"),
         &WorkSession::request,
         false},
        {u"points"_s, Text::tr("SUM|all|none"), Text::tr("pay with points"), &WorkSession::points,
         true},
        {u"tender"_s, Text::tr("SUM"), Text::tr("take cash"), &WorkSession::tender, true},
        {u"close"_s,
         {},
         Text::tr("close the check and print its slip"),
         &WorkSession::close,
         false},
        {u"suspend"_s, u"[--store]"_s,
         Text::tr("keep the check for later, with --store for any till of the shop"),
         &WorkSession::suspend, false},
        {u"restore"_s, u"ID|last"_s, Text::tr("take a suspended check up again"),
         &WorkSession::restore, true},
        {u"abandon"_s, {}, Text::tr("give the check up"), &WorkSession::abandon, false},
        {u"return"_s, Text::tr("FILE"), Text::tr("open a return against a closed sale"),
         &WorkSession::openReturn, true},
        {u"show"_s, {}, Text::tr("show the check"), &WorkSession::show, false},
        {u"queue"_s, {}, Text::tr("list the messages to be delivered"), &WorkSession::queue, false},
        {u"wait"_s, Text::tr("[SECONDS]"),
         Text::tr("wait until the queue is delivered, %1 s at most").arg(QueueWait::usualSeconds),
         &WorkSession::wait, false},
        {u"help"_s, {}, Text::tr("list the commands"), &WorkSession::help, false},
    };
    return all;
}

WorkSession::WorkSession(CashDesk& cashDesk, poshost::Database& till, Output& output,
                         const std::function<void()>& checkClosed,
                         poshost::RequestObserver* requestObserver)
    : desk(cashDesk), database(till), out(output), closed(checkClosed), observer(requestObserver)
{}

void WorkSession::run(std::istream& input, const QString& prompt)
{
    std::string line;
    // nobody can work who is told nothing
    while (out.isWhole()) {
        out.write(prompt);
        if (!std::getline(input, line)) {
            out.write(prompt.isEmpty() ? QString() : u"\n"_s); // the shell's own prompt comes next
            break;
        }
        if (!command(QString::fromStdString(line))) {
            break;
        }
    }
    desk.leave();
    out.notes(desk.takeNotices());
}

bool WorkSession::command(const QString& line)
{
    const QString trimmed = line.trimmed();
    if (trimmed.isEmpty() || trimmed.startsWith(u'#')) {
        return true;
    }
    const QString name = trimmed.section(u' ', 0, 0);
    if (name == u"quit"_s) {
        out.line(u"ok"_s);
        return false;
    }
    QString failure;
    try {
        execute(name, trimmed.section(u' ', 1).trimmed());
    } catch (const std::exception& error) {
        failure = reasonOf(error);
    }
    out.notes(desk.takeNotices());
    out.line(failure.isEmpty() ? u"ok"_s : u"error: %1"_s.arg(failure));
    return true;
}

QString WorkSession::nearestCommand(const QString& name)
{
    QStringList names{u"quit"_s};
    for (const Entry& entry : entries()) {
        names.append(entry.name);
    }
    return input::nearestName(name, names);
}

void WorkSession::execute(const QString& name, const QString& rest)
{
    for (const Entry& entry : entries()) {
        if (entry.name != name) {
            continue;
        }
        if (entry.needs && rest.isEmpty()) {
            throw Failure(Text::tr("Write it so: %1 %2").arg(entry.name, entry.arguments));
        }
        const poshost::OperationBudget operation(observer);
        (this->*entry.action)(rest);
        return;
    }
    const QString nearest = nearestCommand(name);
    throw Failure(
        nearest.isEmpty()
            ? Text::tr("There is no command \"%1\"; \"help\" lists them.").arg(name)
            : Text::tr("There is no command \"%1\"; did you mean \"%2\"?").arg(name, nearest));
}

void WorkSession::open(const QString& file)
{
    const CheckFile check = CheckFile::read(file);
    if (check.type != CheckFile::Type::Sale) {
        throw Failure(Text::tr("%1 is a return; open it with \"return\".").arg(file));
    }
    desk.openSale(check);
    if (!check.card.isEmpty()) {
        desk.presentCard(check.card);
    }
    show({});
}

void WorkSession::openReturn(const QString& file)
{
    const CheckFile check = CheckFile::read(file);
    if (check.type != CheckFile::Type::Return) {
        throw Failure(Text::tr("%1 is a sale; open it with \"open\".").arg(file));
    }
    desk.openReturn(check);
    if (!desk.current().cardNumber().isEmpty()) {
        desk.request();
    }
    show({});
}

void WorkSession::card(const QString& number)
{
    desk.presentCard(number);
    show({});
}

void WorkSession::quantity(const QString& rest)
{
    const QString text = rest.section(u' ', 1).trimmed();
    const auto thousandths = amount::readDecimal(text, 3);
    if (!thousandths || *thousandths > amount::maximumThousandths) {
        throw Failure(Text::tr("\"%1\" is not a quantity with at most three decimals.").arg(text));
    }
    desk.changeQuantity(rest.section(u' ', 0, 0).toInt(), *thousandths);
    show({});
}

void WorkSession::price(const QString& rest)
{
    desk.changePrice(rest.section(u' ', 0, 0).toInt(), readSum(rest.section(u' ', 1).trimmed()));
    show({});
}

void WorkSession::request(const QString&)
{
    desk.request();
    show({});
}

void WorkSession::points(const QString& choice)
{
    desk.choosePoints(readPoints(choice));
    show({});
}

void WorkSession::tender(const QString& sum)
{
    desk.tender(readSum(sum));
    show({});
}

void WorkSession::close(const QString&)
{
    const Check check = desk.close();
    closed();
    out.write(checkview::slip(check, checkview::Messages::InOneLine, out.columns()));
}

void WorkSession::suspend(const QString& where)
{
    if (!where.isEmpty() && where != u"--store"_s) {
        throw Failure(Text::tr("Write it so: %1 %2").arg(u"suspend"_s, u"[--store]"_s));
    }
    const QString id = where.isEmpty() ? desk.suspend() : desk.suspendToStore();
    out.line(Text::tr("Suspended: %1").arg(id));
}

void WorkSession::restore(const QString& which)
{
    desk.restore(which);
    show({});
}

void WorkSession::abandon(const QString&)
{
    desk.abandon();
    closed(); // what a return has reserved is given back
}

void WorkSession::show(const QString&)
{
    const qint64 available = desk.availablePoints();
    out.write(checkview::forCashier(desk.current(), available, out.columns()));
}

void WorkSession::queue(const QString&)
{
    const auto entries = poshost::OutgoingQueue(database).list();
    out.write(entries.isEmpty() ? Text::tr("Nothing is to be delivered.\n")
                                : console::queueview::table(entries, out.columns()));
}

void WorkSession::wait(const QString& seconds)
{
    bool isNumber = true;
    const int limit = seconds.isEmpty() ? QueueWait::usualSeconds : seconds.toInt(&isNumber);
    if (!isNumber || limit < 0 || limit > QueueWait::longestSeconds) {
        throw Failure(Text::tr("\"%1\" is not a number of seconds up to %2.")
                          .arg(seconds)
                          .arg(QueueWait::longestSeconds));
    }
    const poshost::QueueCounts counts = QueueWait::untilDelivered(database, limit);
    const QString text = QueueWait::text(counts);
    if (QueueWait::undelivered(counts) > 0) {
        throw Failure(text);
    }
    out.line(text);
}

void WorkSession::help(const QString&)
{
    Table table({{Text::tr("Command")}, {QString()}, {QString()}});
    for (const Entry& entry : entries()) {
        table.addRow({entry.name, entry.arguments, entry.description});
    }
    table.addRow({u"quit"_s, {}, Text::tr("end the work; an open check is abandoned")});
    out.write(table.text(out.columns()));
}

} // namespace till
