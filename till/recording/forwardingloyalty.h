// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/loyalty/basicloyaltysystem.h"

namespace till {

/// Stands before a loyalty system and passes on every call that a class derived from it does not
/// take.
class ForwardingLoyalty : public BasicLoyaltySystem
{
public:
    /// @param loyaltySystem must live longer
    explicit ForwardingLoyalty(BasicLoyaltySystem& loyaltySystem);

    bool requestCommit(bool force) override;
    bool cancel() override;
    double calculatePointsForEarnByQualifier(const QString& qualifier, int position) override;
    void removeEarnByValutCode(int valutCode) override;
    void removeEarnAfterClose() override;
    bool recalculateAllPoints(const QSharedPointer<AbstractDocument>& check) override;
    bool hasPointsForSpend() override;
    bool hasPointsForEarn() override;
    bool hasBonusImpacts() const override;
    QStringList getMessagesToClientDisplay() override;
    bool takeForCustomer() override;
    QStringList getCardInfo(const QSharedPointer<DocumentCardRecord>& cardRecord,
                            ECardNumberType type) override;
    bool isAllowPartialPointsSpend() override;
    double getRoundPrecisionForSpend() const override;
    void setRoundPrecisionForSpend(double precision) override;
    bool isAllowInternalDiscount() const override;
    bool useDiscOnChangeWithBonusPayment() override;
    bool fillCardOwnerInfo() override;
    QString getCardNumber(const loyalty::CardNumberInputData& input) override;
    ECardMode getCardMode() const override;
    QList<QStringList> getSlips() override;
    bool cardReplace() override;
    ECardNumberType getCardNumberTypeToAddCardInSubtotal() const override;
    bool checkOption(LoyaltySystemOption option) const override;
    bool requestInputPointsForSpendByLoyalty() override;
    bool registerCheck() override;
    bool couponBelongsToSystem(ECoupon::Type type) const override;
    bool payCheck() override;
    bool recalculatePointsForSpend(const QSharedPointer<AbstractDocument>& check) override;
    bool beforePutoutCheck() override;
    bool afterPutoutCheck() override;
    bool revealCheck() override;
    bool init() override;
    bool deinit() override;
    QList<DocumentBonusRecord> distributeBonusRecord(const QSharedPointer<AbstractDocument>& check,
                                                     const DocumentBonusRecord& record) override;
    QMap<int, double>
    getBonusImpactsLimits(const QSharedPointer<AbstractDocument>& check) const override;
    QSharedPointer<Card> getCard() const override;
    bool hasCard() const override;
    bool registerLoyaltySystem() override;
    bool deregisterLoyaltySystem() override;
    void setOption(LoyaltySystemOption option, bool value) override;
    QString getStoreDataKey() const override;
    void setPluginData(const QString& key, const QVariant& value) override;
    void setPluginData(const QSharedPointer<AbstractDocument>& check, const QString& key,
                       const QVariant& value) override;
    QVariant getPluginData(const QString& key) override;
    QVariant getPluginData(const QSharedPointer<AbstractDocument>& check,
                           const QString& key) override;
    void clearData() const override;

protected:
    /// The system, on the document that this object watches: that is set without the object
    /// noticing.
    BasicLoyaltySystem& watching() const;

private:
    BasicLoyaltySystem& system;
};

} // namespace till
