// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/basicloyaltysystem.h"

#include <gtest/gtest.h>
#include <string_view>

namespace {

TEST(PluginIdentifier, IsTheConfiguredOne)
{
    EXPECT_STREQ(ABSTRACT_PLUGIN_IID, ORVA_CONFIGURED_IID);
    EXPECT_TRUE(std::string_view(ABSTRACT_PLUGIN_IID).ends_with(".AbstractPlugin"));
    EXPECT_STREQ(qobject_interface_iid<BasicPlugin*>(), ORVA_CONFIGURED_IID);
    EXPECT_STREQ(qobject_interface_iid<BasicLoyaltySystem*>(), "LoyaltySystem");
}

} // namespace
