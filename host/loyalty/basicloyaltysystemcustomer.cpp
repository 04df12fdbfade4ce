// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/basicloyaltysystem.h"

QStringList BasicLoyaltySystem::getMessagesToCashier()
{
    return messagesToCashier;
}

QStringList BasicLoyaltySystem::getMessagesToClient()
{
    return messagesToClient;
}

QStringList BasicLoyaltySystem::getMessagesToClientDisplay()
{
    return {};
}

bool BasicLoyaltySystem::takeForCustomer()
{
    return false;
}

QStringList BasicLoyaltySystem::getCardInfo(const QSharedPointer<DocumentCardRecord>& cardRecord,
                                            ECardNumberType)
{
    if (cardRecord.isNull() || cardRecord->getCard().isNull()) {
        return {};
    }
    const auto client = cardRecord->getCard()->getClient();
    return client.isNull() ? QStringList() : QStringList(client->getName());
}

bool BasicLoyaltySystem::isAllowPartialPointsSpend()
{
    return true;
}

double BasicLoyaltySystem::getRoundPrecisionForSpend() const
{
    return roundPrecisionForSpend;
}

void BasicLoyaltySystem::setRoundPrecisionForSpend(double precision)
{
    roundPrecisionForSpend = precision;
}

bool BasicLoyaltySystem::isAllowInternalDiscount() const
{
    return true;
}

bool BasicLoyaltySystem::useDiscOnChangeWithBonusPayment()
{
    return false;
}

bool BasicLoyaltySystem::fillCardOwnerInfo()
{
    return false;
}

QString BasicLoyaltySystem::getCardNumber(const loyalty::CardNumberInputData& input)
{
    return input.text;
}

ECardMode BasicLoyaltySystem::getCardMode() const
{
    return ECardMode::External;
}

QList<QStringList> BasicLoyaltySystem::getSlips()
{
    return {};
}

bool BasicLoyaltySystem::cardReplace()
{
    return false;
}

ECardNumberType BasicLoyaltySystem::getCardNumberTypeToAddCardInSubtotal() const
{
    return ECardNumberType::Undefined;
}

bool BasicLoyaltySystem::requestInputPointsForSpendByLoyalty()
{
    return false;
}

bool BasicLoyaltySystem::couponBelongsToSystem(ECoupon::Type) const
{
    return false;
}
