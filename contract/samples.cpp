// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/samples.h"

#include "host/document/card.h"

using namespace Qt::StringLiterals;

namespace contract {

QSharedPointer<GoodsItem> goodsLine(int position, double sum)
{
    auto line = QSharedPointer<GoodsItem>::create();
    line->setPosnum(position);
    line->setCode(u"100%1"_s.arg(position));
    line->setQuantity(1);
    line->setPrice(sum);
    line->setSumb(sum);
    return line;
}

QSharedPointer<DocumentCardRecord> cardRecord(const QString& number, int code)
{
    return QSharedPointer<DocumentCardRecord>::create(QSharedPointer<Card>::create(number), code,
                                                      7);
}

QSharedPointer<DocumentImpactDetail> detail(int position, double sum,
                                            const QSharedPointer<DocumentCardRecord>& record)
{
    auto made = QSharedPointer<DocumentImpactDetail>::create();
    made->setPosition(position);
    made->setDiscountSum(sum);
    made->setCardRecord(record);
    return made;
}

} // namespace contract
