// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/documentjson.h"

#include "host/document/discountimpact.h"
#include "host/document/money.h"
#include "till/recording/documentfields_p.h"
#include "till/recording/documentimage.h"
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

/// Fields as an object.
class JsonFields
{
public:
    void add(const QString& name, bool value) { object.insert(name, value); }
    void add(const QString& name, int value) { object.insert(name, value); }
    void add(const QString& name, double value) { object.insert(name, ofNumber(value)); }
    void add(const QString& name, const QString& value) { object.insert(name, value); }
    void add(const QString& name, const QDateTime& value) { object.insert(name, ofTime(value)); }
    void add(const QString& name, const QVariant& value) { object.insert(name, ofVariant(value)); }
    void add(const QString& name, const QMap<int, double>& value)
    {
        QJsonObject sums;
        for (auto it = value.cbegin(); it != value.cend(); ++it) {
            sums.insert(QString::number(it.key()), ofNumber(it.value()));
        }
        object.insert(name, sums);
    }

    QJsonObject object;
};

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

QSharedPointer<DocumentCardRecord> cardOfNumber(const QJsonValue& number, const CardRecords& cards)
{
    const auto found = std::find_if(cards.cbegin(), cards.cend(), [&](const auto& card) {
        return !number.isNull() && ofVariant(documentfields::cardNumberOf(card)) == number;
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
    JsonFields fields;
    documentfields::ofCard(record, fields);
    return fields.object;
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
    JsonFields fields;
    documentfields::ofImpact(impact, fields);
    return fields.object;
}

QJsonObject documentjson::ofBonusRecord(const DocumentBonusRecord& record)
{
    return {{u"accrual"_s, record.accrual},        {u"amount"_s, ofNumber(record.bonusAmount)},
            {u"card"_s, record.cardNumber},        {u"position"_s, ofVariant(record.position)},
            {u"session"_s, record.sessionContext}, {u"time"_s, ofTime(record.dateTime)},
            {u"valutCode"_s, record.valutCode}};
}

QJsonObject documentjson::fieldsOf(const Document& document)
{
    return {{u"id"_s, document.getDocumentId()},
            {u"number"_s, document.getCheckNumber()},
            {u"type"_s, document.getDocumentType()},
            {u"time"_s, ofTime(document.getDateTime())},
            {u"sale"_s, document.getSaleDocumentId()},
            {u"payment"_s, ofNumber(document.getPaymentSum())}};
}

namespace {

template <typename Fields>
void fieldsOf(const QSharedPointer<GoodsItem>& item, Fields& fields)
{
    documentfields::ofItem(*item, fields);
}

template <typename Fields>
void fieldsOf(const QSharedPointer<DocumentCardRecord>& card, Fields& fields)
{
    documentfields::ofCard(*card, fields);
}

template <typename Fields>
void fieldsOf(const QSharedPointer<DocumentImpact>& impact, Fields& fields)
{
    documentfields::ofImpact(*impact, fields);
}

template <auto List>
std::string imageOf(const Document& document)
{
    DocumentImage image;
    const auto entries = (document.*List)();
    for (const auto& entry : entries) {
        image.add(QString(), true); // one begins: not all have the same fields
        fieldsOf(entry, image);
    }
    return image.bytes();
}

template <auto List>
QJsonArray jsonOf(const Document& document)
{
    QJsonArray array;
    const auto entries = (document.*List)();
    for (const auto& entry : entries) {
        JsonFields fields;
        fieldsOf(entry, fields);
        array.append(fields.object);
    }
    return array;
}

template <auto List>
documentjson::Part partOf(const QString& name)
{
    return {name, jsonOf<List>, imageOf<List>};
}

} // namespace

const QList<documentjson::Part>& documentjson::parts()
{
    static const QList<Part> all{partOf<&Document::getGoodsItems>(u"goods"_s),
                                 partOf<&Document::getCardRecords>(u"cards"_s),
                                 partOf<&Document::getImpacts>(u"impacts"_s)};
    return all;
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
