// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"
#include "host/hostexport.h"

#include <QDateTime>
#include <QString>

/// What an answer to a queued message means. The one table of it stands in deliverypolicy.cpp.
namespace poshost::deliverypolicy {

/// What an answer means, and so what becomes of the message and of the queue.
enum class Meaning
{
    StepDone,           ///< the server has taken the step
    Duplicate,          ///< the server knows the identifier, and not from this message
    ServerAway,         ///< nothing gets through: the whole queue waits
    ServerError,        ///< try again; the message waits by itself once it met too many
    WrongAuthorization, ///< the messages with that authorization pause
    WrongAddress,       ///< the whole queue pauses
    Refused,            ///< the message is parked with the answer
};

/// What came back.
struct Answer
{
    bool transportFailed = false; ///< no answer, or not a whole one
    bool unsendable = false;      ///< address or headers are such that nothing can ever be sent
    int status = 0;               ///< HTTP status, 0 without one
    bool attemptedBefore = false; ///< the step may have reached the server earlier
};

/// A message that met so many server errors waits by itself and lets the others pass.
constexpr int serverErrorsUntilAlone = 5;
/// How long until a paused authorization or address is probed.
constexpr qint64 probeMilliseconds = 5 * 60 * 1000;
/// The longest wait that a server may ask for.
constexpr qint64 maxRetryAfterMilliseconds = 60 * 60 * 1000;

/// Looks the answer up in the table.
/// @param answer what came back
/// @return what it means; there is a meaning for every answer
HOST_EXPORT Meaning meaningOf(const Answer& answer);

/// The sentence for people: what came back and what to do about it.
/// @param meaning what meaningOf() made of the answer
/// @param status HTTP status, 0 without one
/// @param transportText the transport's own words, used where no status tells more
/// @return the sentence, not yet in a language
HOST_EXPORT Message explain(Meaning meaning, int status, const Message& transportText);

/// The wait that a Retry-After header asks for, in milliseconds.
/// @param value whole seconds or an HTTP date
/// @param now the time from which a date counts
/// @return 0 for a past date and for what is neither; never above maxRetryAfterMilliseconds
HOST_EXPORT qint64 retryAfter(const QString& value, const QDateTime& now);

/// The wait before the n-th repetition, in milliseconds: 1 s, doubled each time, at most 5 min.
/// @param failures how many attempts have failed in a row, from 1
/// @param jitter from 0 up to 1; adds up to a quarter, so that many tills do not come at once
/// @return milliseconds, from 1000 up to 300000
HOST_EXPORT qint64 backOff(int failures, double jitter);

} // namespace poshost::deliverypolicy
