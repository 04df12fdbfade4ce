// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/recording/forwardingloyalty.h"
#include "till/recording/recorder.h"

namespace till {

/// Stands before a loyalty system and writes down the host's calls, what they return and what they
/// do to the document. What the cash desk does not call is passed on
/// unrecorded.
class RecordingLoyalty : public ForwardingLoyalty
{
public:
    /// Both must live longer.
    RecordingLoyalty(BasicLoyaltySystem& loyaltySystem, Recorder& journal);

    bool identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord,
                        ECardNumberType type) override;
    bool request(const QSharedPointer<AbstractDocument>& check) override;
    bool commit(const QSharedPointer<AbstractDocument>& check) override;
    bool rollback(const QSharedPointer<AbstractDocument>& check) override;
    bool spendPoints() override;
    bool recalculatePointsForEarn() override;
    double getPointsForSpend(const QSharedPointer<AbstractDocument>& check) override;
    void setPointsForSpend(const QSharedPointer<AbstractDocument>& check, double points) override;
    double getPointsForEarn() override;
    QList<QSharedPointer<DocumentImpact>> getDiscountImpacts() override;
    QList<QSharedPointer<BonusImpact>> getBonusImpactsForSpend() override;
    QList<DocumentBonusRecord> getBonusRecords() override;
    QStringList getMessagesToCashier() override;
    QStringList getMessagesToClient() override;
    tr::Tr getLastErrorString() const override;
    void clearLastErrorString() override;
    bool restoreLoyaltySystem() override;
    void clearAfterClose() override;
    void clearLoyaltyData() override;

private:
    template <typename Operation>
    auto recorded(const QString& name, const Recorder::Given& given, Operation operation) const;

    Recorder& recorder;
};

} // namespace till
