// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/watch/grants.h"

#include "host/document/discountimpact.h"
#include "host/document/edocumenttype.h"
#include "host/document/money.h"
#include "host/services/currenttime.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace watch {
namespace {

qint64 sumOf(const GoodsItem& item)
{
    return money::toKopecks(item.getSumb()).value_or(0);
}

qint64 discountOf(const GoodsItem& item)
{
    return sumOf(item) / 10;
}

qint64 payableWithPoints(const GoodsItem& item)
{
    return (sumOf(item) - discountOf(item)) / 2;
}

QSharedPointer<DocumentImpactDetail> detail(const QSharedPointer<DocumentCardRecord>& cardRecord,
                                            EDiscountType::type type, const QString& name,
                                            int position, qint64 kopecks)
{
    auto made = QSharedPointer<DocumentImpactDetail>::create();
    made->setCardRecord(cardRecord);
    made->setDateTime(MockFactory<CurrentTime>::create()->currentDateTime());
    made->setDiscountType(type);
    made->setDiscountMode(EDiscountMode::Sum);
    made->setDiscountName(name);
    made->setDiscountObject(EDiscountObject::Position);
    made->setPosition(position);
    made->setDiscountSum(money::fromKopecks(kopecks));
    made->setImpactSource(EImpactSource::LoyaltySystem);
    made->setMinPriceIgnored(true);
    return made;
}

DocumentBonusRecord accrual(int position, qint64 kopecks)
{
    DocumentBonusRecord record;
    record.bonusAmount = money::fromKopecks(kopecks);
    record.position = QVariant(position);
    record.accrual = true;
    return record;
}

} // namespace

Grants::Grants(AbstractDocument& check, const QSharedPointer<DocumentCardRecord>& cardRecord)
{
    if (check.getDocumentType() != int(EDocumentType::Sale)) {
        return;
    }
    qint64 payable = 0;
    qint64 earning = 0;
    const auto goods = check.getGoodsItems();
    for (const auto& item : goods) {
        const int position = item->getPosnum();
        const qint64 discount = discountOf(*item);
        if (discount > 0) {
            discountList.append(QSharedPointer<DiscountImpact>::create(
                detail(cardRecord, EDiscountType::LoyaltyDiscount, u"Скидка наблюдателя"_s,
                       position, discount)));
        }
        accrualList.append(accrual(position, sumOf(*item) / 20));
        earning += sumOf(*item) / 20;
        payable += payableWithPoints(*item);
    }
    pointsToSpend = money::fromKopecks(payable);
    pointsToEarn = money::fromKopecks(earning);
}

QList<QSharedPointer<BonusImpact>>
spendings(AbstractDocument& check, const QSharedPointer<DocumentCardRecord>& cardRecord, double sum)
{
    QList<QSharedPointer<BonusImpact>> impacts;
    qint64 left = std::max<qint64>(0, money::toKopecks(sum).value_or(0));
    const auto goods = check.getGoodsItems();
    for (const auto& item : goods) {
        const qint64 placed = std::min(left, payableWithPoints(*item));
        if (placed <= 0) {
            continue;
        }
        const int position = item->getPosnum();
        const auto impact = QSharedPointer<BonusImpact>::create(detail(
            cardRecord, EDiscountType::BonusPayment, u"Баллы наблюдателя"_s, position, placed));
        impact->addDetailForPosition(position, money::fromKopecks(placed));
        impacts.append(impact);
        left -= placed;
    }
    return impacts;
}

} // namespace watch
