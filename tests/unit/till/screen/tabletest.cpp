// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/table.h"

#include "tests/unit/till/printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using till::Table;

TEST(Table, alignsColumnsByCharactersAndNumbersToTheRight)
{
    Table table({{u"Goods"_s}, {u"Sum"_s, Table::Align::Right}});
    table.addRow({u"Чай чёрный"_s, u"149.90"_s});
    table.addRow({u"Tea"_s, u"7.50"_s});
    EXPECT_EQ(table.text(), u"Goods          Sum\n"
                            "Чай чёрный  149.90\n"
                            "Tea           7.50\n"_s);
}

TEST(Table, hasNoBlanksAtTheEndsOfLinesAndTakesShortRows)
{
    Table table({{u"A"_s}, {u"Long title"_s}});
    table.addRow({u"1"_s, u"2"_s});
    table.addRow({u"1"_s});
    EXPECT_EQ(table.text(), u"A  Long title\n1  2\n1\n"_s);
}

TEST(Table, countsCodePointsThatTakeAPlace)
{
    EXPECT_EQ(Table::widthOf(u"Ёж"_s), 2);
    EXPECT_EQ(Table::widthOf(u"и\u0306"_s), 1); // a letter and its combining mark
    EXPECT_EQ(Table::widthOf(u"\U0001F375"_s), 1);
}
