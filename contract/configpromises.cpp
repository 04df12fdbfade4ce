// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/subject.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

void contract::addConfigPromises() {}

namespace contract {
namespace {

TEST(ConfigContract, GivesTextsAndWholeNumbersByTableAndKey)
{
    const auto config = subject().makeConfig({{u"Orva:serverUrl"_s, u"http://127.0.0.1:8710/"_s},
                                              {u"Orva:user"_s, u"касса \"1\""_s},
                                              {u"Orva:timeout"_s, 5}});
    EXPECT_EQ(config->getString(u"Orva:serverUrl"_s, {}), u"http://127.0.0.1:8710/"_s);
    EXPECT_EQ(config->getString(u"Orva:user"_s, {}), u"касса \"1\""_s);
    EXPECT_EQ(config->getInt(u"Orva:timeout"_s, 10), 5);
}

TEST(ConfigContract, GivesTheDefaultForAKeyThatIsAbsent)
{
    const auto config = subject().makeConfig({{u"Orva:pos"_s, u"3"_s}});
    EXPECT_EQ(config->getString(u"Orva:user"_s, u"default"_s), u"default"_s);
    EXPECT_EQ(config->getString(u"Other:pos"_s, u"default"_s), u"default"_s);
    EXPECT_EQ(config->getInt(u"Orva:timeout"_s, 10), 10);
}

TEST(ConfigContract, AnEmptyTextIsAValue)
{
    const auto config = subject().makeConfig({{u"Orva:user"_s, u""_s}});
    EXPECT_EQ(config->getString(u"Orva:user"_s, u"default"_s), QString());
}

TEST(ConfigContract, ATextIsNoNumberAndANumberNoText)
{
    const auto config = subject().makeConfig({{u"Orva:pos"_s, u"5"_s}, {u"Orva:timeout"_s, 5}});
    EXPECT_EQ(config->getInt(u"Orva:pos"_s, 1), 1);
    EXPECT_EQ(config->getString(u"Orva:timeout"_s, u"default"_s), u"default"_s);
}

TEST(ConfigContract, ANegativeNumberIsHandedOutAsItIs)
{
    const auto config = subject().makeConfig({{u"Orva:timeout"_s, -1}});
    EXPECT_EQ(config->getInt(u"Orva:timeout"_s, 10), -1);
}

TEST(ConfigContract, ANumberOutsideTheRangeOfIntGivesTheDefault)
{
    const auto config = subject().makeConfig({{u"Other:number"_s, qint64(3'000'000'000)}});
    EXPECT_EQ(config->getInt(u"Other:number"_s, 10), 10);
}

} // namespace
} // namespace contract
