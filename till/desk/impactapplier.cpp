// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/impactapplier.h"

#include "host/document/money.h"
#include "till/checks/amount.h"
#include "till/text.h"

#include <algorithm>

namespace till {
namespace {

/// A cashier reads no more; of a server gone wrong there may be twenty thousand.
constexpr int mostSentences = 10;

qint64 leftOf(const Line& line)
{
    return line.sumKopecks - line.discountKopecks - line.spentKopecks;
}

} // namespace

void ImpactApplier::takeOff()
{
    check.cashierMessages.clear();
    check.clientMessages.clear();
    if (check.isReturn()) {
        return; // its figures are shares of the sale's and do not come from the system
    }
    check.document->removeImpacts(systemType);
    for (Line& line : check.lines) {
        line.discountKopecks = 0;
        line.spentKopecks = 0;
        line.awardedKopecks = 0;
        line.earnedKopecks = 0;
    }
    check.pointsTouched = false;
    check.systemEarnKopecks.reset();
}

template <typename Sentence>
void ImpactApplier::leaveOut(Sentence sentence)
{
    if (++leftOut <= mostSentences) {
        notices.append(sentence());
    }
}

ImpactApplier::~ImpactApplier()
{
    if (leftOut > mostSentences) {
        notices.append(Text::tr("The loyalty system sent %n more that the check cannot take; that "
                                "is left out.",
                                nullptr, leftOut - mostSentences));
    }
}

Line* ImpactApplier::lineOf(const QSharedPointer<DocumentImpact>& impact)
{
    if (impact.isNull() || impact->getTotals().isNull() ||
        impact->getTotals()->getCardType() != QVariant(systemType)) {
        leaveOut([] {
            return Text::tr("The loyalty system sent an impact that is not its own; it is "
                            "left out.");
        });
        return nullptr;
    }
    const int position = impact->getTotals()->getPosition();
    Line* const line = check.line(position);
    if (line == nullptr) {
        leaveOut([&] {
            return Text::tr("The loyalty system sent \"%1\" for line %2, which the check does "
                            "not have; it is left out.")
                .arg(impact->getTotals()->getDiscountName())
                .arg(position);
        });
    }
    return line;
}

std::optional<qint64> ImpactApplier::checked(double value, const Line& line, const QString& what)
{
    const auto kopecks = money::toKopecks(value);
    if (!kopecks || *kopecks < 0 || *kopecks > leftOf(line)) {
        leaveOut([&] {
            return Text::tr("The loyalty system sent \"%1\" of %2 for line %3, of which %4 is "
                            "left; it is left out.")
                .arg(what, QString::number(value, 'f', 2))
                .arg(line.position)
                .arg(amount::moneyText(leftOf(line)));
        });
        return std::nullopt;
    }
    return kopecks;
}

void ImpactApplier::applyDiscounts(const QList<QSharedPointer<DocumentImpact>>& impacts)
{
    for (const auto& impact : impacts) {
        Line* const line = lineOf(impact);
        if (line == nullptr) {
            continue;
        }
        const auto totals = impact->getTotals();
        auto kopecks = checked(totals->getDiscountSum(), *line, totals->getDiscountName());
        if (kopecks && !totals->isMinPriceIgnored()) {
            const qint64 least = amount::lineSum(line->minPriceKopecks, line->thousandths);
            const qint64 allowed = std::max<qint64>(0, leftOf(*line) - least);
            if (*kopecks > allowed) {
                kopecks = allowed;
                totals->setDiscountSum(money::fromKopecks(allowed));
            }
        }
        if (kopecks.value_or(0) > 0) {
            line->discountKopecks += *kopecks;
            check.document->addImpact(impact);
        }
    }
}

qint64 ImpactApplier::applyPoints(const QList<QSharedPointer<BonusImpact>>& impacts)
{
    qint64 placed = 0;
    for (const auto& impact : impacts) {
        Line* const line = lineOf(impact);
        if (line == nullptr) {
            continue;
        }
        const auto totals = impact->getTotals();
        const auto kopecks = checked(impact->getPositionSums().value(line->position), *line,
                                     totals->getDiscountName());
        if (kopecks.value_or(0) > 0) {
            totals->setDiscountSum(money::fromKopecks(*kopecks));
            line->spentKopecks += *kopecks;
            placed += *kopecks;
            check.document->addImpact(impact);
        }
    }
    check.fillDocument();
    return placed;
}

void ImpactApplier::noteAccruals(const QList<DocumentBonusRecord>& records)
{
    for (const DocumentBonusRecord& record : records) {
        if (!record.accrual) {
            continue;
        }
        Line* const line = check.line(record.position.toInt());
        const auto kopecks = money::toKopecks(record.bonusAmount);
        // an award may be negative: a system may take points for a line
        if (line == nullptr || !kopecks ||
            std::abs(line->awardedKopecks + *kopecks) > line->sumKopecks) {
            leaveOut([&] {
                return Text::tr("The loyalty system awards %1 points on line %2, which cannot "
                                "be; they are left out.")
                    .arg(QString::number(record.bonusAmount, 'f', 2), record.position.toString());
            });
            continue;
        }
        line->awardedKopecks += *kopecks;
    }
    countEarned();
}

void ImpactApplier::countEarned()
{
    const qint64 discounted = check.goodsKopecks() - check.discountKopecks();
    const qint64 spent = check.spentKopecks();
    for (Line& line : check.lines) {
        line.earnedKopecks =
            spent == 0 ? line.awardedKopecks
                       : amount::proportion(line.awardedKopecks, discounted - spent, discounted);
    }
}

} // namespace till
