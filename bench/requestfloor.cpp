// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/requestfloor.h"

#include "host/document/client.h"
#include "host/document/discountimpact.h"
#include "host/services/currenttime.h"
#include "host/services/session.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

QDateTime readClock()
{
    return MockFactory<CurrentTime>::create()->currentDateTime();
}

void append(QDomDocument& document, QDomElement& parent, const QString& name, const QString& text)
{
    QDomElement element = document.createElement(name);
    element.appendChild(document.createTextNode(text));
    parent.appendChild(element);
}

QSharedPointer<DocumentImpact> makeDiscount(const QSharedPointer<DocumentCardRecord>& card,
                                            const QString& name, int position, double sum)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setCardRecord(card);
    detail->setDateTime(readClock());
    detail->setDiscountType(EDiscountType::LoyaltyDiscount);
    detail->setDiscountMode(EDiscountMode::Sum);
    detail->setDiscountName(name);
    detail->setDiscountObject(EDiscountObject::Position);
    detail->setPosition(position);
    detail->setDiscountSum(sum);
    detail->setImpactSource(EImpactSource::LoyaltySystem);
    detail->setMinPriceIgnored(true);
    return QSharedPointer<DiscountImpact>::create(detail);
}

DocumentBonusRecord makeRecord(const DocumentCardRecord& card, int position, double bonus)
{
    DocumentBonusRecord record;
    record.bonusAmount = bonus;
    record.cardNumber = card.getCard()->getNumber();
    record.dateTime = readClock();
    record.sessionContext =
        Singleton<Session>::instance->getSessionContext()->getContextValue().toString();
    record.valutCode = 1200;
    record.position = QVariant(position);
    record.accrual = true;
    return record;
}

QVariantMap toMap(const DocumentBonusRecord& record)
{
    QVariantMap map;
    map.insert(u"cardNumber"_s, record.cardNumber);
    map.insert(u"position"_s, record.position);
    map.insert(u"bonusAmount"_s, record.bonusAmount);
    map.insert(u"valutCode"_s, record.valutCode);
    map.insert(u"dateTime"_s, record.dateTime);
    map.insert(u"sessionContext"_s, record.sessionContext);
    map.insert(u"accrual"_s, record.accrual);
    return map;
}

} // namespace

RequestFloor::RequestFloor(int lineCount)
    : dateText(u"2024-03-05 14:20:31"_s), answer(makeAnswer(lineCount)), card(makeCard())
{
    for (int number = 1; number <= lineCount; ++number) {
        lines.append(Line(number));
    }
    document = makeSale(lineCount, card);
    sumText = QString::number(document->getCheckSum(), 'f', 2);
}

RequestFloor::~RequestFloor() = default;

void RequestFloor::run()
{
    buildRequest();
    readAnswer();
    makeObjects();
    writeState();
}

void RequestFloor::buildRequest()
{
    QDomDocument request;
    QDomElement check = request.createElement(u"RawCheck"_s);
    append(request, check, u"id"_s, u"7d0c2f6e-0001"_s);
    append(request, check, u"number"_s, u"117"_s);
    append(request, check, u"pos"_s, u"3"_s);
    append(request, check, u"date"_s, dateText);
    append(request, check, u"chType"_s, u"1"_s);
    append(request, check, u"merchantId"_s, u"1042"_s);
    append(request, check, u"total"_s, sumText);
    QDomElement items = request.createElement(u"items"_s);
    for (const Line& line : std::as_const(lines)) {
        QDomElement item = request.createElement(u"RawItem"_s);
        append(request, item, u"quantity"_s, line.quantity);
        append(request, item, u"id"_s, line.id);
        append(request, item, u"sku"_s, line.sku);
        append(request, item, u"price"_s, line.price);
        append(request, item, u"total"_s, line.total);
        append(request, item, u"minTotal"_s, line.minTotal);
        append(request, item, u"weight"_s, u"piece"_s);
        items.appendChild(item);
    }
    check.appendChild(items);
    append(request, check, u"cardNumber"_s, u"7700000000017"_s);
    request.appendChild(check);
    posted = request.toByteArray(1);
}

void RequestFloor::readAnswer()
{
    if (!lastResponse.setContent(answer)) {
        throw std::logic_error("the answer is not well-formed");
    }
}

void RequestFloor::makeObjects()
{
    const auto client = QSharedPointer<Client>::create();
    client->setName(u"Анна Орлова"_s);
    card->getCard()->setClient(client);
    card->setBonusBalance(QVariant(250.5));
    card->setPointsForSpend(60);
    card->setPointsForEarn(QVariant(8.25));
    QList<QSharedPointer<DocumentImpact>> made;
    QList<DocumentBonusRecord> records;
    for (const Line& line : std::as_const(lines)) {
        made.append(makeDiscount(card, u"Скидка Orva"_s, line.position, line.discount));
        made.append(
            makeDiscount(card, u"Скидка на мелочь Orva"_s, line.position, line.discountOnChange));
        records.append(makeRecord(*card, line.position, line.bonus));
    }
    discounts = made;
    bonusRecords = records;
    messages = {u"Спасибо, ждём вас снова"_s, u"Спасибо, ждём вас снова"_s};
}

void RequestFloor::writeState()
{
    document->setPluginValue(u"Orva"_s, u"lastResponse"_s, lastResponse.toString(1));
    QVariantList records;
    for (const DocumentBonusRecord& record : std::as_const(bonusRecords)) {
        records.append(QVariant(toMap(record)));
    }
    document->setPluginValue(u"Orva"_s, u"bonusRecords"_s, records);
}

} // namespace bench
