// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/month/server.h"

using namespace Qt::StringLiterals;

namespace month {

Server::Server(const simulator::Rules& rules, const QString& database)
    : loyalty(database, [this](const simulator::Request& request,
                               const tests::LoyaltyServer::Handler& service) {
          return noted(request, service(request));
      })
{
    loyalty.start(rules);
    loyalty.listen();
}

simulator::Answer Server::noted(const simulator::Request& request, const simulator::Answer& answer)
{
    const std::scoped_lock lock(mutex);
    arrivals.append(
        {request.path.mid(request.path.lastIndexOf('/') + 1), answer.checkId, answer.status});
    return answer;
}

void Server::setBookingAway(bool away)
{
    std::vector<simulator::FaultRule> rules;
    for (const QString& endpoint : {u"paymenttry"_s, u"checkconfirm"_s}) {
        simulator::FaultRule rule;
        rule.fault.kind = simulator::FaultKind::RequestLost;
        rule.endpoint = endpoint;
        rules.push_back(rule);
    }
    loyalty.strike(away ? rules : std::vector<simulator::FaultRule>());
}

QList<Arrival> Server::takeArrivals()
{
    const std::scoped_lock lock(mutex);
    return std::exchange(arrivals, {});
}

} // namespace month
