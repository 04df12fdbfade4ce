// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/mismatch/explainer.h"

#include "simulator/documents/answerdocument.h"
#include "simulator/documents/check.h"
#include "simulator/documents/endpoints.h"
#include "simulator/documents/names.h"
#include "simulator/documents/xmlreader.h"
#include "simulator/documents/xmlwriter.h"
#include "simulator/mismatch/sums.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// More differences than this, and two documents have nothing to do with each other.
constexpr size_t mostDifferences = 6;
constexpr qsizetype mostTries = 10'000;

bool isReturned(const Element& request)
{
    return request.child(names::chType).text().trimmed() == "2"_L1;
}

QString idOf(const Element& request)
{
    return request.child(names::id).text();
}

QString shownId(const QString& id)
{
    return id.left(40).simplified();
}

/// How many characters of two card numbers differ.
qsizetype distance(const QString& a, const QString& b)
{
    qsizetype differing = std::abs(a.size() - b.size());
    for (qsizetype i = 0; i < std::min(a.size(), b.size()); ++i) {
        differing += a[i] == b[i] ? 0 : 1;
    }
    return differing;
}

} // namespace

Explainer::Explainer(std::shared_ptr<const Rules> followed, Database& database)
    : rules(std::move(followed)), store(database), ledger(database)
{}

void Explainer::noteTry(const Element& request)
{
    if (tries.size() >= mostTries) {
        tries.clear();
    }
    tries.insert(idOf(request), writeXml(request));
}

QString Explainer::causeOf(const QString& endpoint, const Element& request)
{
    std::optional<Cause> cause;
    if (endpoint == endpoints::checkConfirm) {
        cause = againstTry(request);
    }
    if (!cause && endpoint != endpoints::precheck) {
        cause = againstAnswers(request);
    }
    if (!cause) {
        if (const std::optional<Difference> line = repeatedLine(request)) {
            cause = Cause{*line, {}, {}};
        }
    }
    if (!cause) {
        cause = isReturned(request) ? againstSale(request) : againstCards(request);
    }
    if (!cause) {
        if (const std::optional<Difference> sum = wrongSum(request)) {
            cause = Cause{*sum, {}, {}};
        }
    }
    return cause ? sentence(*cause) : QString();
}

std::optional<Explainer::Cause> Explainer::againstTry(const Element& request) const
{
    const QByteArray tried = tries.value(idOf(request));
    if (tried.isEmpty()) {
        return std::nullopt;
    }
    const Document document = readXml(tried);
    Comparison comparison = compared(request, document.root(), true);
    if (comparison.differences.empty()) {
        return std::nullopt;
    }
    return Cause{comparison.differences.front(), u"the payment try of this check"_s, comparison};
}

/// An answer to this check, or where it has none, to another one that is much alike.
std::optional<Explainer::Cause> Explainer::againstAnswers(const Element& request) const
{
    const bool isSale = !isReturned(request);
    const Document carried = withoutUsed(request);
    std::vector<Document> answers = store.answersTo(idOf(request));
    const bool isKnown = !answers.empty();
    if (!isKnown) {
        answers = store.lastAnswers();
    }
    std::optional<Comparison> best;
    const Document* closest = nullptr;
    for (const Document& answer : answers) {
        Comparison comparison = compared(carried.root(), answer.root(), isSale);
        if (!best || comparison.differences.size() < best->differences.size()) {
            best = std::move(comparison);
            closest = &answer;
        }
    }
    if (!best || (!isKnown && best->differences.size() > mostDifferences)) {
        return std::nullopt;
    }
    const QString name = u"the answer to check %1"_s.arg(shownId(idOf(closest->root())));
    if (!best->differences.empty()) {
        return Cause{best->differences.front(), name, *best};
    }
    const std::optional<Difference> payment =
        isSale ? wrongPayment(request, grantedLines(closest->root())) : std::nullopt;
    return payment ? std::optional(Cause{*payment, name, *best}) : std::nullopt;
}

/// The booked sale that a return which names none is of: one of its card that its lines fit.
QString Explainer::saleFor(const Element& request) const
{
    const QString card = request.child(names::cardNumber).text();
    for (const Booking& booking : ledger.bookings()) {
        if (booking.type == Check::Type::Sale && booking.cardNumber == card &&
            !wrongShare(request, ledger.soldLines(booking.checkId))) {
            return booking.checkId;
        }
    }
    return {};
}

std::optional<Explainer::Cause> Explainer::againstSale(const Element& request) const
{
    const QString original = request.child(names::originalId).text();
    const QString card = request.child(names::cardNumber).text();
    const std::optional<QString> soldTo = ledger.cardOfSale(original);
    const QString name = u"the sale %1"_s.arg(shownId(original));
    if (!soldTo) {
        const QString meant = saleFor(request);
        return Cause{{names::originalId,
                      shownId(original),
                      meant.isEmpty() ? u"a confirmed sale"_s
                                      : u"%1, which its card and lines fit"_s.arg(shownId(meant)),
                      false,
                      false,
                      {}},
                     {},
                     {}};
    }
    if (*soldTo != card) {
        return Cause{
            {names::cardNumber, maskedCard(card), maskedCard(*soldTo), false, false, {}}, name, {}};
    }
    const std::optional<Difference> share = wrongShare(request, ledger.soldLines(original));
    return share ? std::optional(Cause{*share, name, {}}) : std::nullopt;
}

std::optional<Explainer::Cause> Explainer::againstCards(const Element& request) const
{
    const QString card = request.child(names::cardNumber).text();
    if (rules->card(card) != nullptr || rules->cards.empty()) {
        return std::nullopt;
    }
    const Card& closest = *std::ranges::min_element(
        rules->cards, {}, [&card](const Card& known) { return distance(card, known.number); });
    return Cause{
        {names::cardNumber,
         maskedCard(card),
         u"%1, the closest card, of which %2 characters differ"_s.arg(maskedCard(closest.number))
             .arg(distance(card, closest.number)),
         false,
         false,
         {}},
        {},
        {}};
}

QString Explainer::sentence(const Cause& cause)
{
    QString text = cause.difference.text();
    const Comparison& comparison = cause.comparison;
    QStringList further;
    for (size_t i = 1; i < std::min(comparison.differences.size(), mostDifferences); ++i) {
        further.append(comparison.differences[i].text());
    }
    if (!further.isEmpty()) {
        text += u"; "_s + further.join(u"; "_s);
    }
    if (cause.closest.isEmpty()) {
        return text;
    }
    text += u". The closest is "_s + cause.closest;
    if (!comparison.agreeing.isEmpty()) {
        text += u": %1 match, and %2 of %3 lines"_s.arg(comparison.agreeing.join(u", "_s))
                    .arg(comparison.agreeingLines)
                    .arg(comparison.lines);
    }
    return text;
}

} // namespace simulator
