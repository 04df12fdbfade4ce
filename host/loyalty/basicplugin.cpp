// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/basicplugin.h"

BasicPlugin::BasicPlugin() = default;

BasicPlugin::~BasicPlugin() = default;

bool BasicPlugin::init()
{
    return true;
}

bool BasicPlugin::deinit()
{
    return true;
}

bool BasicPlugin::isFeatureMatched(const QString& feature) const
{
    return features.contains(feature);
}

void BasicPlugin::setFeature(const QString& feature)
{
    features.insert(feature);
}

void BasicPlugin::addHandler(const ActionHandler& handler)
{
    handlers.append(handler);
}

void BasicPlugin::addTrigger(const ActionTrigger& trigger)
{
    triggers.append(trigger);
}

void BasicPlugin::disableTriggers(const QSet<int>& identifiers)
{
    disabledTriggers += identifiers;
}

void BasicPlugin::enableTriggers()
{
    disabledTriggers.clear();
}
