// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/contract/watch/rightorder.h"

#include <gtest/gtest.h>

namespace tests {

void ask(WatchedHost& host, const QSharedPointer<Document>& document)
{
    auto record = document->getCardRecord(15);
    EXPECT_TRUE(host.system().identifyByCard(record, ECardNumberType::Manual));
    document->removeImpacts(15);
    EXPECT_TRUE(host.system().request(document));
    const auto discounts = host.system().getDiscountImpacts();
    for (const auto& impact : discounts) {
        document->addImpact(impact);
    }
}

void payWithPoints(WatchedHost& host, const QSharedPointer<Document>& document, double points)
{
    BasicLoyaltySystem& system = host.system();
    system.setPointsForSpend(document, points);
    EXPECT_TRUE(system.spendPoints());
    const auto impacts = system.getBonusImpactsForSpend();
    EXPECT_FALSE(impacts.isEmpty());
    double placed = 0;
    for (const auto& impact : impacts) {
        placed += impact->getTotals()->getDiscountSum();
        document->addImpact(impact);
    }
    system.setPointsForSpend(document, placed);
    EXPECT_TRUE(system.recalculatePointsForEarn());
}

void close(WatchedHost& host, const QSharedPointer<Document>& document)
{
    EXPECT_TRUE(host.system().commit(document));
    host.system().clearAfterClose();
    host.layDown();
}

void sell(WatchedHost& host, const QString& id)
{
    const auto document = WatchedHost::sale(id);
    host.takeUp(document);
    ask(host, document);
    close(host, document);
}

} // namespace tests
