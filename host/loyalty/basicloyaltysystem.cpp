// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/basicloyaltysystem.h"

#include "host/loyalty/loyaltysystems.h"

using namespace Qt::StringLiterals;

BasicLoyaltySystem::BasicLoyaltySystem() = default;

BasicLoyaltySystem::~BasicLoyaltySystem()
{
    LoyaltySystems::remove(this);
}

bool BasicLoyaltySystem::init()
{
    return registerLoyaltySystem();
}

bool BasicLoyaltySystem::deinit()
{
    return deregisterLoyaltySystem();
}

bool BasicLoyaltySystem::registerLoyaltySystem()
{
    return LoyaltySystems::add(this);
}

bool BasicLoyaltySystem::deregisterLoyaltySystem()
{
    return LoyaltySystems::remove(this);
}

void BasicLoyaltySystem::setOption(LoyaltySystemOption option, bool value)
{
    if (value) {
        options.insert(option);
    } else {
        options.remove(option);
    }
}

bool BasicLoyaltySystem::checkOption(LoyaltySystemOption option) const
{
    return options.contains(option);
}

tr::Tr BasicLoyaltySystem::getLastErrorString() const
{
    return lastError;
}

void BasicLoyaltySystem::clearLastErrorString()
{
    lastError = tr::Tr();
}

QSharedPointer<Card> BasicLoyaltySystem::getCard() const
{
    const auto record = document.isNull() ? QSharedPointer<DocumentCardRecord>()
                                          : document->getCardRecord(loyaltySystemType);
    return record.isNull() ? QSharedPointer<Card>() : record->getCard();
}

bool BasicLoyaltySystem::hasCard() const
{
    return !getCard().isNull();
}

QString BasicLoyaltySystem::getStoreDataKey() const
{
    return u"loyaltySystem%1"_s.arg(loyaltySystemType);
}

void BasicLoyaltySystem::setPluginData(const QString& key, const QVariant& value)
{
    setPluginData(document, key, value);
}

void BasicLoyaltySystem::setPluginData(const QSharedPointer<AbstractDocument>& target,
                                       const QString& key, const QVariant& value)
{
    if (!target.isNull()) {
        target->setPluginValue(getStoreDataKey(), key, value);
    }
}

QVariant BasicLoyaltySystem::getPluginData(const QString& key)
{
    return getPluginData(document, key);
}

QVariant BasicLoyaltySystem::getPluginData(const QSharedPointer<AbstractDocument>& source,
                                           const QString& key)
{
    return source.isNull() ? QVariant()
                           : source->getPluginValue(getStoreDataKey(), key, QVariant());
}

void BasicLoyaltySystem::clearData() const {}

void BasicLoyaltySystem::clearLoyaltyData()
{
    pointsForSpend = 0;
    pointsForEarn = 0;
    discountImpacts.clear();
    bonusImpactsForSpend.clear();
    bonusRecords.clear();
    messagesToCashier.clear();
    messagesToClient.clear();
    lastError = tr::Tr();
}
