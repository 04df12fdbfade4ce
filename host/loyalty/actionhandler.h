// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVariantMap>

#include <functional>

/// An action of the host that a plug-in can take over (BasicPlugin::addHandler). Which actions
/// there are, and what they pass, the host says.
struct ActionHandler
{
    /// The action's name, as the host spells it.
    QString action;
    /// Called on the host thread when the action is due, with its values by their names. Returns
    /// whether it has done it; otherwise the host does.
    std::function<bool(const QVariantMap&)> handle;
};
