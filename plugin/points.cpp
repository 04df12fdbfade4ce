// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Points to spend and to earn.

#include "plugin/orva.h"

#include "client/exception.h"

#include <log4qt/logger.h>

using namespace Qt::StringLiterals;

namespace {

/// The first value where it is smaller, otherwise the second: also on a tie and when either is not
/// a number.
double smallerOrSecond(double first, double second)
{
    return first < second ? first : second;
}

double sumToPayOf(const QSharedPointer<AbstractDocument>& check)
{
    return check.isNull() ? 0.0 : check->getSumToPay();
}

} // namespace

double Orva::getPointsForSpend(const QSharedPointer<AbstractDocument>& check)
{
    const double available = pointsForSpend;
    const double toPay = sumToPayOf(check);
    logger->debug(u"Доступные баллы: '%1', сумма к оплате: '%2'. Выбираем минимум"_s,
                  QString::number(available, 'f', 2), QString::number(toPay, 'f', 2));
    return smallerOrSecond(available, sumToPayOf(check));
}

void Orva::setPointsForSpend(const QSharedPointer<AbstractDocument>&, double points)
{
    pointsForSpend = points;
}

bool Orva::spendPoints()
{
    const double sum = smallerOrSecond(pointsForSpend, sumToPayOf(document));
    logger->info(u"Списание бонусных баллов на сумму %1 будет выполнено после закрытия чека"_s,
                 QString::number(sum, 'f', 2));
    // Dropped on purpose: the host has applied the discounts of the last pre-check by now.
    discountImpacts.clear();
    bonusImpactsForSpend = makeBonusImpacts(cardRecordOf(document), sum);
    updatePluginData();
    return true;
}

QList<QSharedPointer<BonusImpact>>
Orva::makeBonusImpacts(const QSharedPointer<DocumentCardRecord>& cardRecord, double sum) const
{
    try {
        return interface->generateBonusImpacts(cardRecord, sum, pointsForSpend);
    } catch (const orva::Exception& exception) {
        if (!cardRecord.isNull()) {
            throw;
        }
        // Nobody's points cannot be spent: refused by the client, and no reason to stop a sale.
        logger->error(exception.detail);
        return {};
    }
}

bool Orva::recalculatePointsForEarn()
{
    logger->debug(u"Пересчет бонусных начислений"_s);
    pointsForEarn = 0;
    if (document.isNull()) {
        return true;
    }
    const double full = document->getCheckSum() + pointsForSpend;
    const double current = document->getCheckSum();
    if (!bonusRecords.isEmpty()) {
        // Without a guard against 0: amounts that are not finite are the host's to refuse.
        const double ratio = current / full;
        for (DocumentBonusRecord& record : bonusRecords) {
            record.bonusAmount *= ratio;
            pointsForEarn += record.bonusAmount;
        }
    }
    const auto cardRecord = cardRecordOf(document);
    if (!cardRecord.isNull()) {
        cardRecord->setPointsForEarn(QVariant(pointsForEarn));
    }
    return true;
}
