// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/grantreasons.h"

#include "input/exactquotient.h"
#include "simulator/rules/granting.h"

#include <cstdlib>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// amount x part / whole with as many decimals as it has, at most six of them.
QString exactShare(Kopecks amount, qint64 part, qint64 whole)
{
    if (whole == 0) {
        return u"0"_s;
    }
    constexpr qint64 unit = 1'000'000;
    constexpr int decimals = 6;
    constexpr quint64 millionthsInKopeck = unit / 100;
    const auto divisor = static_cast<quint64>(whole);
    const auto share = input::dividedProduct(static_cast<quint64>(std::abs(amount)),
                                             static_cast<quint64>(std::abs(part)), divisor);
    const auto beyond = input::dividedProduct(share ? share->rest : 0, millionthsInKopeck, divisor);
    if (!share || !beyond) {
        throw std::overflow_error("a share does not fit 64 bits");
    }
    const auto size = static_cast<qint64>(share->quotient * millionthsInKopeck + beyond->quotient);
    const qint64 value = (amount < 0) != (part < 0) ? -size : size;
    QString text = u"%1.%2"_s.arg(value / unit).arg(value % unit, decimals, 10, QChar(u'0'));
    while (text.endsWith(u'0') && text.size() - text.indexOf(u'.') > 3) {
        text.chop(1);
    }
    return text;
}

GrantReason percentReason(const QString& what, const QString& table, const Percentage& percentage,
                          const QString& sku, Kopecks base)
{
    GrantReason reason;
    reason.what = what;
    reason.rule = ruleText(table, percentage, sku);
    reason.base = base;
    reason.exact = exactShare(base, percentage.of(sku), Percentage::whole);
    return reason;
}

} // namespace

QString ruleText(const QString& table, const Percentage& percentage, const QString& sku)
{
    const QString key =
        percentage.bySku.contains(sku) ? u"%1.sku.\"%2\""_s.arg(table, sku) : table + u".percent"_s;
    return u"%1 = %2 %"_s.arg(key, writeKopecks(percentage.of(sku)));
}

Kopecks discountOf(const Grant& grant)
{
    Kopecks sum = 0;
    for (const LineGrant& line : grant.lines) {
        sum = checkedSum(sum, checkedSum(line.discount, line.discountOnChange));
    }
    return sum;
}

Kopecks earnedWith(const Check& check, const Grant& grant, Kopecks points)
{
    const Kopecks afterDiscount = check.total - discountOf(grant);
    Kopecks earned = 0;
    for (const LineGrant& line : grant.lines) {
        if (afterDiscount > 0) {
            earned = checkedSum(
                earned, roundedShare(line.awardBonus, afterDiscount - points, afterDiscount));
        }
    }
    return earned;
}

std::vector<GrantReason> grantReasons(const Rules& rules, const Check& check, const Grant& grant,
                                      size_t i, Kopecks points)
{
    const Line& line = check.lines.at(i);
    const LineGrant& given = grant.lines.at(i);
    GrantReason discount =
        percentReason(u"discount"_s, u"discount"_s, rules.discount, line.sku, line.total);
    discount.granted = given.discount;
    if (given.discount < roundedShare(line.total, rules.discount.of(line.sku), Percentage::whole)) {
        discount.limit = u"minTotal"_s;
    }
    std::vector<GrantReason> reasons{discount};
    if (given.discountOnChange > 0) {
        reasons.push_back({u"discountOnChange"_s,
                           u"discount.roundDownTo = %1"_s.arg(writeKopecks(rules.roundDownTo)),
                           check.total - discountOf(grant) + given.discountOnChange,
                           writeKopecks(given.discountOnChange),
                           given.discountOnChange,
                           {}});
    }
    const Kopecks left = line.total - given.discount - given.discountOnChange;
    reasons.push_back(percentReason(u"awardBonus"_s, u"earn"_s, rules.earn, line.sku, left));
    reasons.back().granted = given.awardBonus;
    reasons.push_back(percentReason(u"allowBonus"_s, u"spend"_s, rules.spend, line.sku, left));
    reasons.back().granted = given.allowBonus;
    const Kopecks afterDiscount = check.total - discountOf(grant);
    if (points > 0 && afterDiscount > 0) {
        reasons.push_back({u"earned"_s,
                           u"awardBonus x %1 / %2"_s.arg(writeKopecks(afterDiscount - points),
                                                         writeKopecks(afterDiscount)),
                           given.awardBonus,
                           exactShare(given.awardBonus, afterDiscount - points, afterDiscount),
                           roundedShare(given.awardBonus, afterDiscount - points, afterDiscount),
                           {}});
    }
    return reasons;
}

} // namespace simulator
