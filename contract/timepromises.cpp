// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/subject.h"

#include <gtest/gtest.h>

void contract::addTimePromises() {}

namespace contract {
namespace {

TEST(ClockContract, GivesTheCurrentTimeToTheMillisecond)
{
    const auto clock = subject().makeClock();
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime told = clock->currentDateTime();
    const QDateTime after = QDateTime::currentDateTime();
    EXPECT_LE(before, told);
    EXPECT_LE(told, after);
}

TEST(ClockContract, TheTimeIsLocal)
{
    EXPECT_EQ(subject().makeClock()->currentDateTime().timeSpec(), Qt::LocalTime);
}

} // namespace
} // namespace contract
