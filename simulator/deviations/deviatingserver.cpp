// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/deviations/deviatingserver.h"

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

QString keyOf(const Element& answer)
{
    return QString::fromLatin1(xmlDigest(answer).toHex());
}

void copyInto(const Element& parent, const std::vector<Element>& children)
{
    for (const Element& child : children) {
        xmlAddChild(parent.handle(), xmlDocCopyNode(child.handle(), parent.handle()->doc, 1));
    }
}

/// The confirmation as it would be if the answer that it was built from had been the sound one.
QByteArray confirmationOf(const QByteArray& soundAnswer, const Element& confirmation)
{
    const Document restored = readXml(soundAnswer);
    const std::vector<Element> given = confirmation.all({names::items, names::rawItem});
    const std::vector<Element> sound = restored.root().all({names::items, names::rawItem});
    for (size_t i = 0; i < std::min(given.size(), sound.size()); ++i) {
        copyInto(sound[i], given[i].all({names::usedAwards}));
    }
    copyInto(restored.root(), confirmation.all({names::payments}));
    return writeXml(restored.root());
}

/// Hands on a payment try or a confirmation in the words of the sound server.
Answer confirmWith(const Request& request, const Handler& sound, const Notes& answers)
{
    try {
        const Document read = readXml(request.body);
        const QByteArray soundAnswer = answers.kept(keyOf(withoutUsed(read.root()).root()));
        if (!soundAnswer.isEmpty()) {
            Request restored = request;
            restored.body = confirmationOf(soundAnswer, read.root());
            return sound(restored);
        }
    } catch (const Rejection&) {
        return sound(request); // says itself what is wrong
    }
    return sound(request);
}

Answer withChangedDocument(const Request& request, const Handler& sound, DocumentDeviation change,
                           Notes& answers)
{
    if (endpointOf(request) != endpoints::precheck) {
        return confirmWith(request, sound, answers);
    }
    Answer answer = sound(request);
    if (answer.status == 200 && !answer.body.isEmpty()) {
        const Document changed = readXml(answer.body);
        change(changed.root());
        const QByteArray soundAnswer = std::exchange(answer.body, writeXml(changed.root()));
        answers.keep(keyOf(readXml(answer.body).root()), soundAnswer);
    }
    return answer;
}

/// What answers when one deviation is put in front.
Handler before(const Handler& sound, const Deviation& deviation, Notes& notes)
{
    if (const auto* const document = std::get_if<DocumentDeviation>(&deviation.how)) {
        return [sound, change = *document, &notes](const Request& request) {
            return withChangedDocument(request, sound, change, notes);
        };
    }
    if (const auto* const change = std::get_if<AnswerDeviation>(&deviation.how)) {
        return [sound, change = *change](const Request& request) {
            Answer answer = sound(request);
            change(request, answer);
            return answer;
        };
    }
    if (const auto* const server = std::get_if<ServerDeviation>(&deviation.how)) {
        return [sound, server = *server, &notes](const Request& request) {
            return server(request, sound, notes);
        };
    }
    return sound; // a habit of the ledger
}

} // namespace

DeviatingServer::DeviatingServer(Handler sound, const QStringList& names)
    : outermost(std::move(sound))
{
    for (const QString& name : names) {
        if (const Deviation* const found = deviation(name)) {
            allNotes.push_back(std::make_shared<Notes>());
            outermost = before(outermost, *found, *allNotes.back());
        }
    }
}

} // namespace simulator
