// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/trade.h"

#include "tests/scenario/year/broughtback.h"
#include "tests/scenario/year/dice.h"
#include "tests/scenario/year/journal.h"
#include "tests/scenario/year/scene.h"
#include "tests/scenario/year/tillbox.h"
#include "tests/scenario/year/violation.h"
#include "tests/support/books.h"
#include "till/checks/amount.h"
#include "till/failure.h"

using namespace Qt::StringLiterals;
using till::Check;
using till::LoyaltyState;
using till::PointsChoice;
using till::amount::moneyText;

namespace year {

bool Trade::hasSuspended(const TillBox& till) const
{
    return !suspended.value(till.name()).isEmpty();
}

bool Trade::hasReturnable(const TillBox& till) const
{
    return !sold.value(till.name()).isEmpty();
}

QString Trade::sell(TillBox& till)
{
    Dice& dice = scene.dice;
    till::CheckFile file;
    file.lines = basket();
    till.desk().openSale(file);
    if (dice.chance(90)) {
        presentCard(till);
    }
    if (dice.chance(15)) {
        changeLine(till);
        if (dice.chance(50)) {
            payWithPoints(till);
        }
    }
    if (dice.chance(30)) {
        till.desk().tender(till.desk().current().goodsKopecks() + dice.between(0, 1000'00));
    }
    return finish(till, false);
}

/// Some goods, each at most once.
QList<till::Line> Trade::basket()
{
    Dice& dice = scene.dice;
    QList<till::Line> lines;
    const qint64 wanted = dice.between(1, 6);
    for (int position = 1; position <= wanted; ++position) {
        till::Line line = dice.pick(scene.goods);
        line.position = position;
        line.thousandths = line.fractional ? dice.between(1, 3000) : dice.between(1, 4) * 1000;
        line.sumKopecks = till::amount::lineSum(line.priceKopecks, line.thousandths);
        lines.append(line);
    }
    return lines;
}

void Trade::presentCard(TillBox& till)
{
    const bool known = scene.dice.chance(97);
    till::CashDesk& desk = till.desk();
    if (!desk.presentCard(known ? scene.dice.pick(scene.cards) : u"4000000000000"_s)) {
        return;
    }
    if (scene.dice.chance(70)) {
        desk.request();
    }
    if (scene.dice.chance(60)) {
        payWithPoints(till);
    }
}

void Trade::payWithPoints(TillBox& till)
{
    till::CashDesk& desk = till.desk();
    const LoyaltyState state = desk.current().loyalty;
    if (desk.current().isReturn() ||
        (state != LoyaltyState::Ready && state != LoyaltyState::Unasked)) {
        return;
    }
    switch (scene.dice.between(1, 4)) {
    case 1:
        desk.choosePoints({});
        break;
    case 2:
        desk.choosePoints(PointsChoice::all());
        break;
    default:
        desk.choosePoints(PointsChoice::sum(scene.dice.between(1, 300'00)));
    }
}

void Trade::changeLine(TillBox& till)
{
    till::CashDesk& desk = till.desk();
    const till::Line line = scene.dice.pick(desk.current().lines);
    if (scene.dice.chance(50)) {
        desk.changeQuantity(line.position, line.thousandths + 1000);
    } else {
        desk.changePrice(line.position, line.priceKopecks + scene.dice.between(1, 50'00));
    }
}

QString Trade::resume(TillBox& till)
{
    QStringList& kept = suspended[till.name()];
    const QString id = kept.takeAt(scene.dice.between(0, kept.size() - 1));
    till.desk().restore(id);
    ++count.restored;
    if (!till.desk().current().isReturn() && scene.dice.chance(25)) {
        changeLine(till);
    }
    if (scene.dice.chance(25)) {
        payWithPoints(till);
    }
    return u"restores and "_s + finish(till, true);
}

QString Trade::takeBack(TillBox& till)
{
    constexpr qint64 lately = 4;
    const QList<Sold>& sales = sold[till.name()];
    const qint64 oldest = scene.dice.chance(50) ? std::max<qint64>(0, sales.size() - lately) : 0;
    till.desk().openReturn(returnOf(sales.at(scene.dice.between(oldest, sales.size() - 1))));
    if (!till.desk().current().cardNumber().isEmpty() && scene.dice.chance(90)) {
        till.desk().request();
    }
    return finish(till, false);
}

till::CheckFile Trade::returnOf(const Sold& sale)
{
    till::CheckFile file;
    file.type = till::CheckFile::Type::Return;
    file.sale = sale.id;
    const QMap<int, qint64> brought = broughtBack(scene.dice, sale.left, sale.fractional);
    for (auto piece = brought.cbegin(); piece != brought.cend(); ++piece) {
        till::Line line;
        line.position = piece.key();
        line.returnedThousandths = piece.value();
        file.lines.append(line);
    }
    return file;
}

/// How a check ends, most of the time by being closed.
QString Trade::finish(TillBox& till, bool wasSuspended)
{
    const qint64 way = scene.dice.between(1, 100);
    if (way <= 5) {
        return abandon(till);
    }
    if (way <= 9) {
        return interrupt(till, wasSuspended);
    }
    if (way <= 18 && till.desk().current().loyalty == LoyaltyState::Ready) {
        return suspend(till);
    }
    return close(till);
}

QString Trade::abandon(TillBox& till)
{
    const QString what = describe(till.desk().current());
    till.desk().abandon();
    ++count.abandoned;
    return u"abandons "_s + what + notices(till);
}

QString Trade::suspend(TillBox& till)
{
    const Check check = till.desk().current();
    QString what = u"suspends "_s + describe(check) + notices(till);
    suspended[till.name()].append(till.desk().suspend());
    ++count.suspended;
    if (check.isReturn() && scene.dice.chance(40)) {
        what += u"; meanwhile "_s + overtake(till, check.document->getSaleDocumentId());
    }
    return what;
}

/// Another return of the sale, before the suspended one.
QString Trade::overtake(TillBox& till, const QString& sale)
{
    for (const Sold& one : std::as_const(sold[till.name()])) {
        if (one.id == sale) {
            till.desk().openReturn(returnOf(one));
            return close(till);
        }
    }
    return u"nothing is left of the sale"_s;
}

/// The till's program ends in the middle of a check and starts again.
QString Trade::interrupt(TillBox& till, bool wasSuspended)
{
    const QString id = till.desk().current().id();
    const QString what = describe(till.desk().current());
    till.stop();
    till.start();
    ++count.interrupted;
    if (wasSuspended) {
        suspended[till.name()].append(id);
    }
    return u"restarts with open "_s + what;
}

QString Trade::close(TillBox& till)
{
    till::CashDesk& desk = till.desk();
    const Check before = desk.current();
    if (before.tenderedKopecks && *before.tenderedKopecks < before.goodsKopecks()) {
        desk.tender(before.goodsKopecks());
    }
    try {
        const Check closed = desk.close();
        if (!scene.books.take(closed, till.name())) {
            throw Violation(u"check %1 was closed twice"_s.arg(closed.id()));
        }
        remember(closed, till.name());
        return u"closes "_s + describe(closed) + notices(till);
    } catch (const till::Failure& failure) {
        if (!before.isReturn()) {
            throw;
        }
        ++count.refused;
        return u"may not close (%1) and "_s.arg(failure.text()) + abandon(till);
    }
}

void Trade::remember(const Check& closed, int till)
{
    constexpr qsizetype remembered = 600; // longer than delivered messages are kept
    count.unconfirmed += closed.confirmed ? 0 : 1;
    QList<Sold>& sales = sold[till];
    if (!closed.isReturn()) {
        ++count.sales;
        Sold sale{closed.id(), {}, {}};
        for (const till::Line& line : closed.lines) {
            sale.left.insert(line.position, line.thousandths);
            sale.fractional.insert(line.position, line.fractional);
        }
        sales.append(sale);
        if (sales.size() > remembered) {
            sales.removeFirst();
        }
        return;
    }
    ++count.returns;
    const QString saleId = closed.document->getSaleDocumentId();
    for (Sold& sale : sales) {
        for (const till::Line& line : closed.lines) {
            if (sale.id == saleId && (sale.left[line.position] -= line.returnedThousandths) == 0) {
                sale.left.remove(line.position);
            }
        }
    }
    sales.removeIf([](const Sold& sale) { return sale.left.isEmpty(); });
}

QString Trade::describe(const Check& check) const
{
    const QString card = check.cardNumber().right(4);
    const QString name = scene.journal.nameOf(check.id());
    if (check.isReturn()) {
        return u"%1, a return of %2, card %3, goods %4, given back %5, taken back %6, %7"_s.arg(
            name, scene.journal.nameOf(check.document->getSaleDocumentId()),
            card.isEmpty() ? u"none"_s : card, moneyText(check.goodsKopecks()),
            moneyText(check.givenBackKopecks()), moneyText(check.takenBackKopecks()),
            check.confirmed ? u"confirmed"_s : u"not confirmed"_s);
    }
    return u"%1, card %2, goods %3, discount %4, points %5, earns %6, %7"_s.arg(
        name, card.isEmpty() ? u"none"_s : card, moneyText(check.goodsKopecks()),
        moneyText(check.discountKopecks()), moneyText(check.spentKopecks()),
        moneyText(check.earnedKopecks()), check.confirmed ? u"confirmed"_s : u"not confirmed"_s);
}

QString Trade::notices(TillBox& till) const
{
    const QStringList all = till.desk().takeNotices();
    return all.isEmpty() ? QString() : u"; "_s + all.join(u"; "_s);
}

} // namespace year
