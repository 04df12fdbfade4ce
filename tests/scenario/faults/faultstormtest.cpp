// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Many visits among faults that come by chance: whatever meets what, the books agree in the end.

#include "tests/scenario/faults/figures.h"
#include "tests/scenario/faults/pair.h"
#include "tests/support/logcapture.h"

#include <gtest/gtest.h>

using simulator::FaultKind;
using simulator::FaultRule;

namespace {

constexpr int visits = 40;
constexpr double chance = 0.1;
constexpr qint64 pointsOfAVisit = 10'00;

/// Faults after which the till knows what to do without a person, and without long waits.
std::vector<FaultRule> rulesOf(quint64 seed)
{
    std::vector<FaultRule> rules;
    for (const FaultKind kind :
         {FaultKind::RequestLost, FaultKind::Status, FaultKind::StatusAfterBooking,
          FaultKind::ReplyLost, FaultKind::CutBody, FaultKind::GarbledHeaders,
          FaultKind::GarbledBody, FaultKind::DuplicatedDelivery}) {
        FaultRule rule;
        rule.fault.kind = kind;
        rule.probability = chance;
        rule.seed = seed;
        rules.push_back(rule);
    }
    return rules;
}

void visit(FaultyTill& till)
{
    till.openSale();
    till.presentCard();
    if (till.desk().current().loyalty == till::LoyaltyState::Unasked) {
        till.desk().choosePoints(till::PointsChoice::sum(pointsOfAVisit));
    }
    till.desk().close();
    till.waitForNextAttempt();
    till.deliver();
}

} // namespace

TEST(FaultStorm, LeavesTheBooksInAgreement)
{
    const quint64 seed = Figures::instance().seed();
    RecordProperty("seed", std::to_string(seed));
    const tests::LogSilence plugin;
    QLoggingCategory::setFilterRules(QStringLiteral("orva=false\nposhost.delivery=false"));
    constexpr int number = 100'000; // no pair of the table has it
    Pair shop({"storm", {}, "", "", "", poshost::QueueState::Delivered}, number);
    shop.server.beginAll(rulesOf(seed));
    for (int i = 0; i < visits; ++i) {
        visit(shop.till);
    }
    EXPECT_GT(shop.server.struck(), visits / 2) << "hardly anything went wrong, seed " << seed;
    shop.server.end();
    shop.till.drain();

    EXPECT_FALSE(shop.till.undelivered()) << "seed " << seed;
    const QString books = shop.till.books();
    EXPECT_EQ(books.toStdString(), shop.server.books().toStdString()) << "seed " << seed;
    EXPECT_GT(books.count(u'\n'), 2) << "hardly any check was confirmed, seed " << seed;
}
