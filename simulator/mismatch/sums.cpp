// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/mismatch/sums.h"

#include "simulator/documents/names.h"

#include <QHash>

#include <cmath>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

std::vector<Element> linesOf(const Element& request)
{
    return request.all({names::items, names::rawItem});
}

Kopecks money(const Element& element)
{
    return readKopecks(element.text()).value_or(0);
}

Thousandths quantityOf(const Element& line)
{
    const Element sold = line.child(names::quantity);
    return readThousandths((sold ? sold : line.child(names::returnedQuantity)).text()).value_or(0);
}

QString pathOf(size_t line, const QString& name)
{
    return u"%1/%2[%3]/%4"_s.arg(names::items, names::rawItem).arg(line + 1).arg(name);
}

/// What quantity and price of a line make. A price has six digits, which no kopeck hangs on here.
Kopecks worth(const Element& line)
{
    constexpr double thousand = 1000;
    constexpr double hundred = 100;
    return std::llround(line.child(names::price).text().toDouble() * hundred *
                        static_cast<double>(quantityOf(line)) / thousand);
}

Kopecks sumOf(const Element& line, std::initializer_list<QLatin1StringView> path)
{
    Kopecks sum = 0;
    for (const Element& amount : line.all(path)) {
        sum += money(amount);
    }
    return sum;
}

const QString usedPath = u"usedAwards/RawItemUsedAwards/"_s;

/// What is wrong with one line of a return; nothing when it is the share that it should be.
std::optional<Difference> wrongLine(const Element& line, size_t index, const SoldLine& source)
{
    const BookedLine& sold = source.sold;
    const Thousandths returned = source.returned.quantity + quantityOf(line);
    const Kopecks givenBack = sumOf(
        line, {names::returnedAwards, names::rawItemReturnedAwards, names::usedBonusInCurrency});
    const Kopecks total = money(line.child(names::total));
    const bool isTooMuch = returned > sold.quantity;
    const Kopecks totalDue =
        isTooMuch ? 0 : roundedShare(sold.total, returned, sold.quantity) - source.returned.total;
    const Kopecks pointsDue =
        isTooMuch ? 0
                  : roundedShare(sold.spent, returned, sold.quantity) - source.returned.givenBack;
    const bool isWorthIts = total == totalDue;
    const bool hasItsPoints = givenBack == pointsDue;
    // total and points that both belong to another quantity are right, and it is wrong
    if (isTooMuch || (!isWorthIts && !hasItsPoints)) {
        const Thousandths left = sold.quantity - source.returned.quantity;
        const Thousandths meant =
            sold.total == 0
                ? left
                : std::llround(static_cast<double>(total) * static_cast<double>(sold.quantity) /
                               static_cast<double>(sold.total));
        return Difference{pathOf(index, names::returnedQuantity),
                          line.child(names::returnedQuantity).text(),
                          u"%1, which its total and points are for, of %2 that are left"_s.arg(
                              QString::number(static_cast<double>(meant) / 1000, 'f', 3),
                              QString::number(static_cast<double>(left) / 1000, 'f', 3)),
                          false,
                          false,
                          {}};
    }
    if (!isWorthIts) {
        return moneyDifference(pathOf(index, names::total), total, totalDue);
    }
    if (!hasItsPoints) {
        return moneyDifference(
            pathOf(index, u"returnedAwards/RawItemReturnedAwards/usedBonusInCurrency"_s), givenBack,
            pointsDue);
    }
    return std::nullopt;
}

/// A line that the sale has not: its goods code, unless another line of the sale has that.
Difference otherGoods(size_t index, const QString& id, const QString& sku, const SoldLine* source,
                      const std::vector<SoldLine>& sold)
{
    for (const SoldLine& line : sold) {
        if (line.sold.sku == sku) {
            return {pathOf(index, names::id),
                    id.left(40),
                    QString::number(line.sold.id),
                    false,
                    false,
                    {}};
        }
    }
    return source == nullptr
               ? Difference{pathOf(index, names::id),
                            id.left(40),
                            u"a line of the sale"_s,
                            false,
                            false,
                            {}}
               : Difference{
                     pathOf(index, names::sku), sku.left(40), source->sold.sku, false, false, {}};
}

} // namespace

std::optional<Difference> wrongSum(const Element& request)
{
    const std::vector<Element> lines = linesOf(request);
    Kopecks sum = 0;
    for (const Element& line : lines) {
        sum += money(line.child(names::total));
    }
    const Kopecks total = money(request.child(names::total));
    if (sum == total) {
        return std::nullopt;
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        const Kopecks has = money(lines[i].child(names::total));
        if (has - worth(lines[i]) == sum - total) {
            return moneyDifference(pathOf(i, names::total), has, worth(lines[i]));
        }
    }
    return moneyDifference(names::total, total, sum);
}

std::optional<Difference> repeatedLine(const Element& request)
{
    const std::vector<Element> lines = linesOf(request);
    QHash<QString, size_t> positions;
    for (size_t i = 0; i < lines.size(); ++i) {
        const QString id = lines[i].child(names::id).text().trimmed();
        const auto before = positions.constFind(id);
        if (before == positions.cend()) {
            positions.insert(id, i);
            continue;
        }
        const bool isFirstWrong = id == QString::number(i + 1);
        return Difference{
            pathOf(isFirstWrong ? *before : i, names::id),
            id,
            u"another one than items/RawItem[%1] has"_s.arg((isFirstWrong ? i : *before) + 1),
            false,
            false,
            {}};
    }
    return std::nullopt;
}

std::optional<Difference> wrongPayment(const Element& confirmation,
                                       const std::vector<LineGrant>& granted)
{
    const std::vector<Element> lines = linesOf(confirmation);
    if (lines.size() != granted.size()) {
        return std::nullopt;
    }
    Kopecks due = 0;
    for (const Element& line : lines) {
        due +=
            money(line.child(names::total)) -
            sumOf(line, {names::usedAwards, names::rawItemUsedAwards, names::usedDiscount}) -
            sumOf(line, {names::usedAwards, names::rawItemUsedAwards, names::usedBonusInCurrency});
    }
    const Kopecks paid =
        sumOf(confirmation, {names::payments, names::rawCheckPayment, names::amount});
    for (size_t i = 0; i < lines.size(); ++i) {
        const Kopecks discount =
            sumOf(lines[i], {names::usedAwards, names::rawItemUsedAwards, names::usedDiscount});
        const Kopecks right = granted[i].discount + granted[i].discountOnChange;
        if (discount > right || (discount != right && right - discount == due - paid)) {
            return moneyDifference(pathOf(i, usedPath + names::usedDiscount), discount, right);
        }
        const Kopecks points = sumOf(
            lines[i], {names::usedAwards, names::rawItemUsedAwards, names::usedBonusInCurrency});
        if (points > granted[i].allowBonus) {
            // by the payment, if that tells, what it may be at most otherwise
            const Kopecks meant = points + due - paid;
            return moneyDifference(
                pathOf(i, usedPath + names::usedBonusInCurrency), points,
                meant >= 0 && meant <= granted[i].allowBonus ? meant : granted[i].allowBonus);
        }
    }
    if (due == paid) {
        return std::nullopt;
    }
    return moneyDifference(u"payments/RawCheckPayment/amount"_s, paid, due);
}

std::optional<Difference> wrongShare(const Element& request, const std::vector<SoldLine>& sold)
{
    QHash<int, const SoldLine*> byId;
    for (const SoldLine& line : sold) {
        byId.insert(line.sold.id, &line);
    }
    const std::vector<Element> lines = linesOf(request);
    for (size_t i = 0; i < lines.size(); ++i) {
        const QString id = lines[i].child(names::id).text();
        const SoldLine* const source = byId.value(id.toInt());
        const QString sku = lines[i].child(names::sku).text();
        if (source == nullptr || source->sold.sku != sku) {
            return otherGoods(i, id, sku, source, sold);
        }
        if (const std::optional<Difference> wrong = wrongLine(lines[i], i, *source)) {
            return wrong;
        }
    }
    return wrongSum(request);
}

} // namespace simulator
