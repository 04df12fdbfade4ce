// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Every way to break a set-up that is known here: it is found, nothing else is, and what is printed
// mends it.

#include "tests/unit/till/doctor/row.h"

#include <iostream>

using namespace Qt::StringLiterals;

namespace {

QList<tests::Ways> allWays()
{
    return tests::settingsWays() + tests::environmentWays() + tests::databaseWays() +
           tests::pluginWays() + tests::connectionWays() + tests::serverWays();
}

class DoctorTable : public ::testing::TestWithParam<int>
{};

std::string nameOf(const ::testing::TestParamInfo<int>& info)
{
    return allWays().at(info.param).name;
}

} // namespace

TEST_P(DoctorTable, findsAndMends)
{
    const tests::Ways ways = allWays().at(GetParam());
    const QList<tests::Row> rows = ways.rows();
    ASSERT_FALSE(rows.isEmpty());
    const tests::Mended mended = tests::expectFoundAndMended(rows, ways.way);
    EXPECT_EQ(mended.byCommand + mended.byLine + mended.byHand, rows.size());
    std::cout << ways.name << ": " << rows.size() << " ways; mended " << mended.byCommand
              << " by a command, " << mended.byLine << " by a line, " << mended.byHand
              << " by hand\n";
}

INSTANTIATE_TEST_SUITE_P(Ways, DoctorTable, ::testing::Range(0, int(allWays().size())), nameOf);

TEST(DoctorTableSize, hasMoreThanFiftyWays)
{
    qsizetype count = 0;
    for (const tests::Ways& ways : allWays()) {
        count += ways.rows().size();
    }
    std::cout << count << " ways to break a set-up\n";
    EXPECT_GE(count, 50);
}
