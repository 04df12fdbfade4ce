// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Steps, repeats and what a confirmation is held against.

#include "simulator/deviations/notes.h"
#include "simulator/deviations/requestparts.h"
#include "simulator/documents/answerdocument.h"
#include "simulator/documents/endpoints.h"
#include "simulator/documents/rejection.h"
#include "simulator/documents/xmlreader.h"
#include "simulator/documents/xmlwriter.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

bool isPrecheck(const RequestParts& parts)
{
    return parts.endpoint == endpoints::precheck;
}

bool isConfirmation(const RequestParts& parts)
{
    return parts.endpoint == endpoints::checkConfirm;
}

/// Answers of a pre-check that the server has kept stand for those of every further one.
Answer cachedPrecheck(const Request& request, const Handler& sound, Notes& notes)
{
    const RequestParts parts(request);
    Answer answer = sound(request);
    if (!isPrecheck(parts) || answer.status != 200) {
        return answer;
    }
    if (const QByteArray kept = notes.kept(parts.checkId); !kept.isEmpty()) {
        answer.body = kept;
    }
    notes.keep(parts.checkId, answer.body);
    return answer;
}

/// Refuses a pre-check whose identifier is known with another content.
Answer knownPrecheckRefused(const Request& request, const Handler& sound, Notes& notes, bool isSame)
{
    const RequestParts parts(request);
    const QByteArray kept = isPrecheck(parts) ? notes.kept(parts.checkId) : QByteArray();
    if (!kept.isEmpty() && (kept == request.body) == isSame) {
        return refusal(409, u"A check with this id exists"_s);
    }
    const Answer answer = sound(request);
    if (isPrecheck(parts) && answer.status == 200) {
        notes.keep(parts.checkId, request.body);
    }
    return answer;
}

/// Refuses a payment try that is the same as, or another than, the one before.
Answer knownTryRefused(const Request& request, const Handler& sound, Notes& notes, bool isSame)
{
    const RequestParts parts(request);
    if (parts.endpoint != endpoints::paymentTry) {
        return sound(request);
    }
    const QByteArray kept = notes.kept(parts.checkId);
    if (!kept.isEmpty() && (kept == request.body) == isSame) {
        return refusal(409, u"A payment was tried already"_s);
    }
    const Answer answer = sound(request);
    if (answer.status == 200) {
        notes.keep(parts.checkId, request.body);
    }
    return answer;
}

/// Books at the payment try; the confirmation has nothing left to do.
Answer bookedAtTry(const Request& request, const Handler& sound, Notes& notes)
{
    const RequestParts parts(request);
    const Answer answer = sound(request);
    if (parts.endpoint == endpoints::paymentTry && answer.status == 200) {
        sound(readdressed(request, endpoints::checkConfirm));
        return answer;
    }
    return isConfirmation(parts) && answer.status == 409 && notes.isFirst(parts.checkId)
               ? acceptance(request, sound)
               : answer;
}

/// Confirms after a payment try of its own where the refusal of the confirmation has these words.
Answer triedByItself(const Request& request, const Handler& sound, QLatin1StringView reason)
{
    const Answer answer = sound(request);
    if (!isConfirmation(RequestParts(request)) || !answer.reason.contains(reason)) {
        return answer;
    }
    const Answer tried = sound(readdressed(request, endpoints::paymentTry));
    return tried.status == 200 ? sound(request) : tried;
}

/// A confirmation must be what was tried byte for byte.
Answer comparedByBytes(const Request& request, const Handler& sound, Notes& notes)
{
    const RequestParts parts(request);
    const QByteArray tried = isConfirmation(parts) ? notes.kept(parts.checkId) : QByteArray();
    if (!tried.isEmpty() && tried != request.body) {
        return refusal(424, u"This is not what was tried"_s);
    }
    const Answer answer = sound(request);
    if (parts.endpoint == endpoints::paymentTry && answer.status == 200) {
        notes.keep(parts.checkId, request.body);
    }
    return answer;
}

QByteArray digestOfAnswer(const QByteArray& body)
{
    const Document document = readXml(body);
    return xmlDigest(withoutUsed(document.root()).root());
}

/// A confirmation must be made of the last answer to its check.
Answer heldAgainstLastAnswer(const Request& request, const Handler& sound, Notes& notes)
{
    const RequestParts parts(request);
    const QByteArray last =
        isPrecheck(parts) || parts.type == "2"_L1 ? QByteArray() : notes.kept(parts.checkId);
    if (!last.isEmpty() && last != digestOfAnswer(request.body)) {
        return refusal(424, u"This does not follow from the last answer"_s);
    }
    const Answer answer = sound(request);
    if (isPrecheck(parts) && answer.status == 200) {
        notes.keep(parts.checkId, digestOfAnswer(answer.body));
    }
    return answer;
}

/// Of a card only the check that was asked for last may go on.
Answer lastCheckOnly(const Request& request, const Handler& sound, Notes& notes)
{
    const RequestParts parts(request);
    const QByteArray last = notes.kept(parts.card);
    if (!isPrecheck(parts) && !last.isEmpty() && last != parts.checkId.toUtf8()) {
        return refusal(424, u"Another check of this card was begun since"_s);
    }
    const Answer answer = sound(request);
    if (isPrecheck(parts) && answer.status == 200) {
        notes.keep(parts.card, parts.checkId.toUtf8());
    }
    return answer;
}

/// A payment try takes the place of the one before though it is refused.
Answer refusedTryCounts(const Request& request, const Handler& sound, Notes& notes)
{
    const RequestParts parts(request);
    if (isConfirmation(parts) && notes.kept(parts.checkId) == "refused") {
        return refusal(424, u"The last payment try was refused"_s);
    }
    const Answer answer = sound(request);
    if (parts.endpoint == endpoints::paymentTry) {
        notes.keep(parts.checkId, answer.status == 424 ? "refused" : "taken");
    }
    return answer;
}

/// Books a check once more, under another identifier.
/// precheck: its pre-check
/// @return whether it could be
bool bookAgain(const Request& confirmation, const QByteArray& precheck, const QString& name,
               const Handler& sound)
{
    Request step = readdressed(confirmation, endpoints::precheck);
    step.body = precheck;
    if (sound(renamed(step, name)).status != 200) {
        return false;
    }
    step = renamed(confirmation, name);
    return sound(readdressed(step, endpoints::paymentTry)).status == 200 &&
           sound(step).status == 200;
}

/// A repeated confirmation is known on the connection that it first came over, and nowhere else.
Answer knownByConnection(const Request& request, const Handler& sound, Notes& notes)
{
    const RequestParts parts(request);
    Answer answer = sound(request);
    const QString precheck = u"precheck "_s + parts.checkId;
    const QString connection = u"connection "_s + parts.checkId;
    const QByteArray here = QByteArray::number(request.connection);
    if (isPrecheck(parts) && answer.status == 200) {
        notes.keep(precheck, request.body);
    } else if (isConfirmation(parts) && answer.status == 200) {
        notes.keep(connection, here);
    } else if (isConfirmation(parts) && answer.status == 409 && notes.kept(connection) != here &&
               !notes.kept(precheck).isEmpty()) {
        const QString name = u"%1 again %2"_s.arg(parts.checkId).arg(notes.count(parts.checkId, 1));
        if (bookAgain(request, notes.kept(precheck), name, sound)) {
            notes.keep(connection, here);
            return acceptance(request, sound);
        }
    }
    return answer;
}

/// The first confirmation of every check is booked and answered as if something had gone wrong.
Answer failsAfterBooking(const Request& request, const Handler& sound, Notes& notes)
{
    const RequestParts parts(request);
    const Answer answer = sound(request);
    return isConfirmation(parts) && answer.status == 200 && notes.isFirst(parts.checkId)
               ? refusal(500, u"The mail to the customer could not be sent"_s)
               : answer;
}

/// A pre-check of a check that is booked is answered.
Answer bookedPrecheckAnswered(const Request& request, const Handler& sound, Notes&)
{
    const Answer answer = sound(request);
    return answer.status == 409 && isPrecheck(RequestParts(request)) ? acceptance(request, sound)
                                                                     : answer;
}

/// A check that is booked is gone, and its confirmation is that of an unknown one.
Answer repeatNotFound(const Request& request, const Handler& sound, Notes&)
{
    const Answer answer = sound(request);
    return answer.status == 409 && isConfirmation(RequestParts(request))
               ? refusal(404, u"There is no open check with this id"_s)
               : answer;
}

/// A payment try is written down and not looked at.
Answer unjudgedTry(const Request& request, const Handler& sound, Notes&)
{
    const Answer answer = sound(request);
    return answer.status == 424 && RequestParts(request).endpoint == endpoints::paymentTry
               ? acceptance(request, sound)
               : answer;
}

const Deviation orderRows[] = {
    {"changed-precheck-409", "precheck-repeatable",
     QT_TRANSLATE_NOOP("Simulator", "a pre-check with a changed content is answered 409"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return knownPrecheckRefused(request, sound, notes, false);
     }},
    {"repeated-precheck-409", "precheck-repeatable",
     QT_TRANSLATE_NOOP("Simulator", "a pre-check that is repeated is answered 409"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return knownPrecheckRefused(request, sound, notes, true);
     },
     blind},
    {"precheck-cached", "precheck-repeatable",
     QT_TRANSLATE_NOOP("Simulator", "a changed pre-check gets the first answer to its check"),
     cachedPrecheck, blind},
    {"repeated-try-409", "try-repeated",
     QT_TRANSLATE_NOOP("Simulator", "a payment try that is repeated is answered 409"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return knownTryRefused(request, sound, notes, true);
     }},
    {"changed-try-409", "try-replaceable",
     QT_TRANSLATE_NOOP("Simulator", "another payment try of a check is answered 409"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return knownTryRefused(request, sound, notes, false);
     }},
    {"try-books", "try-books-nothing",
     QT_TRANSLATE_NOOP("Simulator", "points are booked at the payment try"), bookedAtTry},
    {"try-unjudged", "try-judges",
     QT_TRANSLATE_NOOP("Simulator", "every payment try is answered 200"), unjudgedTry, blind},
    {"confirmation-without-try", "steps-in-order",
     QT_TRANSLATE_NOOP("Simulator", "a confirmation needs no payment try"),
     [](const Request& request, const Handler& sound, Notes&) {
         return triedByItself(request, sound, "No payment was tried"_L1);
     }},
    {"changed-confirmation-taken", "confirm-equals-try",
     QT_TRANSLATE_NOOP("Simulator", "a confirmation may be another than what was tried"),
     [](const Request& request, const Handler& sound, Notes&) {
         return triedByItself(request, sound, "not the payment that was tried last"_L1);
     }},
    {"compared-by-bytes", "layout-free",
     QT_TRANSLATE_NOOP("Simulator", "a confirmation with other blanks is taken for another one"),
     comparedByBytes, blind},
    {"last-answer-only", "any-answer-counts",
     QT_TRANSLATE_NOOP("Simulator", "a confirmation of an earlier answer is refused"),
     heldAgainstLastAnswer},
    {"last-check-only", "order-free",
     QT_TRANSLATE_NOOP("Simulator", "a card's checks can be confirmed up to its next pre-check"),
     lastCheckOnly, blind},
    {"refused-try-counts", "refusal-changes-nothing",
     QT_TRANSLATE_NOOP("Simulator", "a refused payment try takes the place of the one before"),
     refusedTryCounts},
    {"repeats-known-by-connection", "book-once",
     QT_TRANSLATE_NOOP("Simulator", "a confirmation over another connection is booked again"),
     knownByConnection},
    {"fails-after-booking", "book-once",
     QT_TRANSLATE_NOOP("Simulator", "the first confirmation of a check is booked and answered 500"),
     failsAfterBooking},
    {"booked-precheck-answered", "known-check-409",
     QT_TRANSLATE_NOOP("Simulator", "a pre-check of a booked check is answered 200"),
     bookedPrecheckAnswered},
    {"repeat-not-found", "known-check-409",
     QT_TRANSLATE_NOOP("Simulator", "a repeated confirmation is answered 404"), repeatNotFound,
     blind},
};

} // namespace

std::span<const Deviation> orderDeviations()
{
    return orderRows;
}

} // namespace simulator
