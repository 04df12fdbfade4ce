// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/faults/faultyserver.h"

#include "simulator/ledger/ledgerprinter.h"
#include "simulator/rules/rulesreader.h"
#include "tests/scenario/faults/busyconnection.h"
#include "tests/support/resolver.h"
#include "tests/support/struck.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using simulator::FaultKind;
using simulator::FaultRule;
using simulator::HttpServer;

namespace {

/// The authorities of this run and what they certify; made when they are first needed.
struct Certificates
{
    QTemporaryDir folder{QDir::tempPath() + u"/FaultTable.certificates-XXXXXX"_s};
    Authority trusted{folder.path(), u"authority"_s};
    Authority unknown{folder.path(), u"unknown"_s};
    Authority::Certificate right = trusted.certify(u"*.orva.test"_s);
    Authority::Certificate otherName = trusted.certify(u"elsewhere.test"_s);
    Authority::Certificate otherAuthority = unknown.certify(u"*.orva.test"_s);
};

const Certificates& certificates()
{
    static const Certificates made;
    return made;
}

HttpServer::Certificate of(const Authority::Certificate& made)
{
    return {made.file, made.keyFile};
}

} // namespace

FaultyServer::FaultyServer(const QString& folder, int pair, const simulator::Fault& given,
                           quint64 seedOfPair)
    : fault(given), seed(seedOfPair), number(pair),
      rules(simulator::readRules("strict = true\n" + simulator::builtInRules(), u"built-in"_s)),
      database(folder + u"/server.sqlite"_s), service(rules, database),
      faulty([this](const simulator::Request& request) { return service.handle(request); }, plan)
{
    listenWell();
}

FaultyServer::~FaultyServer()
{
    resolver::letGo();
}

QString FaultyServer::hostName() const
{
    return u"pair-%1.orva.test"_s.arg(number);
}

QString FaultyServer::address() const
{
    const bool secure = fault.kind == FaultKind::WrongCertificate;
    return u"%1://%2:%3/"_s.arg(secure ? u"https"_s : u"http"_s, hostName()).arg(port.port());
}

QString FaultyServer::authorityFile()
{
    return certificates().trusted.file();
}

void FaultyServer::listen(const HttpServer::Certificate& certificate)
{
    http.reset();
    http = std::make_unique<HttpServer>(
        u"127.0.0.1"_s, port.port(),
        [this](const simulator::Request& request) { return faulty.handle(request); },
        HttpServer::Observer(), certificate);
}

void FaultyServer::listenWell()
{
    const bool secure = fault.kind == FaultKind::WrongCertificate;
    listen(secure ? of(certificates().right) : HttpServer::Certificate());
}

HttpServer::Certificate FaultyServer::wrongCertificate() const
{
    return of(fault.body == "name" ? certificates().otherName : certificates().otherAuthority);
}

bool FaultyServer::isConnectionFault() const
{
    return fault.stage() == simulator::FaultStage::Connecting;
}

void FaultyServer::begin(const QString& endpoint)
{
    plan.setRules({});
    switch (fault.kind) {
    case FaultKind::RefusedConnection:
        http.reset();
        break;
    case FaultKind::HangingResolution:
        keepBusy();
        resolver::hang();
        break;
    case FaultKind::WrongCertificate:
        listen(wrongCertificate());
        break;
    default: {
        FaultRule rule;
        rule.fault = fault;
        rule.endpoint = endpoint;
        rule.seed = seed;
        plan.setRules({rule});
    }
    }
}

void FaultyServer::keepBusy()
{
    FaultRule rule;
    rule.fault.kind = FaultKind::HangBeforeHeaders;
    rule.times = 1;
    plan.setRules({rule});
    busy = std::make_unique<BusyConnection>(QUrl(address() + u"api/1.x/precheck"_s),
                                            [this] { return struckBy(plan) > 0; });
}

void FaultyServer::failOnce(const QString& endpoint, int status)
{
    FaultRule rule;
    rule.fault.kind = FaultKind::Status;
    rule.fault.status = status;
    rule.endpoint = endpoint;
    rule.times = 1;
    plan.setRules({rule});
}

void FaultyServer::end()
{
    plan.setRules({});
    resolver::letGo();
    busy.reset();
    if (!http || fault.kind == FaultKind::WrongCertificate) {
        listenWell();
    }
}

int FaultyServer::struck() const
{
    return fault.kind == FaultKind::HangingResolution ? resolver::waiting() : struckBy(plan);
}

QString FaultyServer::books() const
{
    simulator::Database opened(database, simulator::Database::Open::ExistingOnly);
    const simulator::LedgerView view = simulator::readLedger(opened, rules);
    EXPECT_EQ(view.wrongCard().toStdString(), "") << "the server's books do not add up";
    return simulator::ledgerCsv(view);
}

qint64 FaultyServer::balanceKopecks() const
{
    simulator::Database opened(database, simulator::Database::Open::ExistingOnly);
    for (const auto& row : simulator::readLedger(opened, rules).cards) {
        if (row.account.card == rules.cards.front().number) {
            return row.account.balance;
        }
    }
    ADD_FAILURE() << "the server does not know the card";
    return 0;
}
