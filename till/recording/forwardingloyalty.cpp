// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/forwardingloyalty.h"

namespace till {

ForwardingLoyalty::ForwardingLoyalty(BasicLoyaltySystem& loyaltySystem) : system(loyaltySystem)
{
    loyaltySystemType = system.getLoyaltySystemType();
}

BasicLoyaltySystem& ForwardingLoyalty::watching() const
{
    system.setDocument(document);
    return system;
}

bool ForwardingLoyalty::requestCommit(bool force)
{
    return watching().requestCommit(force);
}

bool ForwardingLoyalty::cancel()
{
    return watching().cancel();
}

double ForwardingLoyalty::calculatePointsForEarnByQualifier(const QString& qualifier, int position)
{
    return watching().calculatePointsForEarnByQualifier(qualifier, position);
}

void ForwardingLoyalty::removeEarnByValutCode(int valutCode)
{
    watching().removeEarnByValutCode(valutCode);
}

void ForwardingLoyalty::removeEarnAfterClose()
{
    watching().removeEarnAfterClose();
}

bool ForwardingLoyalty::recalculateAllPoints(const QSharedPointer<AbstractDocument>& check)
{
    return watching().recalculateAllPoints(check);
}

bool ForwardingLoyalty::hasPointsForSpend()
{
    return watching().hasPointsForSpend();
}

bool ForwardingLoyalty::hasPointsForEarn()
{
    return watching().hasPointsForEarn();
}

bool ForwardingLoyalty::hasBonusImpacts() const
{
    return watching().hasBonusImpacts();
}

QStringList ForwardingLoyalty::getMessagesToClientDisplay()
{
    return watching().getMessagesToClientDisplay();
}

bool ForwardingLoyalty::takeForCustomer()
{
    return watching().takeForCustomer();
}

QStringList ForwardingLoyalty::getCardInfo(const QSharedPointer<DocumentCardRecord>& cardRecord,
                                           ECardNumberType type)
{
    return watching().getCardInfo(cardRecord, type);
}

bool ForwardingLoyalty::isAllowPartialPointsSpend()
{
    return watching().isAllowPartialPointsSpend();
}

double ForwardingLoyalty::getRoundPrecisionForSpend() const
{
    return watching().getRoundPrecisionForSpend();
}

void ForwardingLoyalty::setRoundPrecisionForSpend(double precision)
{
    watching().setRoundPrecisionForSpend(precision);
}

bool ForwardingLoyalty::isAllowInternalDiscount() const
{
    return watching().isAllowInternalDiscount();
}

bool ForwardingLoyalty::useDiscOnChangeWithBonusPayment()
{
    return watching().useDiscOnChangeWithBonusPayment();
}

bool ForwardingLoyalty::fillCardOwnerInfo()
{
    return watching().fillCardOwnerInfo();
}

QString ForwardingLoyalty::getCardNumber(const loyalty::CardNumberInputData& input)
{
    return watching().getCardNumber(input);
}

ECardMode ForwardingLoyalty::getCardMode() const
{
    return watching().getCardMode();
}

QList<QStringList> ForwardingLoyalty::getSlips()
{
    return watching().getSlips();
}

bool ForwardingLoyalty::cardReplace()
{
    return watching().cardReplace();
}

ECardNumberType ForwardingLoyalty::getCardNumberTypeToAddCardInSubtotal() const
{
    return watching().getCardNumberTypeToAddCardInSubtotal();
}

bool ForwardingLoyalty::checkOption(LoyaltySystemOption option) const
{
    return watching().checkOption(option);
}

bool ForwardingLoyalty::requestInputPointsForSpendByLoyalty()
{
    return watching().requestInputPointsForSpendByLoyalty();
}

bool ForwardingLoyalty::registerCheck()
{
    return watching().registerCheck();
}

bool ForwardingLoyalty::couponBelongsToSystem(ECoupon::Type type) const
{
    return watching().couponBelongsToSystem(type);
}

bool ForwardingLoyalty::payCheck()
{
    return watching().payCheck();
}

bool ForwardingLoyalty::recalculatePointsForSpend(const QSharedPointer<AbstractDocument>& check)
{
    return watching().recalculatePointsForSpend(check);
}

bool ForwardingLoyalty::beforePutoutCheck()
{
    return watching().beforePutoutCheck();
}

bool ForwardingLoyalty::afterPutoutCheck()
{
    return watching().afterPutoutCheck();
}

bool ForwardingLoyalty::revealCheck()
{
    return watching().revealCheck();
}

bool ForwardingLoyalty::init()
{
    return watching().init();
}

bool ForwardingLoyalty::deinit()
{
    return watching().deinit();
}

QList<DocumentBonusRecord>
ForwardingLoyalty::distributeBonusRecord(const QSharedPointer<AbstractDocument>& check,
                                         const DocumentBonusRecord& record)
{
    return watching().distributeBonusRecord(check, record);
}

QMap<int, double>
ForwardingLoyalty::getBonusImpactsLimits(const QSharedPointer<AbstractDocument>& check) const
{
    return watching().getBonusImpactsLimits(check);
}

QSharedPointer<Card> ForwardingLoyalty::getCard() const
{
    return watching().getCard();
}

bool ForwardingLoyalty::hasCard() const
{
    return watching().hasCard();
}

bool ForwardingLoyalty::registerLoyaltySystem()
{
    return watching().registerLoyaltySystem();
}

bool ForwardingLoyalty::deregisterLoyaltySystem()
{
    return watching().deregisterLoyaltySystem();
}

void ForwardingLoyalty::setOption(LoyaltySystemOption option, bool value)
{
    watching().setOption(option, value);
}

QString ForwardingLoyalty::getStoreDataKey() const
{
    return watching().getStoreDataKey();
}

void ForwardingLoyalty::setPluginData(const QString& key, const QVariant& value)
{
    watching().setPluginData(key, value);
}

void ForwardingLoyalty::setPluginData(const QSharedPointer<AbstractDocument>& check,
                                      const QString& key, const QVariant& value)
{
    watching().setPluginData(check, key, value);
}

QVariant ForwardingLoyalty::getPluginData(const QString& key)
{
    return watching().getPluginData(key);
}

QVariant ForwardingLoyalty::getPluginData(const QSharedPointer<AbstractDocument>& check,
                                          const QString& key)
{
    return watching().getPluginData(check, key);
}

void ForwardingLoyalty::clearData() const
{
    watching().clearData();
}

} // namespace till
