// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/admindesk.h"

#include "simulator/documents/check.h"
#include "simulator/documents/rejection.h"
#include "simulator/faults/faultplan.h"
#include "simulator/rules/configerror.h"
#include "simulator/rules/faultreader.h"
#include "simulator/service.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <iterator>
#include <optional>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr qsizetype longestBody = 64 * 1024;

QJsonValue orNull(const QString& text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonObject faultObject(const FaultPlan::State& state)
{
    const FaultRule& rule = state.rule;
    return {{u"id"_s, state.id},
            {u"kind"_s, rule.fault.name()},
            {u"armed"_s, state.isArmed},
            {u"endpoint"_s, orNull(rule.endpoint)},
            {u"card"_s, orNull(maskedCard(rule.card))},
            {u"request"_s, rule.firstRequest},
            {u"times"_s, rule.times == FaultRule::always ? QJsonValue() : QJsonValue(rule.times)},
            {u"probability"_s, rule.probability},
            {u"matched"_s, state.matched},
            {u"struck"_s, state.struck}};
}

void removeFault(FaultPlan& plan, const QString& id)
{
    bool isNumber = false;
    const int number = id.toInt(&isNumber);
    if (!isNumber || !plan.remove(number)) {
        throw Rejection(404, u"There is no fault with this id: GET /faults lists them"_s);
    }
}

/// What holds for every answer: nobody keeps it, no page of another address shows it, and nothing
/// in it runs but the page's own scripts.
QByteArrayList guardingHeaders()
{
    return {"Cache-Control: no-store",
            "Content-Security-Policy: default-src 'none'; script-src 'self'; style-src 'self'; "
            "img-src 'self'; connect-src 'self'; base-uri 'none'; form-action 'none'; "
            "frame-ancestors 'none'; require-trusted-types-for 'script'; trusted-types 'none'",
            "Cross-Origin-Opener-Policy: same-origin",
            "Cross-Origin-Resource-Policy: same-origin",
            "Referrer-Policy: no-referrer",
            "X-Content-Type-Options: nosniff",
            "X-Frame-Options: DENY"};
}

} // namespace

QByteArray faultsJson(const FaultPlan& plan)
{
    QJsonArray list;
    for (const FaultPlan::State& state : plan.states()) {
        list.append(faultObject(state));
    }
    return QJsonDocument(list).toJson();
}

AdminDesk::AdminDesk(Service& lookedAt, FaultPlan& faultPlan)
{
    FaultPlan* const plan = &faultPlan;
    add({{"GET", "/ledger",
          [&lookedAt](const AdminCall&) { return jsonAnswer(ledgerJson(lookedAt.ledger())); }},
         {"GET", "/faults", [plan](const AdminCall&) { return jsonAnswer(faultsJson(*plan)); }},
         {"POST", "/faults",
          [plan](const AdminCall& call) {
              plan->arm(readFaultJson(call.request.body, u"body"_s));
              return jsonAnswer(faultsJson(*plan));
          }},
         {"DELETE", "/faults",
          [plan](const AdminCall&) {
              plan->clear();
              return jsonAnswer(faultsJson(*plan));
          }},
         {"DELETE", "/faults/{id}", [plan](const AdminCall& call) {
              removeFault(*plan, call.part);
              return jsonAnswer(faultsJson(*plan));
          }}});
}

void AdminDesk::add(std::vector<AdminRoute> more)
{
    std::move(more.begin(), more.end(), std::back_inserter(table));
}

qsizetype AdminDesk::bodyLimit(const Request& request) const
{
    return gate.objection(request) ? 0 : longestBody;
}

Answer AdminDesk::handle(const Request& request) const
{
    Answer answer;
    try {
        const std::optional<Answer> refused = gate.objection(request);
        answer = refused ? *refused : answered(request);
    } catch (const Rejection& rejection) {
        answer = refusal(rejection.status, rejection.reason);
    } catch (const ConfigError& error) {
        answer = refusal(400, QString::fromUtf8(error.what()));
    } catch (const std::exception& error) {
        answer = refusal(500, QString::fromUtf8(error.what()));
    }
    answer.headers += guardingHeaders();
    return answer;
}

Answer AdminDesk::answered(const Request& request) const
{
    QStringList known;
    for (const AdminRoute& route : table) {
        if (const std::optional<QString> part = route.match(request)) {
            return route.answer({request, *part});
        }
        known.append(QString::fromLatin1(route.method + ' ' + route.path));
    }
    return refusal(404, u"There is nothing here: there are %1"_s.arg(known.join(u", "_s)));
}

} // namespace simulator
