// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/loyaltysystems.h"

#include "host/loyalty/basicloyaltysystem.h"

#include <QList>

#include <algorithm>

namespace {

/// Never destroyed: Qt's loader deletes an object that a host has left behind after the static
/// objects of all libraries, and each object takes itself out of this list.
QList<BasicLoyaltySystem*>& registered()
{
    static auto* const systems = new QList<BasicLoyaltySystem*>;
    return *systems;
}

} // namespace

bool LoyaltySystems::add(BasicLoyaltySystem* system)
{
    BasicLoyaltySystem* const known = find(system->getLoyaltySystemType());
    if (known != nullptr) {
        return known == system;
    }
    registered().append(system);
    return true;
}

bool LoyaltySystems::remove(BasicLoyaltySystem* system)
{
    return registered().removeOne(system);
}

BasicLoyaltySystem* LoyaltySystems::find(int loyaltySystemType)
{
    const auto& systems = registered();
    const auto found = std::find_if(systems.cbegin(), systems.cend(), [=](const auto* system) {
        return system->getLoyaltySystemType() == loyaltySystemType;
    });
    return found == systems.cend() ? nullptr : *found;
}
