// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rules/cannedanswers.h"

#include "simulator/documents/check.h"
#include "simulator/documents/names.h"
#include "simulator/status.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

Answer made(const CannedAnswer& canned, qsizetype number)
{
    Answer answer;
    answer.status = canned.status;
    answer.contentType = canned.status < status::firstRefusal ? "application/xml; charset=utf-8"
                                                              : "text/plain; charset=utf-8";
    answer.body = canned.body;
    answer.reason = u"[answer %1]"_s.arg(number); // for the log, whatever the status
    return answer;
}

QString shownCard(const QString& card)
{
    return card.isEmpty() ? u"missing"_s : maskedCard(card);
}

} // namespace

CannedAnswers::CannedAnswers(const std::vector<CannedAnswer>& answers)
{
    for (const CannedAnswer& answer : answers) {
        rows.push_back({answer});
    }
}

std::optional<Answer> CannedAnswers::take(const QString& endpoint, const QString& card,
                                          QString& whyNone)
{
    const std::scoped_lock lock(mutex);
    std::optional<Answer> taken;
    QStringList objections;
    for (Row& row : rows) {
        const CannedAnswer& answer = row.answer;
        const bool matches = (answer.endpoint.isEmpty() || answer.endpoint == endpoint) &&
                             (answer.card.isEmpty() || answer.card == card);
        row.matched += matches ? 1 : 0;
        if (matches && !taken && row.matched >= answer.firstRequest && row.given < answer.times) {
            ++row.given;
            taken = made(answer, objections.size() + 1);
        }
        objections.append(u"[[answer]] %1 %2"_s.arg(objections.size() + 1)
                              .arg(taken ? QString() : objection(row, endpoint, card)));
    }
    if (!taken) {
        whyNone = u"No [[answer]] is for this request to %1, %2 %3"_s.arg(
            endpoint, names::cardNumber, shownCard(card));
        whyNone +=
            objections.isEmpty() ? u": there is none at all"_s : u": "_s + objections.join(u", "_s);
    }
    return taken;
}

QString CannedAnswers::objection(const Row& row, const QString& endpoint, const QString& card)
{
    const CannedAnswer& answer = row.answer;
    if (!answer.endpoint.isEmpty() && answer.endpoint != endpoint) {
        return u"is for %1"_s.arg(answer.endpoint);
    }
    if (!answer.card.isEmpty() && answer.card != card) {
        return u"is for %1 %2"_s.arg(names::cardNumber, maskedCard(answer.card));
    }
    if (row.matched < answer.firstRequest) {
        return u"is for request %1, this is number %2"_s.arg(answer.firstRequest).arg(row.matched);
    }
    return u"was given %1 times, which is all"_s.arg(row.given);
}

} // namespace simulator
