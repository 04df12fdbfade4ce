// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <functional>

/// Something that runs by itself when an action of the host happens (BasicPlugin::addTrigger).
struct ActionTrigger
{
    /// The number by which it is switched off; the plug-in chooses one that is its only one.
    int id = 0;
    /// The action's name, as the host spells it.
    QString action;
    /// Called on the host thread after the action.
    std::function<void()> run;
};
