// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/loyalty/basicloyaltysystem.h"

#include <QMap>
#include <QStringList>

#include <functional>

namespace tests {

/// A loyalty system without a server: it grants what the test says, notes every call, keeps its
/// answer in the document as a real one does, and changes that answer while it confirms.
class FakeLoyalty : public BasicLoyaltySystem
{
public:
    FakeLoyalty() { loyaltySystemType = 15; }

    bool identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord,
                        ECardNumberType type) override;
    bool request(const QSharedPointer<AbstractDocument>& check) override;
    bool commit(const QSharedPointer<AbstractDocument>& check) override;
    bool rollback(const QSharedPointer<AbstractDocument>& check) override;
    double getPointsForSpend(const QSharedPointer<AbstractDocument>& check) override;
    void setPointsForSpend(const QSharedPointer<AbstractDocument>& check, double points) override;
    bool spendPoints() override;
    bool recalculatePointsForEarn() override;
    bool restoreLoyaltySystem() override;
    void clearAfterClose() override;

    /// A discount impact of this system as a plug-in makes it.
    static QSharedPointer<DocumentImpact> discount(const QSharedPointer<DocumentCardRecord>& record,
                                                   int position, double sum,
                                                   bool minPriceIgnored = true);
    /// Points placed on a line in two portions; the totals hold the first.
    static QSharedPointer<BonusImpact> points(const QSharedPointer<DocumentCardRecord>& record,
                                              int position, double first, double second = 0);

    // What the test says.
    bool knowsCard = true;
    bool answers = true;
    /// Thrown out of identifyByCard and request when not null.
    std::function<void()> onAsk;
    QMap<int, double> discounts;
    bool minPriceIgnored = true;
    QMap<int, double> awards;
    double spendable = 0;
    double balance = 500;
    /// Points that spendPoints places, by position; by default all on line 1.
    QMap<int, double> placed;
    std::function<void()> onSpend;
    std::function<void()> onPoints;
    std::function<void()> onRestore;
    std::function<void()> onRollback;
    bool commits = true;

    // What happened.
    QStringList calls;
    /// The documents that request got: sum, lines and number of impacts.
    QStringList requested;

private:
    QString answer;
};

} // namespace tests
