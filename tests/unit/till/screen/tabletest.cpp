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

TEST(Table, movesColumnsOutOfRowsThatAreTooWide)
{
    Table table({{u"No"_s, Table::Align::Right},
                 {u"Goods"_s, Table::Align::Left, Table::Narrow::Above},
                 {u"Sum"_s, Table::Align::Right},
                 {u"Remark"_s, Table::Align::Left, Table::Narrow::Below}});
    table.addRow({u"1"_s, u"Чай чёрный, 100 г"_s, u"149.90"_s, u"the last of them all"_s});
    table.addRow({u"12"_s, u"Tea"_s, u"7.50"_s});
    EXPECT_EQ(table.text(20), u"  Goods\n"
                              "    No     Sum\n"
                              "    Remark\n"
                              "  Чай чёрный, 100 г\n"
                              "     1  149.90\n"
                              "    the last of them\n"
                              "    all\n"
                              "  Tea\n"
                              "    12    7.50\n"_s);
}

TEST(Table, breaksTitlesAndTextsBetweenWords)
{
    Table table({{u"Given back"_s, Table::Align::Right}, {u"Since"_s}, {u"State"_s}});
    table.addRow({u"1.00"_s, u"2026-03-02 12:00:00"_s, u"waiting"_s});
    EXPECT_EQ(table.text(26), u"Given  Since       State\n"
                              " back\n"
                              " 1.00  2026-03-02  waiting\n"
                              "       12:00:00\n"_s);
}

TEST(Table, becomesSentencesWhereNoColumnsFit)
{
    Table table({{u"Check"_s}, {u"Sum"_s, Table::Align::Right}, {u"Points"_s}});
    table.addRow({u"a7c7a576"_s, u"1234567.89"_s, u"12.00"_s});
    table.addRow({u"b"_s, QString(), u"1.00"_s});
    EXPECT_EQ(table.text(20), u"Check: a7c7a576,\n"
                              "  Sum: 1234567.89,\n"
                              "  Points: 12.00\n"
                              "Check: b, Points:\n"
                              "  1.00\n"_s);
}
