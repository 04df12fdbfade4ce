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

QString CannedAnswers::closest(const QString& endpoint, const QString& card) const
{
    const std::scoped_lock lock(mutex);
    QString sentence;
    qsizetype fewest = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
        const Row& row = rows[i];
        QStringList matching;
        QStringList differing;
        if (!row.answer.endpoint.isEmpty()) {
            row.answer.endpoint == endpoint ? matching.append(u"endpoint"_s)
                                            : differing.append(u"endpoint is %1: expected %2"_s.arg(
                                                  endpoint, row.answer.endpoint));
        }
        if (!row.answer.card.isEmpty()) {
            row.answer.card == card
                ? matching.append(names::cardNumber)
                : differing.append(u"%1 is %2: expected %3"_s.arg(
                      names::cardNumber, shownCard(card), maskedCard(row.answer.card)));
        }
        if (differing.isEmpty()) {
            differing.append(u"request is number %1: [[answer]] %2 %3"_s.arg(row.matched)
                                 .arg(i + 1)
                                 .arg(objection(row, endpoint, card)));
        }
        if (sentence.isEmpty() || differing.size() < fewest) {
            fewest = differing.size();
            sentence = u"%1. The closest is [[answer]] %2, %3"_s.arg(differing.join(u", "_s))
                           .arg(i + 1)
                           .arg(matching.isEmpty() ? u"nothing else of it matches"_s
                                                   : matching.join(u" and "_s) + u" match"_s);
        }
    }
    return sentence;
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
