// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "input/nearestname.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using input::nearestName;

TEST(NearestName, isTheOneWithTheFewestChanges)
{
    const QStringList known{u"percent"_s, u"roundDownTo"_s, u"sku"_s};
    EXPECT_EQ(nearestName(u"precent"_s, known), u"percent"_s);
    EXPECT_EQ(nearestName(u"rounddownto"_s, known), u"roundDownTo"_s);
    EXPECT_EQ(nearestName(u"sk"_s, known), u"sku"_s);
    EXPECT_EQ(nearestName(u"colour"_s, known), QString());
    EXPECT_EQ(nearestName(u"x"_s, {}), QString());
    EXPECT_EQ(nearestName({}, known), QString());
}

TEST(NearestName, takesSwappedNeighboursForOneChange)
{
    const QStringList known{u"list"_s, u"show"_s};
    EXPECT_EQ(nearestName(u"lsit"_s, known), u"list"_s);
    EXPECT_EQ(nearestName(u"hsow"_s, known), u"show"_s);
    EXPECT_EQ(nearestName(u"tsil"_s, known), QString());
}
