// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/deliverypolicy.h"

#include "host/http/httpstatus_p.h"

#include <QLocale>
#include <QTimeZone>
#include <algorithm>
#include <array>

namespace poshost {

using namespace Qt::StringLiterals;

namespace deliverypolicy {

namespace {

struct Row
{
    int first;
    int last;
    Meaning meaning;
    Meaning ifAttemptedBefore;
};

/// The first row that holds the status counts.
constexpr std::array table{
    Row{200, 299, Meaning::StepDone, Meaning::StepDone},
    Row{300, 399, Meaning::WrongAddress, Meaning::WrongAddress},
    Row{401, 401, Meaning::WrongAuthorization, Meaning::WrongAuthorization},
    Row{403, 403, Meaning::WrongAuthorization, Meaning::WrongAuthorization},
    Row{404, 405, Meaning::WrongAddress, Meaning::WrongAddress},
    Row{408, 408, Meaning::ServerAway, Meaning::ServerAway},
    // an earlier attempt was booked and its answer lost
    Row{409, 409, Meaning::Duplicate, Meaning::StepDone},
    Row{425, 425, Meaning::ServerAway, Meaning::ServerAway},
    Row{429, 429, Meaning::ServerAway, Meaning::ServerAway},
    Row{400, 499, Meaning::Refused, Meaning::Refused},
    Row{500, 599, Meaning::ServerError, Meaning::ServerError},
};

constexpr qint64 firstBackOff = 1000;
/// With the largest jitter this makes 5 minutes.
constexpr qint64 lastBackOff = 4 * 60 * 1000;
constexpr double jitterShare = 0.25;

} // namespace

Meaning meaningOf(const Answer& answer)
{
    if (answer.unsendable) {
        return Meaning::Refused;
    }
    // an error status tells its story even when its body was cut
    if (answer.transportFailed && answer.status < httpstatus::firstError) {
        return Meaning::ServerAway;
    }
    for (const Row& row : table) {
        if (answer.status >= row.first && answer.status <= row.last) {
            return answer.attemptedBefore ? row.ifAttemptedBefore : row.meaning;
        }
    }
    return Meaning::ServerAway; // not a status of HTTP
}

Message explain(Meaning meaning, int status, const Message& transportText)
{
    switch (meaning) {
    case Meaning::StepDone:
        return {};
    case Meaning::Duplicate:
        return Message::of("queue.duplicate", status);
    case Meaning::WrongAuthorization:
        return Message::of("queue.wrongAuthorization", status);
    case Meaning::WrongAddress:
        return Message::of("queue.wrongAddress", status);
    case Meaning::Refused:
        return status < httpstatus::firstError ? transportText
                                               : Message::of("queue.refused", status);
    case Meaning::ServerAway:
    case Meaning::ServerError:
        break;
    }
    return transportText.isEmpty() ? Message::of("queue.status", status) : transportText;
}

qint64 retryAfter(const QString& value, const QDateTime& now)
{
    const QString text = value.trimmed();
    if (text.isEmpty()) {
        return 0;
    }
    bool isNumber = false;
    const qulonglong seconds = text.toULongLong(&isNumber);
    if (isNumber) {
        constexpr qulonglong maxSeconds = maxRetryAfterMilliseconds / 1000;
        return static_cast<qint64>(std::min(seconds, maxSeconds)) * 1000;
    }
    // date and time apart: together they might be a moment that local time leaves out
    constexpr qsizetype dateLength = 16; // Sun, 06 Nov 1994 08:49:37 GMT
    const QDate day = QLocale::c().toDate(text.left(dateLength), u"ddd, dd MMM yyyy"_s);
    const QTime time = QTime::fromString(text.mid(dateLength), u" hh:mm:ss 'GMT'"_s);
    if (!day.isValid() || !time.isValid()) {
        return 0;
    }
    const QDateTime date(day, time, QTimeZone::utc());
    return std::clamp<qint64>(now.msecsTo(date), 0, maxRetryAfterMilliseconds);
}

qint64 backOff(int failures, double jitter)
{
    constexpr int doublingsToLast = 8;
    const int doublings = std::clamp(failures - 1, 0, doublingsToLast);
    const qint64 base = std::min(firstBackOff << doublings, lastBackOff);
    return base + static_cast<qint64>(static_cast<double>(base) * jitterShare * jitter);
}

} // namespace deliverypolicy

} // namespace poshost
