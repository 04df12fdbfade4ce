// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/shopstory.h"

#include "tests/scenario/year/broughtback.h"
#include "tests/scenario/year/dice.h"
#include "tests/scenario/year/journal.h"
#include "tests/scenario/year/violation.h"
#include "till/checks/amount.h"

#include <QThread>

#include <algorithm>

using namespace Qt::StringLiterals;
using till::amount::moneyText;

namespace year {
namespace {

QString decimal(qint64 value, int digits)
{
    return QString::number(double(value) / (digits == 2 ? 100 : 1000), 'f', digits);
}

} // namespace

ShopStory::ShopStory(Dice& chance, Journal& lines, Tills& allTills, QStringList customers,
                     std::function<void(const till::Check&, int)> closed)
    : dice(chance), journal(lines), tills(allTills), cards(std::move(customers)),
      closedCheck(std::move(closed))
{}

ShopTill& ShopStory::anyTill()
{
    return *tills.at(size_t(dice.between(0, qint64(tills.size()) - 1)));
}

/// Another one.
ShopTill& ShopStory::tillBut(int notThis)
{
    const auto further = dice.between(1, qint64(tills.size()) - 1);
    return *tills.at(size_t(notThis - 1 + further) % tills.size());
}

void ShopStory::event()
{
    ++number;
    const qint64 way = dice.between(1, 100);
    if (way <= 25 && !sold.isEmpty()) {
        takeBack();
    } else if (way <= 28 && count.returns > 0) {
        bringTooMuch();
    } else if (way <= 40 && !suspended.isEmpty()) {
        resume();
    } else {
        sell(anyTill());
    }
}

void ShopStory::ending()
{
    while (!suspended.isEmpty()) {
        ++number;
        const Suspended waiting = suspended.takeFirst();
        takeUp(waiting.inStore ? tillBut(waiting.till) : tillOf(waiting.till), waiting, false);
    }
}

/// @return the file's name
QString ShopStory::writeBasket(ShopTill& till, qint64& goods)
{
    QString text = u"type = \"sale\"\n"_s;
    goods = 0;
    const qint64 lines = dice.between(1, 4);
    for (qint64 i = 1; i <= lines; ++i) {
        const qint64 code = dice.between(1000, 1059);
        const bool weighed = code % 5 == 0;
        const qint64 price = dice.chance(80) ? dice.between(5'00, 900'00) : dice.between(1, 5'00);
        const qint64 quantity = weighed ? dice.between(1, 3000) : dice.between(1, 4) * 1000;
        goods += till::amount::lineSum(price, quantity);
        text += u"[[line]]\ncode = \"%1\"\nname = \"Товар %1\"\nprice = %2\nquantity = %3\n"_s.arg(
            QString::number(code), decimal(price, 2), decimal(quantity, 3));
        text += weighed ? u"unit = \"kg\"\n"_s : QString();
    }
    till.write(u"sale.toml"_s, text);
    return u"sale.toml"_s;
}

void ShopStory::sell(ShopTill& till)
{
    Suspended check;
    check.till = till.number();
    till.order(u"open "_s + writeBasket(till, check.goods));
    if (dice.chance(90)) {
        check.card = dice.pick(cards);
        till.order(u"card "_s + check.card);
        till.order(u"request"_s);
        if (dice.chance(60)) {
            till.order(dice.chance(30) ? u"points all"_s
                                       : u"points "_s + decimal(dice.between(1, 300'00), 2));
        }
    }
    finish(till, check);
}

void ShopStory::resume()
{
    const Suspended waiting = suspended.takeAt(dice.between(0, suspended.size() - 1));
    takeUp(waiting.inStore ? tillBut(waiting.till) : tillOf(waiting.till), waiting, true);
}

/// A check that was left in the store is one till's; the others are told so.
void ShopStory::takeUp(ShopTill& till, const Suspended& waiting, bool mayWait)
{
    till.order(u"restore "_s + waiting.id);
    if (waiting.inStore) {
        ++count.takenUp;
        ShopTill& late = tillBut(till.number());
        if (ShopTill::isOk(late.tell(u"restore "_s + waiting.id))) {
            throw Violation(u"till %1 took up check %2, which till %3 has"_s.arg(
                QString::number(late.number()), waiting.id, QString::number(till.number())));
        }
        ++count.told;
    }
    if (dice.chance(30)) {
        till.order(u"points all"_s);
    }
    Suspended check = waiting;
    check.till = till.number();
    if (mayWait) {
        finish(till, check);
    } else {
        rememberSale(close(till), check);
    }
}

/// How a sale ends, most of the time by being closed.
void ShopStory::finish(ShopTill& till, Suspended check)
{
    const qint64 way = dice.between(1, 100);
    if (way <= 5) {
        till.order(u"abandon"_s);
        ++count.abandoned;
        write(till, u"abandons a sale of "_s + moneyText(check.goods));
    } else if (way <= 23 && !check.card.isEmpty()) {
        suspend(till, check);
    } else if (way <= 26) {
        dieClosing(till, check);
    } else {
        rememberSale(close(till), check);
    }
}

void ShopStory::suspend(ShopTill& till, Suspended check)
{
    const QString answer = till.order(u"suspend --store"_s);
    check.id = answer.section(u"Suspended: "_s, 1).section(u'\n', 0, 0);
    check.till = till.number();
    check.inStore = true;
    suspended.append(check);
    ++count.left;
    write(till, u"leaves %1 of card %2 in the store"_s.arg(check.id, check.card));
}

/// The till dies while it closes: the check is closed, or it is not, and then one that was taken up
/// is still suspended here.
void ShopStory::dieClosing(ShopTill& till, Suspended check)
{
    till.send(u"close"_s);
    QThread::msleep(static_cast<unsigned long>(dice.between(0, 40)));
    till.kill();
    till.start();
    ++count.kills;
    write(till, u"dies while it closes a sale of "_s + moneyText(check.goods));
    const QList<till::Check> closed = till.takeClosed();
    if (!closed.isEmpty()) {
        closedCheck(closed.first(), till.number());
        rememberSale(closed.first(), check);
    } else if (!check.id.isEmpty()) {
        check.inStore = false;
        suspended.append(check);
    }
}

/// On a machine that is busy with something else the store may not answer in time.
void ShopStory::noteStoreAway(const ShopTill& till, const QString& answer)
{
    if (answer.contains(u"The store "_s)) {
        write(till, u"is told: "_s + answer.simplified());
    }
}

till::Check ShopStory::close(ShopTill& till)
{
    noteStoreAway(till, till.order(u"close"_s));
    return readClosed(till);
}

/// What another till has just taken back of the sale may not be in the store's books yet: then the
/// cashier does what the till says.
till::Check ShopStory::closeReturn(ShopTill& till, const Sold& sale)
{
    constexpr int mostTries = 50;
    constexpr unsigned long betweenTries = 100;
    QString answer = till.tell(u"close"_s);
    for (int i = 0; i < mostTries && answer.contains(u"There is another return of this sale"_s);
         ++i) {
        ++count.again;
        till.order(u"abandon"_s);
        QThread::msleep(betweenTries);
        openReturn(till, sale);
        answer = till.tell(u"close"_s);
    }
    till.requireOk(u"close"_s, answer);
    noteStoreAway(till, answer);
    return readClosed(till);
}

till::Check ShopStory::readClosed(ShopTill& till)
{
    const QList<till::Check> closed = till.takeClosed();
    if (closed.size() != 1) {
        throw Violation(
            u"till %1 closed a check and keeps %2 more"_s.arg(till.number()).arg(closed.size()));
    }
    const till::Check& check = closed.first();
    closedCheck(check, till.number());
    write(till,
          u"closes %1 of card %2, a %3 of %4: earned %5, spent %6, given back %7, taken back %8"_s
              .arg(check.id(), check.cardNumber(), check.isReturn() ? u"return"_s : u"sale"_s,
                   moneyText(check.goodsKopecks()), moneyText(check.earnedKopecks()),
                   moneyText(check.spentKopecks()), moneyText(check.givenBackKopecks()),
                   moneyText(check.takenBackKopecks())));
    return check;
}

void ShopStory::rememberSale(const till::Check& sale, const Suspended& check)
{
    const bool isConfirmed = !check.card.isEmpty();
    if (sale.goodsKopecks() != check.goods || sale.cardNumber() != check.card ||
        sale.confirmed != isConfirmed || (!check.id.isEmpty() && sale.id() != check.id)) {
        throw Violation(u"check %1 was opened with goods of %2 for card %3 and closed with %4 "
                        "for card %5, confirmed: %6"_s
                            .arg(sale.id(), moneyText(check.goods), check.card,
                                 moneyText(sale.goodsKopecks()), sale.cardNumber())
                            .arg(sale.confirmed));
    }
    Sold one{sale.id(), check.till, check.card, {}, {}};
    for (const till::Line& line : sale.lines) {
        one.left.insert(line.position, line.thousandths);
        one.fractional.insert(line.position, line.fractional);
    }
    sold.append(one);
    ++count.sales;
}

void ShopStory::takeBack()
{
    const qsizetype which = dice.between(0, sold.size() - 1);
    const Sold sale = sold.at(which);
    ShopTill& till = tillForReturn(sale);
    const QMap<int, qint64> brought = writeReturn(till, sale);
    openReturn(till, sale);
    if (dice.chance(10)) {
        till.order(u"abandon"_s);
        ++count.abandoned;
        write(till, u"abandons a return of "_s + sale.id);
        return;
    }
    requireReturn(closeReturn(till, sale), sale, brought);
    ++count.returns;
    count.elsewhere += till.number() == sale.till ? 0 : 1;
    QMap<int, qint64>& left = sold[which].left;
    for (auto it = brought.cbegin(); it != brought.cend(); ++it) {
        if ((left[it.key()] -= *it) == 0) {
            left.remove(it.key());
        }
    }
    if (left.isEmpty()) {
        gone.append(sold.takeAt(which));
    }
}

ShopTill& ShopStory::tillForReturn(const Sold& sale)
{
    return dice.chance(80) ? tillBut(sale.till) : tillOf(sale.till);
}

/// A piece more than what is left of the sale's first line comes back: no till may take that.
void ShopStory::bringTooMuch()
{
    const Sold sale = dice.pick(gone.isEmpty() || dice.chance(50) ? sold + gone : gone);
    ShopTill& till = tillForReturn(sale);
    tillOf(sale.till).order(u"wait 60"_s);
    till.write(u"back.toml"_s,
               u"type = \"return\"\nsale = \"%1\"\n[[line]]\nposition = 1\nquantity = %2\n"_s.arg(
                   sale.id, decimal(sale.left.value(1) + 1000, 3)));
    if (ShopTill::isOk(till.tell(u"return back.toml"_s))) {
        throw Violation(
            u"till %1 takes back more of sale %2 than was left of it"_s.arg(till.number())
                .arg(sale.id));
    }
    ++count.tooMuch;
}

/// Some of what is left of the sale. @return position -> thousandths
QMap<int, qint64> ShopStory::writeReturn(ShopTill& till, const Sold& sale)
{
    const QMap<int, qint64> brought = broughtBack(dice, sale.left, sale.fractional);
    QString text = u"type = \"return\"\nsale = \"%1\"\n"_s.arg(sale.id);
    for (auto line = brought.cbegin(); line != brought.cend(); ++line) {
        text += u"[[line]]\nposition = %1\nquantity = %2\n"_s.arg(QString::number(line.key()),
                                                                  decimal(line.value(), 3));
    }
    till.write(u"back.toml"_s, text);
    return brought;
}

/// The sale's till may not have handed it over yet: then the customer comes once more.
void ShopStory::openReturn(ShopTill& till, const Sold& sale)
{
    const QString answer = till.tell(u"return back.toml"_s);
    if (!ShopTill::isOk(answer)) {
        tillOf(sale.till).order(u"wait 60"_s);
        till.order(u"return back.toml"_s);
    }
    noteStoreAway(till, answer);
}

/// What came back is what was brought. The loyalty system is not told what a forgotten customer
/// brings back; the points that the goods had stay on the check.
void ShopStory::requireReturn(const till::Check& closed, const Sold& sale,
                              const QMap<int, qint64>& brought)
{
    QMap<int, qint64> back;
    for (const till::Line& line : closed.lines) {
        back.insert(line.position, line.returnedThousandths);
    }
    const bool isForgotten = forgotten.contains(sale.card);
    count.nameless += isForgotten ? 1 : 0;
    const bool isConfirmed = !sale.card.isEmpty() && !isForgotten;
    const bool hasPoints = closed.givenBackKopecks() != 0 || closed.takenBackKopecks() != 0;
    if (closed.document->getSaleDocumentId() != sale.id || back != brought ||
        closed.confirmed != isConfirmed || (hasPoints && sale.card.isEmpty())) {
        throw Violation(
            u"check %1 takes back %2 lines of %3, brought were %4 of %5; confirmed: %6, "
            "points: %7"_s
                .arg(closed.id(), QString::number(back.size()),
                     closed.document->getSaleDocumentId(), QString::number(brought.size()), sale.id)
                .arg(closed.confirmed)
                .arg(hasPoints));
    }
}

QString ShopStory::customerToForget()
{
    constexpr int fewest = 10; // somebody must be left to come
    if (cards.size() <= fewest) {
        return {};
    }
    QStringList may;
    for (const Sold& sale : std::as_const(sold)) {
        const bool waits = std::any_of(suspended.cbegin(), suspended.cend(),
                                       [&](const Suspended& one) { return one.card == sale.card; });
        if (!sale.card.isEmpty() && !waits && cards.contains(sale.card)) {
            may.append(sale.card);
        }
    }
    return may.isEmpty() ? QString() : dice.pick(may);
}

void ShopStory::forget(const QString& card)
{
    cards.removeOne(card);
    forgotten.append(card);
    journal.write(u"%1 everybody forgets card %2"_s.arg(number, 6).arg(card));
}

void ShopStory::write(const ShopTill& till, const QString& what)
{
    journal.write(u"%1 till %2 %3"_s.arg(number, 6).arg(till.number()).arg(what));
}

} // namespace year
