// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Headers, times and connections.

#include "simulator/deviations/deviation.h"
#include "simulator/deviations/notes.h"
#include "simulator/documents/endpoints.h"
#include "simulator/documents/requestfacts.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <thread>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// Answers of every so many requests are turned away, as by a limit to their number.
constexpr int requestsBetweenTrouble = 20;

bool isTurnedAway(Notes& notes)
{
    return notes.count(u"requests"_s, 1) % requestsBetweenTrouble == 0;
}

/// Has the first pre-check of every card meet a fault, as where a cache is cold.
Answer withColdCache(const Request& request, const Handler& sound, Notes& notes, FaultKind kind)
{
    constexpr std::chrono::seconds cold(7);
    Answer answer = sound(request);
    if (endpointOf(request) == endpoints::precheck && answer.status == 200 &&
        notes.isFirst(answer.cardNumber)) {
        answer.fault.emplace().kind = kind;
        answer.fault->duration = cold;
    }
    return answer;
}

/// A card is locked while a request for it is answered, and who comes meanwhile is refused.
Answer oneAtATime(const Request& request, const Handler& sound, Notes& notes)
{
    const QString card = cardOf(request);
    constexpr std::chrono::milliseconds work(30);
    const bool isAlone = notes.count(card, 1) == 1;
    if (isAlone) {
        std::this_thread::sleep_for(work);
    }
    Answer answer = isAlone ? sound(request) : refusal(500, u"Deadlock found"_s);
    notes.count(card, -1);
    return answer;
}

QByteArray hourAgo()
{
    constexpr qint64 hour = 3600;
    return QLocale::c()
        .toString(QDateTime::currentDateTimeUtc().addSecs(-hour),
                  u"ddd, dd MMM yyyy hh:mm:ss 'GMT'"_s)
        .toLatin1();
}

const Deviation headerRows[] = {
    {"date-header-wrong", "date-header",
     QT_TRANSLATE_NOOP("Simulator", "the Date header is an hour late"),
     [](const Request&, Answer& answer) { answer.date = hourAgo(); }},
    {"date-header-missing", "date-header",
     QT_TRANSLATE_NOOP("Simulator", "answers have no Date header"),
     [](const Request&, Answer& answer) { answer.date = QByteArray(); }},
    {"date-header-of-its-own", "date-header",
     QT_TRANSLATE_NOOP("Simulator", "the Date header has a form of its own: 22.11.2026 13:07"),
     [](const Request&, Answer& answer) {
         answer.date =
             QDateTime::currentDateTimeUtc().toString(u"dd.MM.yyyy hh:mm:ss"_s).toLatin1();
     },
     blind},
    {"slow-body", "in-time",
     QT_TRANSLATE_NOOP("Simulator", "the first answer for a card takes seven seconds to come"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return withColdCache(request, sound, notes, FaultKind::SlowDrip);
     }},
    {"slow-answer", "in-time",
     QT_TRANSLATE_NOOP("Simulator", "the first answer for a card begins after seven seconds"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return withColdCache(request, sound, notes, FaultKind::Delay);
     }},
    {"connection-closed-unsaid", "keep-alive",
     QT_TRANSLATE_NOOP("Simulator", "connections are closed behind an answer that does not say so"),
     [](const Request&, Answer& answer) { answer.closesUnsaid = true; }, blind},
    {"address-moved", "addresses",
     QT_TRANSLATE_NOOP("Simulator", "requests are sent on to another address with 308"),
     [](const Request& request, Answer& answer) {
         answer = refusal(308, u"Moved"_s);
         answer.location = "/api/1.7/" + endpointOf(request).toUtf8();
     }},
    {"too-many-without-a-time", "retry-after",
     QT_TRANSLATE_NOOP("Simulator", "every twentieth request is answered 429 without Retry-After"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return isTurnedAway(notes) ? refusal(429, u"Too many requests"_s) : sound(request);
     }},
    {"too-many-as-forbidden", "passing-trouble",
     QT_TRANSLATE_NOOP("Simulator",
                       "every twentieth request is answered 403 for its being too many"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return isTurnedAway(notes) ? refusal(403, u"Too many requests, try again later"_s)
                                    : sound(request);
     },
     blind},
    {"card-locked", "parallel-requests",
     QT_TRANSLATE_NOOP("Simulator",
                       "of two requests for a card at the same time one is answered 500"),
     oneAtATime},
};

} // namespace

std::span<const Deviation> headerDeviations()
{
    return headerRows;
}

} // namespace simulator
