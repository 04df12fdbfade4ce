// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/checkdata.h"

#include "client/loyaltysystemtype.h"
#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"
#include "host/xml/xmlutils.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

QString moneyText(int kopecks)
{
    return QString::number(kopecks / 100.0, 'f', 2);
}

int kopecksOf(int number)
{
    return 10'000 + number % 80'000;
}

void append(QDomDocument& document, QDomElement& parent, const QString& name, const QString& text)
{
    parent.appendChild(xmlutils::createTextElement(document, name, text));
}

QDomElement add(QDomDocument& document, QDomElement& parent, const QString& name)
{
    QDomElement child = document.createElement(name);
    parent.appendChild(child);
    return child;
}

void addLine(QDomDocument& document, QDomElement& items, const Line& line)
{
    QDomElement element = add(document, items, u"RawItem"_s);
    append(document, element, u"quantity"_s, line.quantity);
    append(document, element, u"id"_s, line.id);
    append(document, element, u"sku"_s, line.sku);
    append(document, element, u"price"_s, line.price);
    append(document, element, u"total"_s, line.total);
    append(document, element, u"minTotal"_s, line.minTotal);
    append(document, element, u"weight"_s, u"piece"_s);
    QDomElement outer = add(document, element, u"awards"_s);
    QDomElement awards = add(document, outer, u"RawItemAwards"_s);
    append(document, awards, u"discount"_s, QString::number(line.discount, 'f', 2));
    append(document, awards, u"discountOnChange"_s, QString::number(line.discountOnChange, 'f', 2));
    append(document, awards, u"awardBonus"_s, QString::number(line.bonus, 'f', 2));
    append(document, awards, u"allowBonusInCurrency"_s, QString::number(line.allowance, 'f', 2));
}

void addClient(QDomDocument& document, QDomElement& root)
{
    QDomElement outer = add(document, root, u"client"_s);
    QDomElement client = add(document, outer, u"RawCheckClient"_s);
    append(document, client, u"name"_s, u"Анна"_s);
    append(document, client, u"surname"_s, u"Орлова"_s);
    QDomElement accounts = add(document, client, u"account"_s);
    QDomElement account = add(document, accounts, u"RawCheckAccount"_s);
    append(document, account, u"balance"_s, u"250.50"_s);
    QDomElement awards = add(document, root, u"awards"_s);
    QDomElement sums = add(document, awards, u"RawCheckAwards"_s);
    append(document, sums, u"allowBonus"_s, u"60.00"_s);
    append(document, sums, u"awardBonus"_s, u"8.25"_s);
}

void addMessage(QDomDocument& document, QDomElement& informing, const QString& channel)
{
    QDomElement message = add(document, informing, u"RawCheckInforming"_s);
    append(document, message, u"communicationChannel"_s, channel);
    append(document, message, u"info"_s, u"Спасибо, ждём вас снова"_s);
}

QSharedPointer<DocumentImpactDetail> usedDetail(const QSharedPointer<DocumentCardRecord>& card,
                                                EDiscountType::type type, int position, double sum)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setCardRecord(card);
    detail->setDiscountType(type);
    detail->setPosition(position);
    detail->setDiscountSum(sum);
    return detail;
}

} // namespace

Line::Line(int number)
    : position(number), id(QString::number(number)), quantity(u"2.000"_s),
      sku(u"46%1"_s.arg(number, 11, 10, QLatin1Char('0'))),
      price(QString::number(kopecksOf(number) / 100.0, 'g', 6)),
      total(moneyText(2 * kopecksOf(number))), minTotal(moneyText(kopecksOf(number))),
      discount(1.5 + number % 7), discountOnChange(0.3), bonus(2.25 + number % 5), allowance(20)
{}

QSharedPointer<DocumentCardRecord> makeCard()
{
    return QSharedPointer<DocumentCardRecord>::create(
        QSharedPointer<Card>::create(u"7700000000017"_s), orva::loyaltySystemType, 9);
}

QSharedPointer<Document> makeSale(int lines, const QSharedPointer<DocumentCardRecord>& card)
{
    const auto document = QSharedPointer<Document>::create();
    document->setDocumentId(u"7d0c2f6e-0001"_s);
    document->setCheckNumber(117);
    document->setDateTime(QDateTime({2024, 3, 5}, {14, 20, 31}));
    document->setDocumentType(EDocumentType::Sale);
    document->addCardRecord(card);
    QList<QSharedPointer<GoodsItem>> goods;
    for (int number = 1; number <= lines; ++number) {
        const auto item = QSharedPointer<GoodsItem>::create();
        item->setPosnum(number);
        item->setCode(Line(number).sku);
        item->setQuantity(2);
        item->setPrice(kopecksOf(number) / 100.0);
        item->setMinPrice(kopecksOf(number) / 200.0);
        item->setSumb(2 * kopecksOf(number) / 100.0);
        goods.append(item);
    }
    document->setGoodsItems(goods);
    return document;
}

QByteArray makeAnswer(int lines)
{
    QDomDocument document;
    QDomElement root = document.createElement(u"RawCheck"_s);
    append(document, root, u"id"_s, u"7d0c2f6e-0001"_s);
    append(document, root, u"number"_s, u"117"_s);
    QDomElement items = add(document, root, u"items"_s);
    for (int number = 1; number <= lines; ++number) {
        addLine(document, items, Line(number));
    }
    append(document, root, u"cardNumber"_s, u"7700000000017"_s);
    addClient(document, root);
    QDomElement informing = add(document, root, u"informing"_s);
    addMessage(document, informing, u"pos"_s);
    addMessage(document, informing, u"check"_s);
    document.appendChild(root);
    return document.toByteArray(1);
}

QDomDocument parsedAnswer(int lines)
{
    QDomDocument document;
    if (!document.setContent(makeAnswer(lines))) {
        throw std::logic_error("the answer is not well-formed");
    }
    return document;
}

QDomDocument manyMessages(int messages)
{
    QDomDocument document;
    QDomElement root = document.createElement(u"RawCheck"_s);
    QDomElement informing = add(document, root, u"informing"_s);
    for (int number = 0; number < messages; ++number) {
        addMessage(document, informing, number % 2 == 0 ? u"pos"_s : u"check"_s);
    }
    document.appendChild(root);
    return document;
}

QList<QSharedPointer<DocumentImpact>>
makeUsedImpacts(int lines, int perLine, const QSharedPointer<DocumentCardRecord>& card)
{
    QList<QSharedPointer<DocumentImpact>> impacts;
    for (int number = 1; number <= lines; ++number) {
        impacts.append(QSharedPointer<DiscountImpact>::create(
            usedDetail(card, EDiscountType::LoyaltyDiscount, number, Line(number).discount)));
    }
    for (int number = 1; perLine > 1 && number <= lines; ++number) {
        impacts.append(QSharedPointer<BonusImpact>::create(
            usedDetail(card, EDiscountType::BonusPayment, number, 20)));
    }
    return impacts;
}

} // namespace bench
