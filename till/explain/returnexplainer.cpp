// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/explain/returnexplainer.h"

#include "till/checks/amount.h"
#include "till/checks/returnlines.h"
#include "till/explain/checkwords.h"
#include "till/reason.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

using amount::moneyText;
using protocol::Findings;
using protocol::Meaning;

} // namespace

ReturnExplainer::ReturnExplainer(const Check& back, const Exchange& found, const Check& soldCheck,
                                 const QList<Check>& earlier, const Explanation& saleExplanation)
    : check(back), sale(soldCheck), before(earlier), ofSaleExplained(saleExplanation),
      answer(found.answer), confirmation(found.confirmation)
{
    explanation.exchange = found;
    if (!found.problem.isEmpty()) {
        explanation.problems.append(found.problem);
    }
}

Explanation ReturnExplainer::explain()
{
    QList<Line> expected;
    try {
        expected = returnlines::of(sale, before, check.lines);
    } catch (const std::exception& error) {
        explanation.problems.append(reasonOf(error));
    }
    for (qsizetype i = 0; i < expected.size(); ++i) {
        explainLine(check.lines.at(i), expected.at(i));
    }
    explainTotals();
    checkwords::explainBalance(check, answer, explanation);
    checkwords::explainMessages(check, answer, explanation);
    return explanation;
}

void ReturnExplainer::explainLine(const Line& line, const Line& expected)
{
    explainShare(What::Discount, What::Discount, line, line.discountKopecks,
                 expected.discountKopecks);
    explainShare(What::PointsGivenBack, What::PointsSpent, line, line.givenBackKopecks,
                 expected.givenBackKopecks);
    explainShare(What::PointsTakenBack, What::PointsEarned, line, line.takenBackKopecks,
                 expected.takenBackKopecks);
}

void ReturnExplainer::explainShare(What what, What ofSale, const Line& line, qint64 kopecks,
                                   qint64 expected)
{
    ExplainedAmount amount{what, line.position, kopecks, {}, {}, {}, {}};
    for (const ExplainedAmount& sold : ofSaleExplained.amounts) {
        if (sold.what != ofSale || sold.position != line.position) {
            continue;
        }
        for (const AmountSource& source : sold.sources) {
            if (source.document == AmountSource::Document::Answer) {
                amount.sources.append({AmountSource::Document::SaleAnswer, source.finding});
            }
        }
        amount.rule = Text::tr("%1 of the sale × %2 / %3, less what was returned before")
                          .arg(moneyText(sold.kopecks.value_or(0)),
                               amount::quantityText(line.returnedThousandths, line.fractional),
                               amount::quantityText(line.thousandths, line.fractional));
        if (!sold.problems.isEmpty()) {
            amount.problems.append(Text::tr("the sale's amount is not explained itself"));
        }
    }
    checkwords::require(amount, expected, Text::tr("the share of the sale is"));
    if (what == What::PointsTakenBack) {
        compareWithAnswer(amount);
    } else if (what == What::PointsGivenBack) {
        compareWithConfirmation(amount);
    }
    explanation.amounts.append(amount);
}

/// The answer to a return says with negative accruals what the server will take back.
void ReturnExplainer::compareWithAnswer(ExplainedAmount& amount) const
{
    const QList<protocol::Finding> accruals = answer.of(Meaning::Accrual, amount.position);
    for (const protocol::Finding& finding : accruals) {
        amount.sources.append({AmountSource::Document::Answer, finding});
    }
    if (!accruals.isEmpty()) {
        checkwords::require(amount, -Findings::sum(accruals), Text::tr("the server takes back"));
    }
}

void ReturnExplainer::compareWithConfirmation(ExplainedAmount& amount) const
{
    if (explanation.exchange.confirmation.isEmpty()) {
        return;
    }
    const QList<protocol::Finding> told = confirmation.of(Meaning::ReturnedPoints, amount.position);
    for (const protocol::Finding& finding : told) {
        amount.sources.append({AmountSource::Document::Confirmation, finding});
    }
    checkwords::require(amount, Findings::sum(told), Text::tr("the confirmation says"));
}

void ReturnExplainer::explainTotals()
{
    const QString rule = Text::tr("the sum of the lines");
    const auto total = [&](What what, qint64 kopecks) {
        explanation.amounts.append({what, 0, kopecks, {}, {}, rule, {}});
    };
    total(What::Discount, check.discountKopecks());
    total(What::PointsGivenBack, check.givenBackKopecks());
    total(What::PointsTakenBack, check.takenBackKopecks());
    explanation.amounts.append(
        {What::Paid,
         0,
         check.moneyKopecks(),
         {},
         {},
         Text::tr("goods %1 less discount %2 less points %3")
             .arg(moneyText(check.goodsKopecks()), moneyText(check.discountKopecks()),
                  moneyText(check.givenBackKopecks())),
         {}});
}

} // namespace till
