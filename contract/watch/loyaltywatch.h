// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/watch/order.h"
#include "host/loyalty/basicloyaltysystem.h"

#include <QHash>
#include <QObject>
#include <QString>

/// A loyalty system that a host loads instead of its own to be told which rules of order it breaks.
///
/// It knows every card and grants every check the same without any server: a tenth of each line as
/// a discount, half of the rest to be paid with points, a twentieth as accruals. A confirmation
/// goes into the host's queue, for an address at which nobody answers. POSHOST_WATCH_FAIL makes
/// calls fail, so that a host shows what it does then: "request" the first request, "commit:2" the
/// second confirmation; identifyByCard as well, several with commas between them. What is found
/// goes where watch::Findings says.
class LoyaltyWatch : public QObject, public BasicLoyaltySystem
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Orva")
    Q_INTERFACES(BasicLoyaltySystem BasicPlugin)

public:
    LoyaltyWatch();
    ~LoyaltyWatch() override;

    bool init() override;
    bool deinit() override;
    bool identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord,
                        ECardNumberType type) override;
    bool request(const QSharedPointer<AbstractDocument>& check) override;
    bool commit(const QSharedPointer<AbstractDocument>& check) override;
    bool rollback(const QSharedPointer<AbstractDocument>& check) override;
    bool cancel() override;
    bool spendPoints() override;
    bool recalculatePointsForEarn() override;
    double getPointsForSpend(const QSharedPointer<AbstractDocument>& check) override;
    void setPointsForSpend(const QSharedPointer<AbstractDocument>& check, double points) override;
    bool restoreLoyaltySystem() override;
    void clearAfterClose() override;
    void clearLoyaltyData() override;

private:
    bool failsNow(const QString& operation);
    bool refuse();
    void grant(AbstractDocument& check, const QSharedPointer<DocumentCardRecord>& cardRecord);

    watch::Order order;
    /// How often each operation that may fail has been called.
    QHash<QString, int> callCounts;
};
