// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/admindesk.h"

#include "simulator/documents/check.h"
#include "simulator/faults/faultplan.h"
#include "simulator/rules/configerror.h"
#include "simulator/rules/faultreader.h"
#include "simulator/service.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr qsizetype longestBody = 64 * 1024;

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

/// The name in "name", "name:80", "[::1]" or "[::1]:80", as it stands there.
QByteArray nameIn(const QByteArray& host)
{
    const qsizetype port = host.lastIndexOf(':');
    return port > host.lastIndexOf(']') ? host.first(port) : host;
}

bool isLoopback(const QByteArray& name)
{
    return name == "localhost" || name == "127.0.0.1" || name == "[::1]";
}

/// Why a request is not answered, whatever its body is.
std::optional<Answer> objection(const Request& request)
{
    const QByteArray host = request.host.toLower();
    if (!isLoopback(nameIn(host))) {
        return refusal(403, u"The Host must be localhost, 127.0.0.1 or [::1]: this address is for "
                            "programs on this machine"_s);
    }
    if (!request.origin.isEmpty() && request.origin.toLower() != "http://" + host) {
        return refusal(403, u"Pages of other addresses may not ask for anything here"_s);
    }
    const QByteArray type = request.contentType.split(';').first().trimmed().toLower();
    const bool isJson = type == "application/json";
    const bool takesBody = request.method == "POST";
    if (takesBody ? !isJson : !isJson && !type.isEmpty()) {
        return refusal(415, u"The body must be JSON, with the header Content-Type: "
                            "application/json"_s);
    }
    return std::nullopt;
}

} // namespace

qsizetype AdminDesk::bodyLimit(const Request& request) const
{
    return objection(request) ? 0 : longestBody;
}

Answer AdminDesk::handle(const Request& request) const
{
    if (const std::optional<Answer> refused = objection(request)) {
        return *refused;
    }
    try {
        if (request.path == "/ledger" && request.method == "GET") {
            return json(ledgerJson(service.ledger()));
        }
        if (request.path == "/faults" && request.method == "GET") {
            return json(faults());
        }
        if (request.path == "/faults" && request.method == "POST") {
            plan.arm(readFaultJson(request.body, u"body"_s));
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
