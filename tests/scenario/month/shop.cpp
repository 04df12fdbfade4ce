// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/month/shop.h"

#include "tests/scenario/month/measured.h"
#include "tests/support/cashier.h"
#include "tests/support/tillsettings.h"

#include <QFile>
#include <QSet>

using namespace Qt::StringLiterals;

namespace month {
namespace {

constexpr int baskets = 20;

void write(const QString& name, const QString& text)
{
    QFile file(name);
    const QByteArray bytes = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(bytes) != bytes.size()) {
        throw std::runtime_error("cannot write " + name.toStdString());
    }
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

QString textOf(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + fileName.toStdString());
    }
    return QString::fromUtf8(file.readAll());
}

} // namespace

Shop::Shop(const QString& ownFolder, quint64 seed)
    : folder(ownFolder), random(seed), rules(tests::LoyaltyServer::strictRules()),
      server(std::make_unique<Server>(rules, path(u"server.sqlite"_s)))
{
    writeFiles();
}

/// The till's settings and the baskets of the month.
void Shop::writeFiles()
{
    tests::TillSettings settings;
    settings.server = server->url();
    settings.user = rules.user;
    settings.password = rules.password;
    settings.apiKey = rules.apiKey;
    settings.plugin = QStringLiteral(ORVA_PLUGIN);
    write(path(u"orva.toml"_s), settings.toml());
    for (int basket = 0; basket < baskets; ++basket) {
        QString text = u"type = \"sale\"\ncard = \"%1\"\n"_s.arg(
            rules.cards.at(below(rules.cards.size())).number);
        const quint64 lines = 1 + below(8);
        for (quint64 line = 0; line < lines; ++line) {
            text += u"[[line]]\ncode = \"%1\"\nname = \"Товар %1\"\nprice = \"%2.%3\"\n"
                    "quantity = %4\n"_s.arg(1000 + below(30))
                        .arg(5 + below(500))
                        .arg(below(100), 2, 10, QLatin1Char('0'))
                        .arg(1 + below(3));
        }
        write(path(u"sale%1.toml"_s.arg(basket)), text);
    }
    write(path(u"return.toml"_s), u"type = \"return\"\nsale = \"last\"\n"
                                  "[[line]]\nposition = 1\nquantity = 1\n"_s);
}

Drained Shop::run(int confirmations)
{
    Drained drained;
    drained.confirmations = confirmations;
    fill(confirmations, drained);
    const QueueFile queue = QueueFile::read(path(u"till.sqlite"_s));
    QSet<QString> distinct;
    for (const Queued& message : queue.messages) {
        distinct.insert(message.check);
        drained.returns += message.sale.isEmpty() ? 0 : 1;
    }
    if (distinct.size() != confirmations || queue.messages.size() != confirmations ||
        queue.delivered != 0) {
        drained.complaints.append(
            u"%1 checks were closed, the queue holds %2 messages of %3 checks, %4 are delivered"_s
                .arg(confirmations)
                .arg(queue.messages.size())
                .arg(distinct.size())
                .arg(queue.delivered));
        return drained;
    }
    drain(queue, drained);
    compareBooks(confirmations, drained);
    return drained;
}

/// A cashier's month: sales, some of them paid with points, and after every ninth a return of one
/// piece of it. The till tries to deliver all the time.
void Shop::fill(int confirmations, Drained& drained)
{
    constexpr int returnEvery = 10;
    QStringList commands;
    for (int i = 1; i <= confirmations; ++i) {
        const bool isReturn = i % returnEvery == 0;
        commands += isReturn ? u"return return.toml"_s : u"open sale%1.toml"_s.arg(below(baskets));
        if (!isReturn && below(3) == 0) {
            commands += u"points %1"_s.arg(1 + below(20));
        }
        commands += u"close"_s;
    }
    write(path(u"commands"_s), commands.join(u'\n') + u'\n');
    server->setBookingAway(true);
    const Run run = runMeasured(QStringLiteral(ORVA_TILL), {u"work"_s}, folder, path(u"commands"_s),
                                path(u"slips"_s));
    server->setBookingAway(false);
    drained.fillSeconds = run.seconds;
    drained.sellingPeakKibibytes = run.peakKibibytes;
    tests::Cashier cashier;
    cashier.read(commands, textOf(path(u"slips"_s)));
    if (run.exitCode != 0 || cashier.done() != commands.size()) {
        drained.complaints.append(
            u"the working till ended with %1 and did %2 of %3 commands; it refused: %4"_s
                .arg(run.exitCode)
                .arg(cashier.done())
                .arg(commands.size())
                .arg(cashier.refusals().join(u", "_s)));
    }
}

void Shop::drain(const QueueFile& queue, Drained& drained)
{
    // the till has met an absent server and waits up to five minutes
    till({u"queue"_s, u"retry"_s, QString::number(queue.firstNumber)}, drained);
    server->takeArrivals();
    const Run run =
        runMeasured(QStringLiteral(ORVA_TILL), {u"queue"_s, u"deliver"_s, u"--json"_s}, folder);
    const QList<Arrival> arrivals = server->takeArrivals();
    drained.drainSeconds = run.seconds;
    drained.peakKibibytes = run.peakKibibytes;
    drained.requests = arrivals.size();
    if (run.exitCode != 0) {
        drained.complaints.append(u"queue deliver ended with %1: %2"_s.arg(run.exitCode)
                                      .arg(QString::fromUtf8(run.output)));
    }
    drained.complaints += complaints(queue.messages, arrivals);
}

/// The till's books and the server's are the same to the kopeck, and nothing is left.
void Shop::compareBooks(int confirmations, Drained& drained)
{
    const QByteArray tillBooks = till({u"ledger"_s, u"--csv"_s}, drained);
    const simulator::LedgerView view = server->books();
    if (tillBooks != simulator::ledgerCsv(view).toUtf8()) {
        drained.complaints.append(u"the till's books and the server's differ"_s);
    }
    if (tillBooks.count('\n') != confirmations + 1) {
        drained.complaints.append(
            u"the books have %1 lines for %2 checks"_s.arg(tillBooks.count('\n'))
                .arg(confirmations));
    }
    if (!view.wrongCard().isEmpty()) {
        drained.complaints.append(
            u"card %1 does not hold what its checks say"_s.arg(view.wrongCard()));
    }
    const QueueFile queue = QueueFile::read(path(u"till.sqlite"_s));
    if (!queue.messages.isEmpty() || queue.delivered != confirmations) {
        drained.complaints.append(
            u"%1 messages are left and %2 delivered"_s.arg(queue.messages.size())
                .arg(queue.delivered));
    }
}

QByteArray Shop::till(const QStringList& arguments, Drained& drained)
{
    const Run run = runMeasured(QStringLiteral(ORVA_TILL), arguments, folder);
    if (run.exitCode != 0) {
        drained.complaints.append(
            u"orva-till %1 ended with %2"_s.arg(arguments.join(u' ')).arg(run.exitCode));
    }
    return run.output;
}

} // namespace month
