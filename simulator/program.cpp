// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/program.h"

#include "console/exitcode.h"
#include "console/printable.h"
#include "console/table.h"
#include "simulator/credentials.h"
#include "simulator/deviations/deviatingserver.h"
#include "simulator/documents/endpoints.h"
#include "simulator/faults/faultplan.h"
#include "simulator/faults/faultyservice.h"
#include "simulator/http/admindesk.h"
#include "simulator/http/httpserver.h"
#include "simulator/http/requestlog.h"
#include "simulator/ledger/ledgerprinter.h"
#include "simulator/page/page.h"
#include "simulator/rules/rulesfile.h"
#include "simulator/rules/rulesreader.h"
#include "simulator/service.h"
#include "simulator/stopsignal.h"
#include "simulator/text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr std::chrono::milliseconds betweenLooks(500);

/// Looks whether the file of rules has changed and lets the server follow it.
void follow(RulesFile& file, Service& service, FaultPlan& faults, Page* page,
            const Options& options, Outputs& print)
{
    const auto apply = [&](const Rules& rules) {
        service.setRules(rules);
        faults.setRules(rules.faults);
        if (page != nullptr) {
            page->rules.follow();
        }
        if (!options.quiet && !options.json) {
            print.out.write(Text::tr("Rules: read anew\n"));
        }
        if (rules.certificateFile != file.first().certificateFile ||
            rules.keyFile != file.first().keyFile) {
            print.failure(Text::tr("the change of [tls] takes effect at the next start"));
        }
    };
    file.look(apply, [&print, page](const QString& what) {
        if (page != nullptr) {
            page->rules.refuse(what);
        }
        print.failure(Text::tr("the rules stay as they were: %1").arg(what));
    });
}

std::unique_ptr<HttpServer> adminServer(const Options& options, const AdminDesk& desk)
{
    try {
        return std::make_unique<HttpServer>(
            u"127.0.0.1"_s, std::max(options.adminPort, 0),
            [&desk](const Request& request) { return desk.handle(request); },
            HttpServer::Observer(), HttpServer::Certificate(),
            [&desk](const Request& request) { return desk.bodyLimit(request); });
    } catch (const ListenError& error) {
        throw ListenError((options.adminPort < 0 ? u"--page: "_s : u"--admin-port: "_s) +
                          QString::fromUtf8(error.what()));
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
        if (options.page) {
            start.insert(u"page"_s, adminUrl);
        }
        if (!options.deviations.isEmpty()) {
            start.insert(u"deviations"_s, QJsonArray::fromStringList(options.deviations));
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
        if (!options.deviations.isEmpty()) {
            out.write(Text::tr("Deviates: %1\n").arg(options.deviations.join(u", "_s)));
        }
    }
    if (options.page) {
        out.line(u"Page at %1"_s.arg(adminUrl)); // last, where the eye is
    }
    return told;
}

/// What stands behind the server's address and that for administration.
class Counter
{
public:
    /// file: null for the built-in rules
    Counter(const Options& asked, const Rules& rules, RulesFile* rulesFile, Outputs& outputs)
        : options(asked), file(rulesFile), print(outputs),
          service(rules, databaseFor(asked), habitsOf(asked.deviations)),
          deviating([this](const Request& request) { return service.handle(request); },
                    asked.deviations),
          faults(rules.faults),
          faulty([this](const Request& request) { return deviating.handle(request); }, faults),
          log(asked.json ? RequestLog::Form::Json : RequestLog::Form::Line, outputs.out),
          desk(service, faults)
    {
        if (options.hasAdmin()) {
            page = std::make_unique<Page>(databaseFor(options), options.config);
            page->addTo(desk, service, faults, [this](const Request& request) {
                const Answer given = answer(request);
                note(request, given);
                return given;
            });
        }
    }

    Answer answer(const Request& request)
    {
        look(); // what was written before a request counts for it
        return isAway() ? ServerSwitch::silence() : faulty.handle(request);
    }

    void note(const Request& request, const Answer& given)
    {
        if (page) {
            page->exchanges.add(request, given);
        }
        if (!options.quiet) {
            log.write(request, given);
        }
    }

    /// A body is read for those alone who may ask for something, unless who that is deviates.
    qsizetype bodyLimit(const Request& request)
    {
        look();
        const bool isRead = !options.deviations.isEmpty() || service.admits(request);
        return isRead ? HttpServer::maximumBody : 0;
    }

    /// Looks whether the file of rules has changed.
    void look()
    {
        if (file != nullptr) {
            follow(*file, service, faults, page.get(), options, print);
        }
    }

    /// The server of the address for administration, null where there is to be none.
    /// url: the server's own
    std::unique_ptr<HttpServer> admin(const QString& url)
    {
        if (!page) {
            return nullptr;
        }
        page->server.setUrl(url);
        return adminServer(options, desk);
    }

private:
    [[nodiscard]] bool isAway() const { return page && page->server.isAway(); }

    const Options& options;
    RulesFile* const file;
    Outputs& print;
    Service service;
    const DeviatingServer deviating;
    FaultPlan faults;
    const FaultyService faulty;
    RequestLog log;
    AdminDesk desk;
    std::unique_ptr<Page> page;
};

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
    Counter counter(options, rules, file.get(), print);
    const HttpServer server(
        options.listen, options.port,
        [&counter](const Request& request) { return counter.answer(request); },
        [&counter](const Request& request, const Answer& answer) { counter.note(request, answer); },
        {rules.certificateFile, rules.keyFile},
        [&counter](const Request& request) { return counter.bodyLimit(request); });
    const std::unique_ptr<HttpServer> admin = counter.admin(server.url());
    if (!announce(options, rules, server.url(), admin ? admin->url() : QString(), print.out)) {
        return; // nobody knows where it listens
    }
    if (!file) {
        stop.wait();
        return;
    }
    while (!stop.waitFor(betweenLooks)) {
        counter.look(); // what is wrong with a change is said though nobody asks for anything
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

void printDeviations(const Options& options, Outputs& print)
{
    if (options.json) {
        for (const Deviation& row : deviations()) {
            const QJsonObject object{{u"name"_s, QString::fromLatin1(row.name)},
                                     {u"breaks"_s, QString::fromLatin1(row.breaks)},
                                     {u"what"_s, QString::fromUtf8(row.what)},
                                     {u"blind"_s, row.isBlind}};
            print.out.write(
                QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + u'\n');
        }
        return;
    }
    using console::Table;
    Table table({{Text::tr("Deviation")},
                 {Text::tr("Breaks")},
                 {Text::tr("What the server does"), Table::Align::Left, Table::Narrow::Below}});
    for (const Deviation& row : deviations()) {
        table.addRow(
            {QString::fromLatin1(row.name), QString::fromLatin1(row.breaks), Text::tr(row.what)});
    }
    print.out.write(table.text(print.out.columns()));
}

QString defaultDatabase()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           u"/orva/simulator.sqlite"_s;
}

} // namespace simulator
