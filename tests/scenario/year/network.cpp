// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/network.h"

#include "tests/scenario/year/yearclock.h"

#include <array>

using namespace Qt::StringLiterals;
using simulator::FaultKind;

namespace year {
namespace {

constexpr int transportFailure = 56; // libcurl's number for a connection that broke
constexpr int firstErrorStatus = 400;
constexpr std::array statuses{301, 400, 401, 403, 404, 408, 409, 424, 429, 500, 502, 503};
/// Not answered when nothing was done, as 2xx is not: a server that says so lies, and no till can
/// know.
constexpr int alreadyDone = 409;

bool hangs(FaultKind kind)
{
    return kind == FaultKind::HangingResolution || kind == FaultKind::HangBeforeHeaders ||
           kind == FaultKind::HangAfterHeaders || kind == FaultKind::SlowDrip ||
           kind == FaultKind::LengthTooLarge;
}

bool hasHeaders(FaultKind kind)
{
    return kind == FaultKind::HangAfterHeaders || kind == FaultKind::SlowDrip ||
           kind == FaultKind::CutBody || kind == FaultKind::LengthTooLarge ||
           kind == FaultKind::LengthTooSmall;
}

/// Whether a client gets a whole answer of HTTP: not when none comes, one that is cut or one that
/// comes too late for any client.
bool arrivesWhole(FaultKind kind)
{
    switch (kind) {
    case FaultKind::Status:
    case FaultKind::StatusAfterBooking:
    case FaultKind::Delay:
    case FaultKind::GarbledBody:
    case FaultKind::WrongEncoding:
    case FaultKind::DuplicatedDelivery:
    case FaultKind::ResentByProxy:
        return true;
    default:
        return false;
    }
}

void addRules(std::vector<simulator::FaultRule>& rules, const simulator::FaultDescription& about,
              double probability, quint64 seed)
{
    simulator::FaultRule rule;
    rule.fault.kind = about.kind;
    rule.fault.duration = std::chrono::seconds(about.kind == FaultKind::Delay ? 4 : 0);
    rule.probability = probability;
    rule.seed = seed;
    if (!about.hasStatus) {
        rules.push_back(rule);
        return;
    }
    rule.probability /= statuses.size();
    for (const int one : statuses) {
        rule.fault.status = one;
        if (one != alreadyDone || about.stage == simulator::FaultStage::AfterBooking) {
            rules.push_back(rule);
        }
    }
}

} // namespace

Network::Network(YearClock& yearClock, const QString& serverDatabase, Plant plant, int plantAt)
    : clock(yearClock), saboteur(serverDatabase, plant, plantAt),
      server(
          serverDatabase,
          [this](const simulator::Request& request, const tests::LoyaltyServer::Handler& honest) {
              return saboteur.handle(request, honest);
          }),
      registration(*this)
{}

void Network::setWeather(int perMille, quint64 seed)
{
    constexpr double thousand = 1000;
    std::vector<simulator::FaultRule> rules;
    const auto kinds = static_cast<double>(simulator::requestFaultNames().size());
    for (const simulator::FaultDescription& about : simulator::faultDescriptions()) {
        if (about.stage != simulator::FaultStage::Connecting) {
            addRules(rules, about, perMille / thousand / kinds, seed);
        }
    }
    server.strike(rules);
}

void Network::beginOutage(FaultKind kind, int after, bool onlyBooking)
{
    outage = Outage{kind, after, onlyBooking};
}

bool Network::isAway(const QUrl& url)
{
    if (!outage || (outage->onlyBooking && url.path().endsWith(u"/precheck"_s))) {
        return false;
    }
    return outage->after-- <= 0;
}

void Network::post(const QUrl& url, const QByteArray& body, const QHash<QString, QString>& headers)
{
    ++sent;
    response.clear();
    if (isAway(url)) {
        note(outage->kind);
        sendCount = 0;
        lose(0);
        if (hangs(outage->kind)) {
            clock.advance(timeout * 1000LL);
        }
        return;
    }
    sendCount = 1;
    simulator::Request request;
    request.method = "POST";
    request.path = url.path().toUtf8();
    request.authorization = headers.value(u"Authorization"_s).toUtf8();
    request.body = body;
    receive(server.handle(request));
}

void Network::receive(const simulator::Answer& answer)
{
    status = answer.status;
    response = answer.body;
    error = status >= firstErrorStatus ? status : 0;
    if (answer.fault) {
        note(answer.fault->kind);
        pass(*answer.fault);
    }
    if (!answer.fault || arrivesWhole(answer.fault->kind)) {
        return;
    }
    if (answer.fault->kind == FaultKind::LengthTooSmall) {
        response.chop((response.size() + 1) / 2); // the client takes the beginning for the whole
        return;
    }
    lose(hasHeaders(answer.fault->kind) ? answer.status : 0);
}

/// The time that a fault takes.
void Network::pass(const simulator::Fault& fault)
{
    clock.advance(hangs(fault.kind) ? timeout * 1000LL : qint64(fault.duration.count()));
}

void Network::note(FaultKind kind)
{
    const QString name = QString::fromLatin1(simulator::describe(kind).name);
    ++struck[name];
    recent.append(name);
}

void Network::lose(int statusSoFar)
{
    status = statusSoFar;
    error = transportFailure;
    response.clear();
}

tr::Tr Network::getErrorText()
{
    return error == 0 ? tr::Tr() : tr::Tr(u"restTransportError"_s, u"Сервер не ответил"_s);
}

} // namespace year
