// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/checkview.h"

#include "console/printable.h"
#include "host/document/money.h"
#include "till/checks/amount.h"
#include "till/checks/cardnumber.h"
#include "till/desk/cashdesk.h"
#include "till/screen/table.h"
#include "till/screen/timetext.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

namespace printable = console::printable;

using amount::moneyText;
using Align = Table::Align;

QString units(const Line& line)
{
    return line.fractional ? Text::tr("kg") : Text::tr("pcs");
}

QString saleLines(const Check& check, int width)
{
    Table table({{Text::tr("No"), Align::Right},
                 {Text::tr("Goods"), Align::Left, Table::Narrow::Above},
                 {Text::tr("Quantity"), Align::Right},
                 {QString()},
                 {Text::tr("Price"), Align::Right},
                 {Text::tr("Sum"), Align::Right},
                 {Text::tr("Discount"), Align::Right},
                 {Text::tr("Points"), Align::Right},
                 {Text::tr("To pay"), Align::Right},
                 {Text::tr("Earns"), Align::Right}});
    for (const Line& line : check.lines) {
        table.addRow({QString::number(line.position), line.name,
                      amount::quantityText(line.thousandths, line.fractional), units(line),
                      moneyText(line.priceKopecks), moneyText(line.sumKopecks),
                      moneyText(line.discountKopecks), moneyText(line.spentKopecks),
                      moneyText(line.sumKopecks - line.discountKopecks - line.spentKopecks),
                      moneyText(line.earnedKopecks)});
    }
    table.addRow({QString(), Text::tr("Total"), QString(), QString(), QString(),
                  moneyText(check.goodsKopecks()), moneyText(check.discountKopecks()),
                  moneyText(check.spentKopecks()), moneyText(check.moneyKopecks()),
                  moneyText(check.earnedKopecks())});
    return table.text(width);
}

QString returnLines(const Check& check, int width)
{
    Table table({{Text::tr("No"), Align::Right},
                 {Text::tr("Goods"), Align::Left, Table::Narrow::Above},
                 {Text::tr("Returned"), Align::Right},
                 {QString()},
                 {Text::tr("Of"), Align::Right},
                 {Text::tr("Sum"), Align::Right},
                 {Text::tr("Discount"), Align::Right},
                 {Text::tr("Points back"), Align::Right},
                 {Text::tr("Money back"), Align::Right},
                 {Text::tr("Earned less"), Align::Right}});
    for (const Line& line : check.lines) {
        table.addRow({QString::number(line.position), line.name,
                      amount::quantityText(line.returnedThousandths, line.fractional), units(line),
                      amount::quantityText(line.thousandths, line.fractional),
                      moneyText(line.sumKopecks), moneyText(line.discountKopecks),
                      moneyText(line.givenBackKopecks),
                      moneyText(line.sumKopecks - line.discountKopecks - line.givenBackKopecks),
                      moneyText(line.takenBackKopecks)});
    }
    table.addRow({QString(), Text::tr("Total"), QString(), QString(), QString(),
                  moneyText(check.goodsKopecks()), moneyText(check.discountKopecks()),
                  moneyText(check.givenBackKopecks()), moneyText(check.moneyKopecks()),
                  moneyText(check.takenBackKopecks())});
    return table.text(width);
}

QString heading(const Check& check)
{
    const QString kind = check.isReturn() ? Text::tr("Return") : Text::tr("Sale");
    QString text =
        Text::tr("%1 No %2 of %3, check %4\n")
            .arg(kind)
            .arg(check.number())
            .arg(timetext::toTheSecond(check.document->getDateTime()), printable::line(check.id()));
    if (check.isReturn()) {
        text += Text::tr("Of sale: %1\n").arg(printable::line(check.document->getSaleDocumentId()));
    }
    return text;
}

/// Owner and balance, as far as the loyalty system has told them.
QString cardText(const Check& check)
{
    const auto record = check.cardRecord();
    if (record.isNull()) {
        return {};
    }
    QString text =
        Text::tr("Card: %1").arg(printable::line(checkview::shortCard(check.cardNumber())));
    const auto client = record->getCard()->getClient();
    const QString owner =
        client.isNull() ? QString() : printable::line(client->getName()).simplified();
    if (!owner.isEmpty()) {
        text += u", "_s + owner;
    }
    const auto balance = record->getBonusBalance().isNull()
                             ? std::nullopt
                             : money::toKopecks(record->getBonusBalance().toDouble());
    if (balance) {
        text += Text::tr(", balance before this check %1").arg(moneyText(*balance));
    }
    return text + u'\n';
}

QString messages(const QString& pattern, const QStringList& texts)
{
    QString result;
    for (const QString& text : texts) {
        result += pattern.arg(printable::line(text)) + u'\n';
    }
    return result;
}

QString slipMessages(const QStringList& texts, checkview::Messages form, int width)
{
    const QString indent = u"  "_s;
    QString result;
    for (const QString& text : texts) {
        const QStringList rows = form == checkview::Messages::Wrapped
                                     ? printable::wrapped(text, width - indent.size())
                                     : QStringList{printable::line(text)};
        for (const QString& row : rows) {
            result += (row.isEmpty() ? QString() : indent + row) + u'\n';
        }
    }
    return result;
}

QString pointsText(const Check& check)
{
    if (check.isReturn()) {
        return Text::tr("Points given back: %1, taken back: %2\n")
            .arg(moneyText(check.givenBackKopecks()), moneyText(check.takenBackKopecks()));
    }
    const QString system = check.systemEarnKopecks ? moneyText(*check.systemEarnKopecks)
                                                   : Text::tr("no usable number");
    return Text::tr("Points spent: %1, earned: %2 (the loyalty system counts %3)\n")
        .arg(moneyText(check.spentKopecks()), moneyText(check.earnedKopecks()), system);
}

QString withoutLoyalty(const Check& check)
{
    return Text::tr("Without the loyalty system: %1\n").arg(printable::line(check.refusal));
}

QString paid(const Check& check)
{
    if (check.isReturn()) {
        return Text::tr("Money back: %1\n").arg(moneyText(check.moneyKopecks()));
    }
    QString text = Text::tr("Paid: %1").arg(moneyText(check.moneyKopecks()));
    if (check.tenderedKopecks) {
        text +=
            Text::tr(", tendered %1, change %2")
                .arg(moneyText(*check.tenderedKopecks), moneyText(CashDesk::changeKopecks(check)));
    }
    return text + u'\n';
}

} // namespace

QString checkview::shortCard(const QString& number)
{
    return cardnumber::shortened(number);
}

QString checkview::forCashier(const Check& check, qint64 availableKopecks, int width)
{
    const QString goods = check.isReturn() ? returnLines(check, width) : saleLines(check, width);
    QString text;
    switch (check.loyalty) {
    case LoyaltyState::NoCard:
        break;
    case LoyaltyState::Unasked:
        text += check.isReturn() ? QString()
                                 : Text::tr("The loyalty system has not been asked about the check "
                                            "as it stands.\n");
        break;
    case LoyaltyState::Ready:
        text += pointsText(check);
        if (!check.isReturn()) {
            text += Text::tr("Points that may be spent: %1\n").arg(moneyText(availableKopecks));
        }
        break;
    case LoyaltyState::Refused:
        text += withoutLoyalty(check);
        if (!check.serversWords.isEmpty()) {
            text += Text::tr("The server says: %1").arg(check.serversWords) + u'\n';
        }
        break;
    }
    text += messages(Text::tr("To the cashier: %1"), check.cashierMessages);
    text += messages(Text::tr("To the customer: %1"), check.clientMessages);
    if (check.tenderedKopecks) {
        text += Text::tr("Tendered: %1\n").arg(moneyText(*check.tenderedKopecks));
    }
    return printable::folded(heading(check) + cardText(check), width) + goods +
           printable::folded(text, width);
}

QString checkview::slip(const Check& check, Messages form, int width)
{
    const QString goods = check.isReturn() ? returnLines(check, width) : saleLines(check, width);
    QString points;
    if (check.confirmed) {
        points = pointsText(check);
    } else if (check.loyalty == LoyaltyState::Refused) {
        points = withoutLoyalty(check);
    }
    return printable::folded(heading(check) + cardText(check), width) + goods +
           printable::folded(points, width) + slipMessages(check.clientMessages, form, width) +
           printable::folded(paid(check), width);
}

} // namespace till
