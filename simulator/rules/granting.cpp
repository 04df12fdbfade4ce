// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rules/granting.h"

#include <algorithm>

namespace simulator {
namespace {

Kopecks percentOf(Kopecks amount, int hundredthsOfPercent)
{
    return roundedShare(amount, hundredthsOfPercent, Percentage::whole);
}

Kopecks left(const Line& line, const LineGrant& grant)
{
    return line.total - grant.discount - grant.discountOnChange;
}

LineGrant discountLine(const Rules& rules, const Line& line)
{
    LineGrant grant;
    grant.id = line.id;
    const Kopecks room = std::max<Kopecks>(0, line.total - line.minTotal);
    grant.discount = std::min(percentOf(line.total, rules.discount.of(line.sku)), room);
    return grant;
}

void roundChange(const Rules& rules, const Check& check, Grant& grant)
{
    if (rules.roundDownTo <= 0) {
        return;
    }
    Kopecks toPay = 0;
    for (size_t i = 0; i < check.lines.size(); ++i) {
        toPay = checkedSum(toPay, left(check.lines[i], grant.lines[i]));
    }
    const Kopecks change = toPay % rules.roundDownTo;
    if (change == 0 || change == toPay) {
        return;
    }
    LineGrant* dearest = nullptr;
    Kopecks most = 0;
    for (size_t i = 0; i < check.lines.size(); ++i) {
        const Kopecks rest = left(check.lines[i], grant.lines[i]);
        if (rest - change >= check.lines[i].minTotal && rest > most) {
            most = rest;
            dearest = &grant.lines[i];
        }
    }
    if (dearest != nullptr) {
        dearest->discountOnChange = change;
    }
}

} // namespace

Grant grantSale(const Rules& rules, const Check& check, Kopecks balance)
{
    Grant grant;
    for (const Line& line : check.lines) {
        grant.lines.push_back(discountLine(rules, line));
    }
    roundChange(rules, check, grant);
    for (size_t i = 0; i < check.lines.size(); ++i) {
        LineGrant& line = grant.lines[i];
        const Kopecks rest = left(check.lines[i], line);
        line.awardBonus = percentOf(rest, rules.earn.of(check.lines[i].sku));
        line.allowBonus = percentOf(rest, rules.spend.of(check.lines[i].sku));
        grant.awardBonus = checkedSum(grant.awardBonus, line.awardBonus);
        grant.allowBonus = checkedSum(grant.allowBonus, line.allowBonus);
    }
    grant.allowBonus = std::clamp<Kopecks>(balance, 0, grant.allowBonus);
    return grant;
}

} // namespace simulator
