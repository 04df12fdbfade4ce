// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/stateroutes.h"

#include "simulator/documents/rejection.h"
#include "simulator/page/rulesstate.h"
#include "simulator/page/serverswitch.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

Answer serverAnswer(const ServerSwitch& server)
{
    return jsonAnswer(
        QJsonDocument(QJsonObject{{u"away"_s, server.isAway()}, {u"url"_s, server.url()}})
            .toJson(QJsonDocument::Compact));
}

void switchServer(ServerSwitch& server, const QByteArray& body)
{
    const QJsonObject wanted = QJsonDocument::fromJson(body).object();
    if (wanted.size() != 1 || !wanted[u"away"_s].isBool()) {
        throw Rejection(400, u"The body must be {\"away\": true} or {\"away\": false}"_s);
    }
    server.setAway(wanted[u"away"_s].toBool());
}

} // namespace

std::vector<AdminRoute> stateRoutes(ServerSwitch& server, RulesState& rules)
{
    return {{"GET", "/server", [&server](const AdminCall&) { return serverAnswer(server); }},
            {"POST", "/server",
             [&server](const AdminCall& call) {
                 switchServer(server, call.request.body);
                 return serverAnswer(server);
             }},
            {"GET", "/rules", [&rules](const AdminCall&) { return jsonAnswer(rules.json()); }}};
}

} // namespace simulator
