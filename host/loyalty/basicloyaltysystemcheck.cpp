// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/basicloyaltysystem.h"

bool BasicLoyaltySystem::identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord,
                                        ECardNumberType)
{
    return !cardRecord.isNull() && !cardRecord->getCard().isNull();
}

bool BasicLoyaltySystem::request(const QSharedPointer<AbstractDocument>&)
{
    return true;
}

bool BasicLoyaltySystem::requestCommit(bool)
{
    return true;
}

bool BasicLoyaltySystem::commit(const QSharedPointer<AbstractDocument>&)
{
    return true;
}

bool BasicLoyaltySystem::rollback(const QSharedPointer<AbstractDocument>&)
{
    clearLoyaltyData();
    return true;
}

bool BasicLoyaltySystem::cancel()
{
    clearLoyaltyData();
    return true;
}

bool BasicLoyaltySystem::spendPoints()
{
    return true;
}

bool BasicLoyaltySystem::recalculatePointsForEarn()
{
    return true;
}

double BasicLoyaltySystem::calculatePointsForEarnByQualifier(const QString&, int position)
{
    double points = 0;
    for (const auto& record : std::as_const(bonusRecords)) {
        if (record.position.toInt() == position) {
            points += record.bonusAmount;
        }
    }
    return points;
}

void BasicLoyaltySystem::removeEarnByValutCode(int valutCode)
{
    bonusRecords.removeIf(
        [valutCode](const DocumentBonusRecord& record) { return record.valutCode == valutCode; });
}

void BasicLoyaltySystem::removeEarnAfterClose() {}

bool BasicLoyaltySystem::recalculateAllPoints(const QSharedPointer<AbstractDocument>&)
{
    return recalculatePointsForEarn();
}

bool BasicLoyaltySystem::recalculatePointsForSpend(const QSharedPointer<AbstractDocument>&)
{
    return true;
}

bool BasicLoyaltySystem::hasPointsForSpend()
{
    return pointsForSpend > 0;
}

double BasicLoyaltySystem::getPointsForSpend(const QSharedPointer<AbstractDocument>&)
{
    return pointsForSpend;
}

void BasicLoyaltySystem::setPointsForSpend(const QSharedPointer<AbstractDocument>&, double points)
{
    pointsForSpend = points;
}

bool BasicLoyaltySystem::hasPointsForEarn()
{
    return pointsForEarn > 0;
}

double BasicLoyaltySystem::getPointsForEarn()
{
    return pointsForEarn;
}

bool BasicLoyaltySystem::hasBonusImpacts() const
{
    return !bonusImpactsForSpend.isEmpty();
}

QList<QSharedPointer<DocumentImpact>> BasicLoyaltySystem::getDiscountImpacts()
{
    return discountImpacts;
}

QList<QSharedPointer<BonusImpact>> BasicLoyaltySystem::getBonusImpactsForSpend()
{
    return bonusImpactsForSpend;
}

QList<DocumentBonusRecord> BasicLoyaltySystem::getBonusRecords()
{
    return bonusRecords;
}

QList<DocumentBonusRecord>
BasicLoyaltySystem::distributeBonusRecord(const QSharedPointer<AbstractDocument>&,
                                          const DocumentBonusRecord& record)
{
    return {record};
}

QMap<int, double>
BasicLoyaltySystem::getBonusImpactsLimits(const QSharedPointer<AbstractDocument>&) const
{
    return {};
}

bool BasicLoyaltySystem::restoreLoyaltySystem()
{
    return true;
}

bool BasicLoyaltySystem::registerCheck()
{
    return true;
}

void BasicLoyaltySystem::clearAfterClose()
{
    clearLoyaltyData();
}

bool BasicLoyaltySystem::payCheck()
{
    return true;
}

bool BasicLoyaltySystem::beforePutoutCheck()
{
    return true;
}

bool BasicLoyaltySystem::afterPutoutCheck()
{
    return true;
}

bool BasicLoyaltySystem::revealCheck()
{
    return true;
}
