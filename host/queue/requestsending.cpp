// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/requestsending.h"

#include "host/queue/xmltext.h"
#include "host/services/currenttime.h"
#include "host/services/restclient.h"

namespace poshost {

using namespace Qt::StringLiterals;
using deliverypolicy::Meaning;

namespace {

constexpr qsizetype maxKeptAnswerBytes = 4096;

/// What is kept of an answer.
QString beginningOf(const QByteArray& answer)
{
    const QString text = xmltext::decoded(answer.left(maxKeptAnswerBytes));
    return answer.size() > maxKeptAnswerBytes ? xmltext::withoutHalfWord(text) : text;
}

} // namespace

bool DeliveryResult::isRefusedForSure() const
{
    const bool refused =
        meaning == Meaning::WrongAuthorization || (meaning == Meaning::Refused && status > 0);
    return refused && !sentTwice;
}

DeliveryResult requestsending::send(RestClient& client, const QUrl& address,
                                    const QByteArray& payload,
                                    const QHash<QString, QString>& headers, bool attemptedBefore)
{
    // what is sent is UTF-8, whatever the text was read in before it was queued
    client.post(address, xmltext::declaredAsUtf8(payload), headers);

    const tr::Tr error = client.getErrorText();
    deliverypolicy::Answer answer;
    answer.transportFailed = client.getError() > 0;
    answer.unsendable = error.id() == "restAddressError"_L1 || error.id() == "restHeaderError"_L1;
    answer.status = client.getHttpStatusCode();
    DeliveryResult result;
    result.sentTwice = client.getSendCount() > 1;
    answer.attemptedBefore = attemptedBefore || result.sentTwice;
    result.meaning = deliverypolicy::meaningOf(answer);
    result.status = answer.status;
    result.error = deliverypolicy::explain(result.meaning, answer.status, error.message());
    result.answer = beginningOf(client.getResponse());
    if (result.meaning != Meaning::StepDone) {
        result.retryAfterMilliseconds =
            deliverypolicy::retryAfter(client.getResponseHeader(u"Retry-After"_s),
                                       MockFactory<CurrentTime>::create()->currentDateTime());
    }
    return result;
}

} // namespace poshost
