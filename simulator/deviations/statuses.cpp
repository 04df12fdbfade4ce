// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What is refused that must not be, taken that must not be, and refused with another status.

#include "simulator/deviations/notes.h"
#include "simulator/deviations/requestparts.h"
#include "simulator/documents/names.h"
#include "simulator/documents/xmlreader.h"

#include <QCoreApplication>
#include <QDate>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// Answers another status instead of one whose reason has these words.
Answer otherwise(const Request& request, const Handler& sound, QLatin1StringView reason, int status)
{
    const Answer answer = sound(request);
    return answer.status >= 400 && answer.reason.contains(reason) ? refusal(status, answer.reason)
                                                                  : answer;
}

/// Takes everybody for the one whose credentials were right last.
Answer withAnyPassword(const Request& request, const Handler& sound, Notes& notes)
{
    const auto right = u"right credentials"_s;
    const Answer answer = sound(request);
    if (answer.status != 401) {
        notes.keep(right, request.authorization);
        return answer;
    }
    Request known = request;
    known.authorization = notes.kept(right);
    return request.authorization.isEmpty() ? answer : sound(known);
}

/// Whether a check has more than the elements of this format directly below its root.
bool hasUnknownElements(const QByteArray& body)
{
    static constexpr QLatin1StringView known[] = {
        names::id,     names::number, names::pos,      names::date,       names::originalId,
        names::chType, names::total,  names::items,    names::merchantId, names::cardNumber,
        names::client, names::awards, names::payments, names::informing};
    const Document document = readXml(body);
    for (xmlNode* at = xmlFirstElementChild(document.root().handle()); at != nullptr;
         at = xmlNextElementSibling(at)) {
        if (std::ranges::find(known, Element(at).name()) == std::end(known)) {
            return true;
        }
    }
    return false;
}

const Deviation statusRows[] = {
    {"credentials-as-forbidden", "credentials-first",
     QT_TRANSLATE_NOOP("Simulator", "wrong credentials are answered 403"),
     [](const Request&, Answer& answer) {
         if (answer.status == 401) {
             answer.status = 403;
         }
     }},
    {"login-page", "credentials-first",
     QT_TRANSLATE_NOOP("Simulator", "wrong credentials lead to a page to log in at"),
     [](const Request&, Answer& answer) {
         if (answer.status == 401) {
             answer = refusal(302, u"Log in"_s);
             answer.location = "/login";
         }
     }},
    {"any-password", "credentials-first",
     QT_TRANSLATE_NOOP("Simulator", "any user with any password is answered"), withAnyPassword,
     blind},
    {"body-before-credentials", "credentials-first",
     QT_TRANSLATE_NOOP("Simulator",
                       "a body that is no XML is refused before the credentials are seen"),
     [](const Request& request, Answer& answer) {
         if (answer.status == 401 && !RequestParts(request).isDocument) {
             answer = refusal(400, u"The XML cannot be read"_s);
         }
     },
     blind},
    {"malformed-as-own-fault", "malformed-400",
     QT_TRANSLATE_NOOP("Simulator", "a body that is no check is answered 500"),
     [](const Request&, Answer& answer) {
         if (answer.status == 400) {
             answer.status = 500;
         }
     }},
    {"unknown-card-not-found", "unknown-card",
     QT_TRANSLATE_NOOP("Simulator", "an unknown card is answered 404"),
     [](const Request& request, const Handler& sound, Notes&) {
         return otherwise(request, sound, "is unknown"_L1, 404);
     },
     blind},
    {"unknown-card-welcomed", "unknown-card",
     QT_TRANSLATE_NOOP("Simulator", "an unknown card is answered as one without points"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "is unknown"_L1);
     }},
    {"disagreement-as-own-fault", "sums-agree",
     QT_TRANSLATE_NOOP("Simulator", "lines that do not add up are answered 500"),
     [](const Request& request, const Handler& sound, Notes&) {
         return otherwise(request, sound, "The lines add up to"_L1, 500);
     }},
    {"sums-unchecked", "sums-agree",
     QT_TRANSLATE_NOOP("Simulator", "lines need not add up to the total"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "The lines add up to"_L1);
     },
     blind},
    {"repeated-line-ids-taken", "line-ids-unique",
     QT_TRANSLATE_NOOP("Simulator", "two lines may have one identifier"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "Two lines have the id"_L1);
     }},
    {"declaration-refused", "texts-kept",
     QT_TRANSLATE_NOOP("Simulator", "a request with an XML declaration is refused"),
     [](const Request& request, const Handler& sound, Notes&) {
         return request.body.trimmed().startsWith("<?xml")
                    ? refusal(400, u"Unexpected processing instruction"_s)
                    : sound(request);
     },
     blind},
    {"unknown-elements-refused", "unknown-elements",
     QT_TRANSLATE_NOOP("Simulator", "a request with an element that is not known is refused"),
     [](const Request& request, const Handler& sound, Notes&) {
         return RequestParts(request).isDocument && hasUnknownElements(request.body)
                    ? refusal(400, u"Unrecognized field"_s)
                    : sound(request);
     }},
    {"empty-check-refused", "empty-check",
     QT_TRANSLATE_NOOP("Simulator", "a check without lines is refused"),
     [](const Request& request, const Handler& sound, Notes&) {
         const RequestParts parts(request);
         return parts.isDocument && parts.lines == 0 ? refusal(424, u"The check is empty"_s)
                                                     : sound(request);
     }},
    {"many-lines-refused", "many-lines",
     QT_TRANSLATE_NOOP("Simulator", "a check of more than 500 lines is refused"),
     [](const Request& request, const Handler& sound, Notes&) {
         return RequestParts(request).lines > 500 ? refusal(413, u"Too many lines"_s)
                                                  : sound(request);
     }},
    {"old-dates-refused", "date-has-no-zone",
     QT_TRANSLATE_NOOP("Simulator", "a check with a date of another year is refused"),
     [](const Request& request, const Handler& sound, Notes&) {
         const RequestParts parts(request);
         const QString year = QString::number(QDate::currentDate().year());
         return parts.isDocument && !parts.date.startsWith(year)
                    ? refusal(424, u"The date is not of this year"_s)
                    : sound(request);
     },
     blind},
};

} // namespace

std::span<const Deviation> statusDeviations()
{
    return statusRows;
}

} // namespace simulator
