// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/document.h"

#include "host/document/money.h"

Document::Document() = default;

Document::~Document() = default;

void Document::removeImpacts(int loyaltySystemType)
{
    impacts.removeIf([loyaltySystemType](const QSharedPointer<DocumentImpact>& impact) {
        return impact->getTotals()->getCardType() == QVariant(loyaltySystemType);
    });
}

QSharedPointer<DocumentCardRecord> Document::getCardRecord(int loyaltySystemType) const
{
    for (const auto& record : cardRecords) {
        if (record->getLoyaltySystemType() == loyaltySystemType) {
            return record;
        }
    }
    return {};
}

void Document::addCardRecord(const QSharedPointer<DocumentCardRecord>& record)
{
    cardRecords.append(record);
}

qint64 Document::getCheckSumKopecks() const
{
    qint64 sum = 0;
    for (const auto& item : goodsItems) {
        sum += money::toKopecks(item->getSumb()).value_or(0);
    }
    for (const auto& impact : impacts) {
        sum -= money::toKopecks(impact->getTotals()->getDiscountSum()).value_or(0);
    }
    return sum;
}

double Document::getCheckSum() const
{
    return money::fromKopecks(getCheckSumKopecks());
}

double Document::getSumToPay() const
{
    return money::fromKopecks(getCheckSumKopecks() - paymentKopecks);
}

double Document::getPaymentSum() const
{
    return money::fromKopecks(paymentKopecks);
}

QVariant Document::getPluginValue(const QString& owner, const QString& key,
                                  const QVariant& defaultValue) const
{
    return pluginData.value(owner).value(key, defaultValue);
}

void Document::setPluginValue(const QString& owner, const QString& key, const QVariant& value)
{
    pluginData[owner].insert(key, value);
}
