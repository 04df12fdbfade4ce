// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The judgement over a delivery, on deliveries that are made up.

#include "tests/scenario/month/verdict.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using month::Arrival;
using month::complaints;
using month::memoryComplaints;
using month::Queued;

namespace {

const QList<Queued> queue{{u"a"_s, {}}, {u"b"_s, {}}, {u"c"_s, u"a"_s}};

QList<Arrival> confirmed(const QStringList& checks)
{
    QList<Arrival> arrivals;
    for (const QString& check : checks) {
        arrivals.append({"paymenttry", check});
        arrivals.append({"checkconfirm", check});
    }
    return arrivals;
}

std::string said(const QList<Arrival>& arrivals)
{
    return complaints(queue, arrivals).join(u'\n').toStdString();
}

} // namespace

TEST(MonthVerdict, EverythingOnceAndInOrderIsRight)
{
    EXPECT_EQ(said(confirmed({u"a"_s, u"b"_s, u"c"_s})), "");
}

TEST(MonthVerdict, ALostConfirmationIsNamed)
{
    EXPECT_EQ(said(confirmed({u"a"_s, u"b"_s})), "check c is lost");
}

TEST(MonthVerdict, APaymentTryAloneIsALostConfirmation)
{
    QList<Arrival> arrivals = confirmed({u"a"_s, u"b"_s, u"c"_s});
    arrivals.removeLast();
    EXPECT_EQ(said(arrivals), "check c is lost");
}

TEST(MonthVerdict, ADoubledConfirmationIsNamed)
{
    EXPECT_EQ(said(confirmed({u"a"_s, u"b"_s, u"c"_s, u"b"_s})), "check b was confirmed 2 times");
}

TEST(MonthVerdict, AConfirmationThatNobodyQueuedIsNamed)
{
    EXPECT_EQ(said(confirmed({u"a"_s, u"b"_s, u"c"_s, u"x"_s})),
              "check x was confirmed and never queued");
}

TEST(MonthVerdict, TheFirstBreakOfTheOrderIsNamed)
{
    EXPECT_EQ(said(confirmed({u"b"_s, u"a"_s, u"c"_s})),
              "place 1 of the queue is check a, the server confirmed b there");
}

TEST(MonthVerdict, AReturnThatIsAskedAboutBeforeItsSaleIsNamed)
{
    QList<Arrival> arrivals = confirmed({u"a"_s, u"b"_s, u"c"_s});
    arrivals.prepend({"precheck", u"c"_s});
    EXPECT_EQ(said(arrivals), "the return c came before its sale a");
}

TEST(MonthVerdict, ARefusedRequestIsNamed)
{
    QList<Arrival> arrivals = confirmed({u"a"_s, u"b"_s, u"c"_s});
    arrivals.append({"checkconfirm", u"a"_s, 409});
    EXPECT_EQ(said(arrivals), "check a: checkconfirm was answered with 409");
}

TEST(MonthVerdict, MemoryMayGrowByTenPercentAndStaysBelowTheLimit)
{
    EXPECT_TRUE(memoryComplaints(20'000, 20'000).isEmpty());
    EXPECT_TRUE(memoryComplaints(20'000, 22'000).isEmpty());
    EXPECT_EQ(memoryComplaints(20'000, 22'001).size(), 1);
    EXPECT_TRUE(memoryComplaints(65'535, 65'535).isEmpty());
    EXPECT_EQ(memoryComplaints(65'536, 65'536).size(), 1);
    EXPECT_EQ(memoryComplaints(0, 0).size(), 1);
}

TEST(MonthVerdict, TheSellingTillStaysBelowTheLimitAndIsMeasured)
{
    EXPECT_TRUE(month::sellingComplaints(65'535).isEmpty());
    EXPECT_EQ(month::sellingComplaints(65'536).size(), 1);
    EXPECT_EQ(month::sellingComplaints(0).size(), 1);
}
