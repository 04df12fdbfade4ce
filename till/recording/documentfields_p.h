// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/bonusimpact.h"
#include "host/document/documentcardrecord.h"
#include "host/document/documentimpact.h"
#include "host/document/goodsitem.h"

#include <QVariant>

/// The fields of what a document has many of, each named once for whoever writes them: as JSON, or
/// as an image to compare. They stand in the order of their names, in which an object takes them
/// fastest.
namespace till::documentfields {

/// Null where there is no card.
inline QVariant cardNumberOf(const QSharedPointer<DocumentCardRecord>& record)
{
    return record.isNull() || record->getCard().isNull() ? QVariant()
                                                         : QVariant(record->getCard()->getNumber());
}

template <typename Fields>
void ofItem(GoodsItem& item, Fields& fields)
{
    fields.add(QStringLiteral("bonusSum"), item.getBonusImpactSum());
    fields.add(QStringLiteral("code"), item.getCode());
    fields.add(QStringLiteral("fractional"), item.getTmcUnit()->isFractional());
    fields.add(QStringLiteral("minPrice"), item.getMinPrice());
    fields.add(QStringLiteral("name"), item.getName());
    fields.add(QStringLiteral("position"), item.getPosnum());
    fields.add(QStringLiteral("price"), item.getPrice());
    fields.add(QStringLiteral("quantity"), item.getQuantity());
    fields.add(QStringLiteral("quantityBack"), item.getQuantBack());
    fields.add(QStringLiteral("sum"), item.getSumb());
    fields.add(QStringLiteral("unit"), item.getTmcUnit()->getName());
}

template <typename Fields>
void ofCard(const DocumentCardRecord& record, Fields& fields)
{
    fields.add(QStringLiteral("systemType"), record.getLoyaltySystemType());
    fields.add(QStringLiteral("codeInternal"), record.getCodeInternal());
    fields.add(QStringLiteral("pointsForSpend"), record.getPointsForSpend());
    fields.add(QStringLiteral("pointsForEarn"), record.getPointsForEarn());
    fields.add(QStringLiteral("balance"), record.getBonusBalance());
    if (const auto card = record.getCard(); !card.isNull()) {
        fields.add(QStringLiteral("number"), card->getNumber());
        if (const auto client = card->getClient(); !client.isNull()) {
            fields.add(QStringLiteral("client"), client->getName());
        }
    }
}

template <typename Fields>
void ofImpact(const DocumentImpact& impact, Fields& fields)
{
    const auto totals = impact.getTotals();
    fields.add(QStringLiteral("bonus"), dynamic_cast<const BonusImpact*>(&impact) != nullptr);
    fields.add(QStringLiteral("card"), cardNumberOf(totals->getCardRecord()));
    fields.add(QStringLiteral("cardIndex"), totals->getCardIndex());
    fields.add(QStringLiteral("minPriceIgnored"), totals->isMinPriceIgnored());
    fields.add(QStringLiteral("mode"), int(totals->getDiscountMode()));
    fields.add(QStringLiteral("name"), totals->getDiscountName());
    fields.add(QStringLiteral("object"), int(totals->getDiscountObject()));
    fields.add(QStringLiteral("position"), totals->getPosition());
    fields.add(QStringLiteral("positions"), impact.getPositionSums());
    fields.add(QStringLiteral("rate"), totals->getDiscountRate());
    fields.add(QStringLiteral("source"), int(totals->getImpactSource()));
    fields.add(QStringLiteral("sum"), totals->getDiscountSum());
    fields.add(QStringLiteral("time"), totals->getDateTime());
    fields.add(QStringLiteral("type"), int(totals->getDiscountType()));
}

} // namespace till::documentfields
