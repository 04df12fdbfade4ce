// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/documentjson.h"

#include "host/document/discountimpact.h"
#include "till/recording/documentimage.h"
#include "till/recording/fieldjson.h"
#include "till/recording/longlists.h"
#include "till/recording/recordedfields_p.h"
#include "till/recording/valuejson.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

using valuejson::ofVariant;
using valuejson::toNumber;
using valuejson::toVariant;
using CardRecords = QList<QSharedPointer<DocumentCardRecord>>;

QSharedPointer<DocumentCardRecord> cardOfNumber(const QJsonValue& number, const CardRecords& cards)
{
    const auto found = std::find_if(cards.cbegin(), cards.cend(), [&](const auto& card) {
        return !number.isNull() && ofVariant(recordedfields::cardNumberOf(card)) == number;
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
    fieldjson::JsonFields fields;
    recordedfields::of(record, fields);
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
    fieldjson::read(object, *record, documentfields::ofCardRecord());
    return record;
}

QJsonObject documentjson::fieldsOf(const Document& document)
{
    return fieldjson::write(document, documentfields::ofDocument());
}

namespace {

template <auto List>
std::string imageOf(const Document& document)
{
    DocumentImage image;
    const auto entries = (document.*List)();
    for (const auto& entry : entries) {
        image.add(QString(), true); // one begins: not all have the same fields
        recordedfields::of(*entry, image);
    }
    return image.bytes();
}

template <auto List>
QJsonValue jsonOf(const Document& document)
{
    return longlists::of((document.*List)(),
                         [](const auto& entry) -> const auto& { return *entry; });
}

/// Always whole: a card record is known by its fields.
QJsonValue cardsOf(const Document& document)
{
    QJsonArray array;
    const auto records = document.getCardRecords();
    for (const auto& record : records) {
        array.append(documentjson::ofCard(*record));
    }
    return array;
}

} // namespace

const QList<documentjson::Part>& documentjson::parts()
{
    static const QList<Part> all{
        {u"goods"_s, jsonOf<&Document::getGoodsItems>, imageOf<&Document::getGoodsItems>},
        {u"cards"_s, cardsOf, imageOf<&Document::getCardRecords>},
        {u"impacts"_s, jsonOf<&Document::getImpacts>, imageOf<&Document::getImpacts>}};
    return all;
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
