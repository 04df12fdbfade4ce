// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/program.h"

#include "console/exitcode.h"
#include "console/printable.h"
#include "simulator/documents/endpoints.h"
#include "simulator/faults/faultplan.h"
#include "simulator/faults/faultyservice.h"
#include "simulator/http/admindesk.h"
#include "simulator/http/credentials.h"
#include "simulator/http/httpserver.h"
#include "simulator/http/requestlog.h"
#include "simulator/ledger/ledgerprinter.h"
#include "simulator/rules/rulesfile.h"
#include "simulator/rules/rulesreader.h"
#include "simulator/service.h"
#include "simulator/stopsignal.h"
#include "simulator/text.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

#include <csignal>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr std::chrono::milliseconds betweenLooks(500);

/// Looks whether the file of rules has changed and lets the server follow it.
void follow(RulesFile& file, Service& service, FaultPlan& faults, const Options& options,
            Outputs& print)
{
    const auto apply = [&](const Rules& rules) {
        service.setRules(rules);
        faults.setRules(rules.faults);
        if (!options.quiet && !options.json) {
            print.out.write(Text::tr("Rules: read anew\n"));
        }
        if (rules.certificateFile != file.first().certificateFile ||
            rules.keyFile != file.first().keyFile) {
            print.failure(Text::tr("the change of [tls] takes effect at the next start"));
        }
    };
    file.look(apply, [&print](const QString& what) {
        print.failure(Text::tr("the rules stay as they were: %1").arg(what));
    });
}

std::unique_ptr<HttpServer> adminServer(const Options& options, const AdminDesk& desk)
{
    if (options.adminPort == Options::noAdmin) {
        return nullptr;
    }
    try {
        return std::make_unique<HttpServer>(
            u"127.0.0.1"_s, options.adminPort,
            [&desk](const Request& request) { return desk.handle(request); },
            HttpServer::Observer(), HttpServer::Certificate(),
            [&desk](const Request& request) { return desk.bodyLimit(request); });
    } catch (const ListenError& error) {
        throw ListenError(u"--admin-port: "_s + QString::fromUtf8(error.what()));
    }
}

Rules rulesFor(const Options& options)
{
    return options.config.isEmpty() ? readRules(builtInRules(), Text::tr("built-in rules"))
                                    : readRulesFile(options.config);
}

QString databaseFor(const Options& options)
{
    return options.database.isEmpty() ? defaultDatabase() : options.database;
}

/// A command that works as it stands. Only the built-in credentials are shown on the screen.
QString lineToPaste(const Options& options, const Rules& rules, const QString& url)
{
    if (!options.config.isEmpty() || rules.cards.empty()) {
        return u"orva-simulator ledger --database '%1'"_s.arg(databaseFor(options));
    }
    return u"curl -s -H 'Content-Type: application/xml' -H 'Authorization: %1' -d "
           u"'<RawCheck><id>try-1</id><chType>1</chType>"
           "<total>100.00</total><items><RawItem><quantity>1.000</quantity><id>1</id>"
           "<sku>1001</sku><total>100.00</total></RawItem></items><cardNumber>%2</cardNumber>"
           "</RawCheck>' %3%4"_s.arg(
               QString::fromLatin1(authorizationValue(rules.user, rules.password, rules.apiKey)),
               rules.cards.front().number, url,
               QString::fromLatin1(endpoints::pathOf(endpoints::precheck).sliced(1)));
}

/// The first lines, which scripts wait for, and what people want to know.
/// @return whether the addresses could be told
bool announce(const Options& options, const Rules& rules, const QString& url,
              const QString& adminUrl, console::Output& out)
{
    namespace printable = console::printable;
    if (options.json) {
        QJsonObject start{{u"listening"_s, url},
                          {u"rules"_s, options.config},
                          {u"database"_s, databaseFor(options)}};
        if (!adminUrl.isEmpty()) {
            start.insert(u"admin"_s, adminUrl);
        }
        out.write(QString::fromUtf8(QJsonDocument(start).toJson(QJsonDocument::Compact)) + u'\n');
        return out.isWhole();
    }
    out.line(u"Listening on %1"_s.arg(url));
    if (!adminUrl.isEmpty()) {
        out.line(u"Admin at %1"_s.arg(adminUrl));
    }
    const bool told = out.isWhole();
    if (!options.quiet) {
        out.write(Text::tr("Rules: %1\nDatabase: %2\nTry: %3\n")
                      .arg(options.config.isEmpty() ? Text::tr("built-in")
                                                    : printable::line(options.config),
                           printable::line(databaseFor(options)),
                           printable::line(lineToPaste(options, rules, url))));
    }
    return told;
}

} // namespace

void Outputs::failure(const QString& sentence)
{
    errors.line(u"orva-simulator:"_s, console::Output::Colour::Red, sentence);
}

void serve(const Options& options, Outputs& print)
{
    // who reads the log may go before the server does
    std::signal(SIGPIPE, SIG_IGN);
    const StopSignal stop;
    const std::unique_ptr<RulesFile> file =
        options.config.isEmpty() ? nullptr : std::make_unique<RulesFile>(options.config);
    const Rules rules = file ? file->first() : rulesFor(options);
    Service service(rules, databaseFor(options));
    RequestLog log(options.json ? RequestLog::Form::Json : RequestLog::Form::Line, print.out);
    HttpServer::Observer observer;
    if (!options.quiet) {
        observer = [&log](const Request& request, const Answer& answer) {
            log.write(request, answer);
        };
    }
    FaultPlan faults(rules.faults);
    const FaultyService faulty(
        [&service](const Request& request) { return service.handle(request); }, faults);
    const auto look = [&] {
        if (file) {
            follow(*file, service, faults, options, print);
        }
    };
    // what was written before a request counts for it
    const auto handle = [&](const Request& request) {
        look();
        return faulty.handle(request);
    };
    // a body is read for those alone who may ask for something
    const auto limit = [&](const Request& request) {
        look();
        return service.admits(request) ? HttpServer::maximumBody : 0;
    };
    const HttpServer server(options.listen, options.port, handle, observer,
                            {rules.certificateFile, rules.keyFile}, limit);
    const AdminDesk desk(service, faults);
    const std::unique_ptr<HttpServer> admin = adminServer(options, desk);
    if (!announce(options, rules, server.url(), admin ? admin->url() : QString(), print.out)) {
        return; // nobody knows where it listens
    }
    if (!file) {
        stop.wait();
        return;
    }
    while (!stop.waitFor(betweenLooks)) {
        look(); // what is wrong with a change is said though nobody asks for anything
    }
}

int printLedger(const Options& options, Outputs& print)
{
    Database database(databaseFor(options), Database::Open::ExistingOnly);
    const LedgerView view = readLedger(database, rulesFor(options));
    print.out.write(options.csv    ? ledgerCsv(view)
                    : options.json ? QString::fromUtf8(ledgerJson(view))
                                   : ledgerTables(view, print.out.columns()));
    const QString wrong = view.wrongCard();
    if (!wrong.isEmpty()) {
        print.failure(Text::tr("the balance of card %1 is not its opening balance and its "
                               "movements: the database was changed from outside")
                          .arg(wrong));
        return console::exitcode::failed;
    }
    return console::exitcode::ok;
}

QString defaultDatabase()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           u"/orva/simulator.sqlite"_s;
}

} // namespace simulator
