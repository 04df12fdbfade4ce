// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/documentjson.h"

#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"
#include "host/document/money.h"
#include "till/recording/valuejson.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

using valuejson::ofNumber;
using valuejson::ofTime;
using valuejson::ofVariant;
using valuejson::toNumber;
using valuejson::toTime;
using valuejson::toVariant;
using CardRecords = QList<QSharedPointer<DocumentCardRecord>>;

QJsonObject ofItem(GoodsItem& item)
{
    return {{u"position"_s, item.getPosnum()},
            {u"code"_s, item.getCode()},
            {u"name"_s, item.getName()},
            {u"quantity"_s, ofNumber(item.getQuantity())},
            {u"quantityBack"_s, ofVariant(item.getQuantBack())},
            {u"price"_s, ofNumber(item.getPrice())},
            {u"minPrice"_s, ofNumber(item.getMinPrice())},
            {u"sum"_s, ofNumber(item.getSumb())},
            {u"bonusSum"_s, ofNumber(item.getBonusImpactSum())},
            {u"unit"_s, item.getTmcUnit()->getName()},
            {u"fractional"_s, item.getTmcUnit()->isFractional()}};
}

QSharedPointer<GoodsItem> toItem(const QJsonObject& object)
{
    const auto item = QSharedPointer<GoodsItem>::create();
    item->setPosnum(object.value(u"position"_s).toInt());
    item->setCode(object.value(u"code"_s).toString());
    item->setName(object.value(u"name"_s).toString());
    item->setQuantity(toNumber(object.value(u"quantity"_s)));
    item->setQuantBack(toVariant(object.value(u"quantityBack"_s)));
    item->setPrice(toNumber(object.value(u"price"_s)));
    item->setMinPrice(toNumber(object.value(u"minPrice"_s)));
    item->setSumb(toNumber(object.value(u"sum"_s)));
    item->setBonusImpactSum(toNumber(object.value(u"bonusSum"_s)));
    item->setTmcUnit(
        TmcUnit(object.value(u"unit"_s).toString(), object.value(u"fractional"_s).toBool()));
    return item;
}

QJsonValue cardNumberOf(const QSharedPointer<DocumentCardRecord>& record)
{
    return record.isNull() || record->getCard().isNull() ? QJsonValue()
                                                         : record->getCard()->getNumber();
}

QSharedPointer<DocumentCardRecord> cardOfNumber(const QJsonValue& number, const CardRecords& cards)
{
    const auto found = std::find_if(cards.cbegin(), cards.cend(), [&](const auto& card) {
        return !number.isNull() && cardNumberOf(card) == number;
    });
    return found == cards.cend() ? QSharedPointer<DocumentCardRecord>() : *found;
}

QSharedPointer<DocumentImpact> toImpact(const QJsonObject& object, const CardRecords& cards)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setCardRecord(cardOfNumber(object.value(u"card"_s), cards));
    detail->setCardIndex(toVariant(object.value(u"cardIndex"_s)));
    detail->setDateTime(toTime(object.value(u"time"_s).toString()));
    detail->setDiscountType(EDiscountType::type(object.value(u"type"_s).toInt()));
    detail->setDiscountMode(EDiscountMode::type(object.value(u"mode"_s).toInt()));
    detail->setDiscountName(object.value(u"name"_s).toString());
    detail->setDiscountObject(EDiscountObject::type(object.value(u"object"_s).toInt()));
    detail->setPosition(object.value(u"position"_s).toInt());
    detail->setDiscountRate(toVariant(object.value(u"rate"_s)));
    detail->setDiscountSum(toNumber(object.value(u"sum"_s)));
    detail->setImpactSource(EImpactSource::source(object.value(u"source"_s).toInt()));
    detail->setMinPriceIgnored(object.value(u"minPriceIgnored"_s).toBool());
    QSharedPointer<DocumentImpact> impact;
    if (object.value(u"bonus"_s).toBool()) {
        impact = QSharedPointer<BonusImpact>::create(detail);
    } else {
        impact = QSharedPointer<DiscountImpact>::create(detail);
    }
    const QJsonObject sums = object.value(u"positions"_s).toObject();
    for (auto it = sums.begin(); it != sums.end(); ++it) {
        impact->addDetailForPosition(it.key().toInt(), toNumber(it.value()));
    }
    return impact;
}

QMap<QString, QVariantMap> toPluginData(const QJsonObject& object)
{
    QMap<QString, QVariantMap> data;
    for (auto owner = object.begin(); owner != object.end(); ++owner) {
        const QJsonObject values = owner.value().toObject();
        for (auto it = values.begin(); it != values.end(); ++it) {
            data[owner.key()].insert(it.key(), toVariant(it.value()));
        }
    }
    return data;
}

} // namespace

QJsonObject documentjson::ofCard(const DocumentCardRecord& record)
{
    QJsonObject object{{u"systemType"_s, record.getLoyaltySystemType()},
                       {u"codeInternal"_s, record.getCodeInternal()},
                       {u"pointsForSpend"_s, ofNumber(record.getPointsForSpend())},
                       {u"pointsForEarn"_s, ofVariant(record.getPointsForEarn())},
                       {u"balance"_s, ofVariant(record.getBonusBalance())}};
    if (const auto card = record.getCard(); !card.isNull()) {
        object.insert(u"number"_s, card->getNumber());
        if (const auto client = card->getClient(); !client.isNull()) {
            object.insert(u"client"_s, client->getName());
        }
    }
    return object;
}

namespace {

/// Null where the record has no card.
QSharedPointer<Card> cardIn(const QJsonObject& object)
{
    if (!object.contains(u"number"_s)) {
        return {};
    }
    auto card = QSharedPointer<Card>::create(object.value(u"number"_s).toString());
    if (object.contains(u"client"_s)) {
        const auto client = QSharedPointer<Client>::create();
        client->setName(object.value(u"client"_s).toString());
        card->setClient(client);
    }
    return card;
}

} // namespace

QSharedPointer<DocumentCardRecord> documentjson::toCard(const QJsonObject& object)
{
    const auto record = QSharedPointer<DocumentCardRecord>::create(
        cardIn(object), object.value(u"systemType"_s).toInt(),
        object.value(u"codeInternal"_s).toInt());
    record->setPointsForSpend(toNumber(object.value(u"pointsForSpend"_s)));
    record->setPointsForEarn(toVariant(object.value(u"pointsForEarn"_s)));
    record->setBonusBalance(toVariant(object.value(u"balance"_s)));
    return record;
}

QJsonObject documentjson::ofImpact(const DocumentImpact& impact)
{
    const auto totals = impact.getTotals();
    QJsonObject sums;
    const QMap<int, double> positionSums = impact.getPositionSums();
    for (auto it = positionSums.cbegin(); it != positionSums.cend(); ++it) {
        sums.insert(QString::number(it.key()), ofNumber(it.value()));
    }
    return {{u"bonus"_s, dynamic_cast<const BonusImpact*>(&impact) != nullptr},
            {u"card"_s, cardNumberOf(totals->getCardRecord())},
            {u"cardIndex"_s, ofVariant(totals->getCardIndex())},
            {u"time"_s, ofTime(totals->getDateTime())},
            {u"type"_s, int(totals->getDiscountType())},
            {u"mode"_s, int(totals->getDiscountMode())},
            {u"name"_s, totals->getDiscountName()},
            {u"object"_s, int(totals->getDiscountObject())},
            {u"position"_s, totals->getPosition()},
            {u"rate"_s, ofVariant(totals->getDiscountRate())},
            {u"sum"_s, ofNumber(totals->getDiscountSum())},
            {u"source"_s, int(totals->getImpactSource())},
            {u"minPriceIgnored"_s, totals->isMinPriceIgnored()},
            {u"positions"_s, sums}};
}

QJsonObject documentjson::ofBonusRecord(const DocumentBonusRecord& record)
{
    return {{u"card"_s, record.cardNumber},
            {u"position"_s, ofVariant(record.position)},
            {u"amount"_s, ofNumber(record.bonusAmount)},
            {u"valutCode"_s, record.valutCode},
            {u"time"_s, ofTime(record.dateTime)},
            {u"session"_s, record.sessionContext},
            {u"accrual"_s, record.accrual}};
}

QJsonObject documentjson::of(const Document& document)
{
    const CardRecords cards = document.getCardRecords();
    QJsonArray items;
    const auto goods = document.getGoodsItems();
    for (const auto& item : goods) {
        items.append(ofItem(*item));
    }
    QJsonArray cardArray;
    for (const auto& card : cards) {
        cardArray.append(ofCard(*card));
    }
    QJsonArray impactArray;
    const auto impacts = document.getImpacts();
    for (const auto& impact : impacts) {
        impactArray.append(ofImpact(*impact));
    }
    return {{u"id"_s, document.getDocumentId()},
            {u"number"_s, document.getCheckNumber()},
            {u"type"_s, document.getDocumentType()},
            {u"time"_s, ofTime(document.getDateTime())},
            {u"sale"_s, document.getSaleDocumentId()},
            {u"payment"_s, ofNumber(document.getPaymentSum())},
            {u"goods"_s, items},
            {u"cards"_s, cardArray},
            {u"impacts"_s, impactArray}};
}

QJsonObject documentjson::ofPluginData(const QMap<QString, QVariantMap>& owners)
{
    QJsonObject data;
    for (auto owner = owners.cbegin(); owner != owners.cend(); ++owner) {
        data.insert(owner.key(), ofVariant(owner.value()).toObject().value(u"map"_s));
    }
    return data;
}

QSharedPointer<Document> documentjson::toDocument(const QJsonObject& object)
{
    const auto document = QSharedPointer<Document>::create();
    document->setDocumentId(object.value(u"id"_s).toString());
    document->setCheckNumber(object.value(u"number"_s).toInt());
    document->setDocumentType(object.value(u"type"_s).toInt());
    document->setDateTime(toTime(object.value(u"time"_s).toString()));
    document->setSaleDocumentId(object.value(u"sale"_s).toString());
    document->setPaymentKopecks(money::toKopecks(toNumber(object.value(u"payment"_s))).value_or(0));
    QList<QSharedPointer<GoodsItem>> goods;
    const QJsonArray items = object.value(u"goods"_s).toArray();
    for (const auto& item : items) {
        goods.append(toItem(item.toObject()));
    }
    document->setGoodsItems(goods);
    const QJsonArray cards = object.value(u"cards"_s).toArray();
    for (const auto& card : cards) {
        document->addCardRecord(toCard(card.toObject()));
    }
    const QJsonArray impacts = object.value(u"impacts"_s).toArray();
    for (const auto& impact : impacts) {
        document->addImpact(toImpact(impact.toObject(), document->getCardRecords()));
    }
    document->setPluginData(toPluginData(object.value(u"pluginData"_s).toObject()));
    return document;
}

} // namespace till
