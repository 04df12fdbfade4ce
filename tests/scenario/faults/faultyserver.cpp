// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/faults/faultyserver.h"

#include "tests/scenario/faults/busyconnection.h"
#include "tests/support/resolver.h"

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
    : fault(given), seed(seedOfPair), number(pair), rules(tests::LoyaltyServer::strictRules()),
      loyalty(folder + u"/server.sqlite"_s)
{
    loyalty.start(rules);
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

void FaultyServer::listenWell()
{
    const bool secure = fault.kind == FaultKind::WrongCertificate;
    loyalty.listen(port.port(), secure ? of(certificates().right) : HttpServer::Certificate());
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
    loyalty.strike({});
    switch (fault.kind) {
    case FaultKind::RefusedConnection:
        loyalty.stopListening();
        break;
    case FaultKind::HangingResolution:
        keepBusy();
        resolver::hang();
        break;
    case FaultKind::WrongCertificate:
        loyalty.listen(port.port(), wrongCertificate());
        break;
    default: {
        FaultRule rule;
        rule.fault = fault;
        rule.endpoint = endpoint;
        rule.seed = seed;
        loyalty.strike({rule});
    }
    }
}

void FaultyServer::keepBusy()
{
    FaultRule rule;
    rule.fault.kind = FaultKind::HangBeforeHeaders;
    rule.times = 1;
    loyalty.strike({rule});
    busy = std::make_unique<BusyConnection>(QUrl(address() + u"api/1.x/precheck"_s),
                                            [this] { return loyalty.struck() > 0; });
}

void FaultyServer::failOnce(const QString& endpoint, int status)
{
    FaultRule rule;
    rule.fault.kind = FaultKind::Status;
    rule.fault.status = status;
    rule.endpoint = endpoint;
    rule.times = 1;
    loyalty.strike({rule});
}

void FaultyServer::end()
{
    loyalty.strike({});
    resolver::letGo();
    busy.reset();
    if (!loyalty.isListening() || fault.kind == FaultKind::WrongCertificate) {
        listenWell();
    }
}

int FaultyServer::struck() const
{
    return fault.kind == FaultKind::HangingResolution ? resolver::waiting() : loyalty.struck();
}

QString FaultyServer::books() const
{
    const simulator::LedgerView view = loyalty.books();
    EXPECT_EQ(view.wrongCard().toStdString(), "") << "the server's books do not add up";
    return simulator::ledgerCsv(view);
}

qint64 FaultyServer::balanceKopecks() const
{
    const simulator::LedgerView view = loyalty.books();
    for (const auto& row : view.cards) {
        if (row.account.card == rules.cards.front().number) {
            return row.account.balance;
        }
    }
    ADD_FAILURE() << "the server does not know the card";
    return 0;
}
