// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The host's library of another version of the contract, as far as a plug-in for it needs it.

#include "tests/unit/till/plugins/othercontract.h"

#include <cstdlib>

BasicPlugin::BasicPlugin() = default;
BasicPlugin::~BasicPlugin() = default;

bool BasicPlugin::shutDown()
{
    std::abort();
}

bool BasicPlugin::init()
{
    return true;
}

BasicLoyaltySystem::BasicLoyaltySystem() = default;
BasicLoyaltySystem::~BasicLoyaltySystem() = default;
