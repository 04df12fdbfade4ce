// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/loyaltysystems.h"

#include "host/loyalty/basicloyaltysystem.h"

#include <algorithm>

QList<BasicLoyaltySystem*> LoyaltySystems::systems;

bool LoyaltySystems::add(BasicLoyaltySystem* system)
{
    BasicLoyaltySystem* const known = find(system->getLoyaltySystemType());
    if (known != nullptr) {
        return known == system;
    }
    systems.append(system);
    return true;
}

bool LoyaltySystems::remove(BasicLoyaltySystem* system)
{
    return systems.removeOne(system);
}

BasicLoyaltySystem* LoyaltySystems::find(int loyaltySystemType)
{
    const auto found = std::find_if(systems.cbegin(), systems.cend(), [=](const auto* system) {
        return system->getLoyaltySystemType() == loyaltySystemType;
    });
    return found == systems.cend() ? nullptr : *found;
}
