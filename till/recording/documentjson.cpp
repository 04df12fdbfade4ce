// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/documentjson.h"

#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"
#include "till/checks/documentfields.h"
#include "till/checks/linefields.h"
#include "till/recording/fieldjson.h"
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
    fieldjson::read(object, *detail, documentfields::ofImpactDetail());
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
    QJsonObject object = fieldjson::write(record, documentfields::ofCardRecord());
    object.insert(u"systemType"_s, record.getLoyaltySystemType());
    object.insert(u"codeInternal"_s, record.getCodeInternal());
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
    fieldjson::read(object, *record, documentfields::ofCardRecord());
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
    QJsonObject object = fieldjson::write(*totals, documentfields::ofImpactDetail());
    object.insert(u"bonus"_s, dynamic_cast<const BonusImpact*>(&impact) != nullptr);
    object.insert(u"card"_s, cardNumberOf(totals->getCardRecord()));
    object.insert(u"positions"_s, sums);
    return object;
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
        items.append(fieldjson::write(*item, linefields::ofItem()));
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
    QJsonObject object = fieldjson::write(document, documentfields::ofDocument());
    object.insert(u"goods"_s, items);
    object.insert(u"cards"_s, cardArray);
    object.insert(u"impacts"_s, impactArray);
    return object;
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
    fieldjson::read(object, *document, documentfields::ofDocument());
    QList<QSharedPointer<GoodsItem>> goods;
    const QJsonArray items = object.value(u"goods"_s).toArray();
    for (const auto& item : items) {
        goods.append(QSharedPointer<GoodsItem>::create());
        fieldjson::read(item.toObject(), *goods.last(), linefields::ofItem());
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
