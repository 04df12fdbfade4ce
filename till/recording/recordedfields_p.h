// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/bonusimpact.h"
#include "host/document/documentbonusrecord.h"
#include "host/document/documentcardrecord.h"
#include "host/document/documentimpact.h"
#include "host/document/goodsitem.h"
#include "till/checks/documentfields.h"
#include "till/checks/linefields.h"
#include "till/recording/fieldjson.h"

#include <QVariant>

/// What is recorded of those things that a document has many of, for whoever writes them: as JSON,
/// or as an image to compare.
namespace till::recordedfields {

/// Null where there is no card.
inline QVariant cardNumberOf(const QSharedPointer<DocumentCardRecord>& record)
{
    return record.isNull() || record->getCard().isNull() ? QVariant()
                                                         : QVariant(record->getCard()->getNumber());
}

template <typename Fields>
void of(const GoodsItem& item, Fields& fields)
{
    fieldjson::add(item, linefields::ofItem(), fields);
}

template <typename Fields>
void of(const DocumentCardRecord& record, Fields& fields)
{
    fieldjson::add(record, documentfields::ofCardRecord(), fields);
    fields.add(QStringLiteral("systemType"), record.getLoyaltySystemType());
    fields.add(QStringLiteral("codeInternal"), record.getCodeInternal());
    if (const auto card = record.getCard(); !card.isNull()) {
        fields.add(QStringLiteral("number"), card->getNumber());
        if (const auto client = card->getClient(); !client.isNull()) {
            fields.add(QStringLiteral("client"), client->getName());
        }
    }
}

template <typename Fields>
void of(const DocumentImpact& impact, Fields& fields)
{
    const auto totals = impact.getTotals();
    fieldjson::add(*totals, documentfields::ofImpactDetail(), fields);
    fields.add(QStringLiteral("bonus"), dynamic_cast<const BonusImpact*>(&impact) != nullptr);
    fields.add(QStringLiteral("card"), cardNumberOf(totals->getCardRecord()));
    fields.add(QStringLiteral("positions"), impact.getPositionSums());
}

template <typename Fields>
void of(const DocumentBonusRecord& record, Fields& fields)
{
    fields.add(QStringLiteral("accrual"), record.accrual);
    fields.add(QStringLiteral("amount"), record.bonusAmount);
    fields.add(QStringLiteral("card"), record.cardNumber);
    fields.add(QStringLiteral("position"), record.position);
    fields.add(QStringLiteral("session"), record.sessionContext);
    fields.add(QStringLiteral("time"), record.dateTime);
    fields.add(QStringLiteral("valutCode"), record.valutCode);
}

template <typename Fields>
void of(const QVariantMap& map, Fields& fields)
{
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        fields.add(it.key(), it.value());
    }
}

} // namespace till::recordedfields
