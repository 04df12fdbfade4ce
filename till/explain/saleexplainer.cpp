// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/explain/saleexplainer.h"

#include "host/document/bonusimpact.h"
#include "host/document/money.h"
#include "till/checks/amount.h"
#include "till/explain/checkwords.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

using amount::moneyText;
using checkwords::require;
using protocol::Findings;

/// What is not 0: an amount of 0 grants nothing.
QList<AmountSource> sourcesIn(const Findings& findings, AmountSource::Document document,
                              protocol::Meaning meaning, int position)
{
    QList<AmountSource> sources;
    const QList<protocol::Finding> found = findings.of(meaning, position);
    for (const protocol::Finding& finding : found) {
        if (finding.kopecks != 0) {
            sources.append({document, finding});
        }
    }
    return sources;
}

qint64 sumOf(const QList<AmountSource>& sources)
{
    qint64 sum = 0;
    for (const AmountSource& source : sources) {
        sum += source.finding.kopecks;
    }
    return sum;
}

} // namespace

SaleExplainer::SaleExplainer(const Check& sale, const Exchange& found)
    : check(sale), answer(found.answer), confirmation(found.confirmation)
{
    explanation.exchange = found;
    if (!found.problem.isEmpty()) {
        explanation.problems.append(found.problem);
    }
}

Explanation SaleExplainer::explain()
{
    if (!explanation.exchange.answer.isEmpty() && !answer.problem().isEmpty()) {
        explanation.problems.append(
            Text::tr("the answer cannot be read to its end (%1)").arg(answer.problem()));
    }
    for (const Line& line : check.lines) {
        explainLine(line);
    }
    refuseOtherLines();
    explainTotals();
    checkwords::explainMessages(check, answer, explanation);
    return explanation;
}

ExplainedAmount SaleExplainer::amountOf(What what, qint64 kopecks, int position) const
{
    ExplainedAmount amount;
    amount.what = what;
    amount.position = position;
    amount.kopecks = kopecks;
    return amount;
}

QList<AmountSource> SaleExplainer::inAnswer(Meaning meaning, int position) const
{
    return sourcesIn(answer, AmountSource::Document::Answer, meaning, position);
}

QList<AmountSource> SaleExplainer::inConfirmation(Meaning meaning, int position) const
{
    return sourcesIn(confirmation, AmountSource::Document::Confirmation, meaning, position);
}

void SaleExplainer::explainLine(const Line& line)
{
    explainDiscount(line);
    explainSpent(line);
    explainEarned(line);
}

void SaleExplainer::explainDiscount(const Line& line)
{
    ExplainedAmount amount = amountOf(What::Discount, line.discountKopecks, line.position);
    amount.sources = inAnswer(Meaning::Discount, line.position);
    require(amount, sumOf(amount.sources), Text::tr("the answer grants"));
    compareImpacts(amount, false);
    compareWithConfirmation(amount, Meaning::UsedDiscount);
    explanation.amounts.append(amount);
}

void SaleExplainer::explainSpent(const Line& line)
{
    ExplainedAmount amount = amountOf(What::PointsSpent, line.spentKopecks, line.position);
    if (line.spentKopecks != 0) {
        amount.sources = inAnswer(Meaning::SpendingLimit, line.position);
        const qint64 allowed = sumOf(amount.sources);
        amount.rule =
            Text::tr("chosen at the till, of %1 that the answer allows").arg(moneyText(allowed));
        if (line.spentKopecks > allowed) {
            require(amount, allowed, Text::tr("the answer allows no more than"));
        }
    }
    compareImpacts(amount, true);
    compareWithConfirmation(amount, Meaning::UsedPoints);
    explanation.amounts.append(amount);
}

void SaleExplainer::explainEarned(const Line& line)
{
    ExplainedAmount amount = amountOf(What::PointsEarned, line.earnedKopecks, line.position);
    amount.sources = inAnswer(Meaning::Accrual, line.position);
    const qint64 awarded = sumOf(amount.sources);
    const qint64 discounted = check.goodsKopecks() - check.discountKopecks();
    const qint64 spent = check.spentKopecks();
    qint64 expected = awarded;
    if (spent != 0 && awarded != 0) {
        expected = discounted > 0 ? amount::proportion(awarded, discounted - spent, discounted) : 0;
        amount.rule =
            Text::tr("%1 × %2 / %3, what is paid in money of what is to be paid")
                .arg(moneyText(awarded), moneyText(discounted - spent), moneyText(discounted));
    }
    require(amount, expected, Text::tr("from the answer follow"));
    explanation.amounts.append(amount);
}

/// The impacts on the document are what the plug-in made of the answer.
void SaleExplainer::compareImpacts(ExplainedAmount& amount, bool bonus) const
{
    qint64 sum = 0;
    const auto impacts = check.document->getImpacts();
    for (const auto& impact : impacts) {
        const auto totals = impact->getTotals();
        const bool isBonus = !impact.dynamicCast<BonusImpact>().isNull();
        if (isBonus == bonus && totals->getPosition() == amount.position) {
            sum += money::toKopecks(totals->getDiscountSum()).value_or(0);
        }
    }
    require(amount, sum, Text::tr("the document's impacts make"));
}

void SaleExplainer::compareWithConfirmation(ExplainedAmount& amount, Meaning meaning) const
{
    if (explanation.exchange.confirmation.isEmpty()) {
        return;
    }
    const QList<AmountSource> used = inConfirmation(meaning, amount.position);
    require(amount, sumOf(used), Text::tr("the confirmation says"));
    amount.sources += used;
}

void SaleExplainer::refuseOtherLines()
{
    for (const protocol::Finding& finding : answer.all()) {
        const bool grants =
            finding.meaning == Meaning::Discount || finding.meaning == Meaning::Accrual;
        if (grants && finding.kopecks != 0 && check.line(finding.position) == nullptr) {
            explanation.problems.append(
                Text::tr("the answer grants %1 on line %2 (%3, line %4 of the answer), which the "
                         "check does not have")
                    .arg(moneyText(finding.kopecks))
                    .arg(finding.position)
                    .arg(finding.path)
                    .arg(finding.line));
        }
    }
}

void SaleExplainer::explainTotals()
{
    ExplainedAmount discount = amountOf(What::Discount, check.discountKopecks());
    discount.rule = Text::tr("the sum of the lines");
    explanation.amounts.append(discount);

    ExplainedAmount spent = amountOf(What::PointsSpent, check.spentKopecks());
    spent.rule = Text::tr("the sum of the lines");
    if (check.spentKopecks() != 0) {
        spent.sources = inAnswer(Meaning::CheckSpendingLimit);
        if (const qint64 allowed = sumOf(spent.sources); check.spentKopecks() > allowed) {
            require(spent, allowed, Text::tr("the answer allows no more than"));
        }
    }
    explanation.amounts.append(spent);

    ExplainedAmount earned = amountOf(What::PointsEarned, check.earnedKopecks());
    earned.rule = Text::tr("the sum of the lines");
    explanation.amounts.append(earned);

    explainEarnedBySystem();
    checkwords::explainBalance(check, answer, explanation);
    explainPaid();
}

void SaleExplainer::explainEarnedBySystem()
{
    if (!check.systemEarnKopecks) {
        return;
    }
    ExplainedAmount amount = amountOf(What::EarnedBySystem, *check.systemEarnKopecks);
    const qint64 discounted = check.goodsKopecks() - check.discountKopecks();
    const qint64 spent = check.spentKopecks();
    if (spent == 0) {
        amount.sources = inAnswer(Meaning::CheckAccrual);
        require(amount, sumOf(amount.sources), Text::tr("the answer says"));
    } else {
        // as the system counts it: unrounded points of each line, then summed
        const double ratio = money::fromKopecks(discounted - spent) /
                             (money::fromKopecks(discounted - spent) + money::fromKopecks(spent));
        double sum = 0;
        for (const protocol::Finding& finding : answer.all()) {
            if (finding.meaning == Meaning::Accrual && finding.kopecks != 0) {
                amount.sources.append({AmountSource::Document::Answer, finding});
                sum += finding.amount * ratio;
            }
        }
        amount.rule = Text::tr("each line's points × %1 / %2, unrounded, summed")
                          .arg(moneyText(discounted - spent), moneyText(discounted));
        require(amount, money::toKopecks(sum).value_or(0), Text::tr("from the answer follow"));
    }
    explanation.amounts.append(amount);
}

void SaleExplainer::explainPaid()
{
    ExplainedAmount amount = amountOf(What::Paid, check.moneyKopecks());
    amount.rule = Text::tr("goods %1 less discount %2 less points %3")
                      .arg(moneyText(check.goodsKopecks()), moneyText(check.discountKopecks()),
                           moneyText(check.spentKopecks()));
    compareWithConfirmation(amount, Meaning::Payment);
    explanation.amounts.append(amount);
}

} // namespace till
