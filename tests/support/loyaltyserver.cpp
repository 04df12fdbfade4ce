// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/loyaltyserver.h"

#include "simulator/ledger/database.h"
#include "simulator/rules/rulesreader.h"
#include "simulator/service.h"
#include "tests/support/struck.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tests {

LoyaltyServer::LoyaltyServer(const QString& file, Between given)
    : database(file), between(std::move(given)),
      faulty(
          [this](const simulator::Request& request) {
              const Handler honest = [this](const simulator::Request& passed) {
                  return service->handle(passed);
              };
              return between ? between(request, honest) : honest(request);
          },
          plan)
{}

LoyaltyServer::~LoyaltyServer() = default;

simulator::Rules LoyaltyServer::usualRules()
{
    return simulator::readRules(simulator::builtInRules(), u"built-in rules"_s);
}

simulator::Rules LoyaltyServer::strictRules()
{
    return simulator::readRules("strict = true\n" + simulator::builtInRules(),
                                u"strict built-in rules"_s);
}

void LoyaltyServer::start(const simulator::Rules& given)
{
    service.reset();
    rules = given;
    service = std::make_unique<simulator::Service>(rules, database);
}

void LoyaltyServer::listen(int port, const simulator::HttpServer::Certificate& certificate)
{
    http.reset();
    http = std::make_unique<simulator::HttpServer>(
        u"127.0.0.1"_s, port,
        [this](const simulator::Request& request) { return faulty.handle(request); },
        simulator::HttpServer::Observer(), certificate);
}

int LoyaltyServer::struck() const
{
    return struckBy(plan);
}

simulator::LedgerView LoyaltyServer::books() const
{
    simulator::Database opened(database, simulator::Database::Open::ExistingOnly);
    return simulator::readLedger(opened, rules);
}

} // namespace tests
