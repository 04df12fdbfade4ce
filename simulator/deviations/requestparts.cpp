// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/deviations/requestparts.h"

#include "simulator/deviations/documentedits.h"
#include "simulator/deviations/notes.h"
#include "simulator/documents/answerdocument.h"
#include "simulator/documents/endpoints.h"
#include "simulator/documents/names.h"
#include "simulator/documents/rejection.h"
#include "simulator/documents/requestfacts.h"
#include "simulator/documents/xmlreader.h"
#include "simulator/documents/xmlwriter.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// What the sound server says that a card holds, asked with an empty check; 0 for an unknown one.
Kopecks balanceHeld(const Request& request, const QString& card, const Handler& sound)
{
    Document empty(names::rawCheck);
    Element root = empty.root();
    root.append(names::id, u"balance of "_s + card);
    root.append(names::chType, u"1"_s);
    root.append(names::total, u"0.00"_s);
    root.append(names::items);
    root.append(names::cardNumber, card);
    Request question = readdressed(request, endpoints::precheck);
    question.body = writeXml(root);
    const Answer answer = sound(question);
    if (answer.status != 200) {
        return 0;
    }
    const Document read = readXml(answer.body);
    return readKopecks(
               edits::first(read.root(), {names::client, names::rawCheckClient, names::account,
                                          names::rawCheckAccount, names::balance})
                   .text())
        .value_or(0);
}

Document answerWithoutGrants(const Element& root, const Card& card, Kopecks balance)
{
    Grant grant;
    grant.lines.resize(edits::lines(root).size());
    return root.child(names::originalId) ? returnAnswer(root, card, balance, grant)
                                         : saleAnswer(root, {}, card, balance, grant);
}

} // namespace

RequestParts::RequestParts(const Request& request) : endpoint(endpointOf(request))
{
    try {
        const Document document = readXml(request.body);
        const Element root = document.root();
        checkId = root.child(names::id).text();
        card = root.child(names::cardNumber).text();
        type = root.child(names::chType).text().trimmed();
        date = root.child(names::date).text();
        lines = edits::lines(root).size();
        isDocument = true;
    } catch (const Rejection&) {
        return; // the sound server says why
    }
}

Request readdressed(Request request, QLatin1StringView endpoint)
{
    request.path = endpoints::pathOf(endpoint);
    return request;
}

Request renamed(Request request, const QString& checkId)
{
    const Document document = readXml(request.body);
    edits::setText(document.root().child(names::id), checkId);
    request.body = writeXml(document.root());
    return request;
}

Answer acceptance(const Request& request, const Handler& sound)
{
    const Document document = readXml(request.body);
    const Element root = document.root();
    Answer answer;
    answer.contentType = "application/xml; charset=utf-8";
    answer.checkId = root.child(names::id).text();
    answer.cardNumber = root.child(names::cardNumber).text();
    if (endpointOf(request) == endpoints::precheck) {
        const Card card{answer.cardNumber, {}, {}, 0};
        const Kopecks balance = balanceHeld(request, card.number, sound);
        answer.body = writeXml(answerWithoutGrants(root, card, balance).root());
    } else {
        Document known(names::rawCheck);
        known.root().append(names::id, answer.checkId);
        answer.body = writeXml(known.root());
    }
    return answer;
}

Answer unless(const Request& request, const Handler& sound, Notes& notes, QLatin1StringView reason)
{
    const Answer answer = sound(request);
    if (answer.status != 424 ||
        (!answer.reason.contains(reason) && notes.kept(answer.checkId).isEmpty())) {
        return answer;
    }
    notes.keep(answer.checkId, "taken");
    return acceptance(request, sound);
}

} // namespace simulator
