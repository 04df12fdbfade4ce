// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/admindesk.h"

#include "simulator/check.h"
#include "simulator/configerror.h"
#include "simulator/faultplan.h"
#include "simulator/faultreader.h"
#include "simulator/service.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

Answer json(const QByteArray& text)
{
    Answer answer;
    answer.contentType = "application/json; charset=utf-8";
    answer.body = text;
    return answer;
}

QJsonValue orNull(const QString& text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonObject faultObject(const FaultPlan::State& state)
{
    const FaultRule& rule = state.rule;
    return {{u"kind"_s, rule.fault.name()},
            {u"armed"_s, state.isArmed},
            {u"endpoint"_s, orNull(rule.endpoint)},
            {u"card"_s, orNull(maskedCard(rule.card))},
            {u"request"_s, rule.firstRequest},
            {u"times"_s, rule.times == FaultRule::always ? QJsonValue() : QJsonValue(rule.times)},
            {u"probability"_s, rule.probability},
            {u"matched"_s, state.matched},
            {u"struck"_s, state.struck}};
}

} // namespace

Answer AdminDesk::handle(const Request& request) const
{
    try {
        if (request.path == "/ledger" && request.method == "GET") {
            return json(ledgerJson(service.ledger()));
        }
        if (request.path == "/faults" && request.method == "GET") {
            return json(faults());
        }
        if (request.path == "/faults" && request.method == "POST") {
            plan.arm(readFaultText(request.body, u"body"_s));
            return json(faults());
        }
        if (request.path == "/faults" && request.method == "DELETE") {
            plan.clear();
            return json(faults());
        }
    } catch (const ConfigError& error) {
        return refusal(400, QString::fromUtf8(error.what()));
    } catch (const std::exception& error) {
        return refusal(500, QString::fromUtf8(error.what()));
    }
    return refusal(404, u"There is nothing here: there are GET /ledger, and GET, POST and DELETE "
                        "/faults"_s);
}

QByteArray AdminDesk::faults() const
{
    QJsonArray list;
    for (const FaultPlan::State& state : plan.states()) {
        list.append(faultObject(state));
    }
    return QJsonDocument(list).toJson();
}

} // namespace simulator
