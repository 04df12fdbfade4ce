// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/bookedreasons.h"

#include "simulator/page/grantreasons.h"
#include "simulator/rules/granting.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// An amount of a check that is the sum of its lines'.
BookedReason sumReason(const QString& what, Kopecks amount, const std::vector<BookedLine>& lines,
                       Kopecks BookedLine::*part)
{
    Kopecks sum = 0;
    for (const BookedLine& line : lines) {
        sum = checkedSum(sum, line.*part);
    }
    return {0, what, u"sum(lines.%1)"_s.arg(what), amount, amount == sum};
}

Check checkOf(const Booking& sale)
{
    Check check;
    check.total = sale.total;
    for (const BookedLine& line : sale.lines) {
        Line sold;
        sold.id = line.id;
        sold.sku = line.sku;
        sold.total = line.total;
        check.lines.push_back(sold);
    }
    return check;
}

void addLineReasons(const Rules& rules, const Booking& sale, const BookedLine& line,
                    const LineGrant& given, std::vector<BookedReason>& reasons)
{
    QString discountRule = ruleText(u"discount"_s, rules.discount, line.sku);
    if (given.discountOnChange > 0) {
        discountRule += u", discount.roundDownTo = %1"_s.arg(writeKopecks(rules.roundDownTo));
    }
    const Kopecks left = line.total - line.discount;
    const Kopecks afterDiscount = sale.total - sale.discount;
    const Kopecks award = roundedShare(left, rules.earn.of(line.sku), Percentage::whole);
    const Kopecks mostSpent = roundedShare(left, rules.spend.of(line.sku), Percentage::whole);
    const Kopecks earned =
        afterDiscount > 0 ? roundedShare(award, afterDiscount - sale.spent, afterDiscount) : 0;
    const QString earnRule = u"%1, x %2 / %3"_s.arg(ruleText(u"earn"_s, rules.earn, line.sku),
                                                    writeKopecks(afterDiscount - sale.spent),
                                                    writeKopecks(afterDiscount));
    reasons.push_back({line.id, u"discount"_s, discountRule, line.discount,
                       line.discount == given.discount + given.discountOnChange});
    reasons.push_back({line.id, u"spent"_s, ruleText(u"spend"_s, rules.spend, line.sku), line.spent,
                       line.spent <= mostSpent});
    reasons.push_back({line.id, u"earned"_s, earnRule, line.earned, line.earned == earned});
}

QString quantityText(Thousandths quantity)
{
    constexpr Thousandths unit = 1000;
    return u"%1.%2"_s.arg(quantity / unit).arg(quantity % unit, 3, 10, QChar(u'0'));
}

/// The line of a check with that id, or none.
const BookedLine* lineIn(const Booking& check, int id)
{
    const auto found = std::find_if(check.lines.begin(), check.lines.end(),
                                    [id](const BookedLine& line) { return line.id == id; });
    return found == check.lines.end() ? nullptr : &*found;
}

/// What earlier returns have taken off a line of the sale.
BookedLine returnedBefore(const std::vector<Booking>& returns, size_t i, int id)
{
    BookedLine before;
    for (size_t earlier = 0; earlier < i; ++earlier) {
        if (const BookedLine* line = lineIn(returns[earlier], id)) {
            before.quantity = checkedSum(before.quantity, line->quantity);
            before.total = checkedSum(before.total, line->total);
            before.givenBack = checkedSum(before.givenBack, line->givenBack);
            before.takenBack = checkedSum(before.takenBack, line->takenBack);
        }
    }
    return before;
}

} // namespace

std::vector<BookedReason> saleReasons(const Rules& rules, const Booking& sale)
{
    const Kopecks toPay = sale.total - sale.discount - sale.spent;
    std::vector<BookedReason> reasons{
        sumReason(u"total"_s, sale.total, sale.lines, &BookedLine::total),
        sumReason(u"discount"_s, sale.discount, sale.lines, &BookedLine::discount),
        {0, u"paid"_s, u"total - discount - spent"_s, sale.paid, sale.paid == toPay},
        sumReason(u"earned"_s, sale.earned, sale.lines, &BookedLine::earned),
        sumReason(u"spent"_s, sale.spent, sale.lines, &BookedLine::spent)};
    const Grant grant = grantSale(rules, checkOf(sale), 0);
    for (size_t i = 0; i < sale.lines.size(); ++i) {
        addLineReasons(rules, sale, sale.lines[i], grant.lines.at(i), reasons);
    }
    return reasons;
}

std::vector<BookedReason> returnReasons(const Booking& sale, const std::vector<Booking>& returns,
                                        size_t i)
{
    const Booking& check = returns.at(i);
    std::vector<BookedReason> reasons{
        sumReason(u"total"_s, check.total, check.lines, &BookedLine::total),
        sumReason(u"givenBack"_s, check.givenBack, check.lines, &BookedLine::givenBack),
        sumReason(u"takenBack"_s, check.takenBack, check.lines, &BookedLine::takenBack)};
    for (const BookedLine& line : check.lines) {
        const BookedLine* const sold = lineIn(sale, line.id);
        if (sold == nullptr || sold->quantity <= 0) {
            continue; // books that were changed from outside
        }
        const BookedLine before = returnedBefore(returns, i, line.id);
        const Thousandths soFar = checkedSum(before.quantity, line.quantity);
        const auto add = [&](const QString& what, const QString& source, Kopecks amount,
                             Kopecks booked, Kopecks earlier) {
            reasons.push_back({line.id, what,
                               u"sale.%1 %2 x %3 / %4 - %5"_s.arg(
                                   source, writeKopecks(booked), quantityText(soFar),
                                   quantityText(sold->quantity), writeKopecks(earlier)),
                               amount,
                               amount == roundedShare(booked, soFar, sold->quantity) - earlier});
        };
        add(u"total"_s, u"total"_s, line.total, sold->total, before.total);
        add(u"givenBack"_s, u"spent"_s, line.givenBack, sold->spent, before.givenBack);
        add(u"takenBack"_s, u"earned"_s, line.takenBack, sold->earned, before.takenBack);
    }
    return reasons;
}

} // namespace simulator
